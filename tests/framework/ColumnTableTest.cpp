#include "framework/ColumnTable.h"

#include <gtest/gtest.h>

#include "support/RecordingGraphics.h"
#include "utils/NumberList.h"

namespace {

CColumnTable MakeTable() {
    CColumnTable table({{"A", 5}, {"B", 10}, {"C", 3}});
    table.SetCharWidth(8);
    table.LayOut();
    return table;
}

TEST(ColumnTable, StandsSideBySide) {
    CColumnTable table = MakeTable();
    EXPECT_EQ(table[0].right, 40);
    EXPECT_EQ(table[1].left, 40);
    EXPECT_EQ(table[1].right, 120);
    EXPECT_EQ(table[2].right, 144);
    EXPECT_EQ(table.TotalWidth(), 144);
    // Widths may be any stored number, also together.
    table.SetCharacters(std::vector<int>{-7, 2000000000, 2000000000});
    table.SetCharWidth(8);
    table.LayOut();
    EXPECT_EQ(table[0].width, 0);
    EXPECT_GT(table[1].width, 100000);
    EXPECT_EQ(table[2].right, table.TotalWidth());
    EXPECT_EQ(table.Characters(), (std::vector<int>{-7, 2000000000, 2000000000}));
}

TEST(ColumnTable, TakesHoldOfEdgesAndTitlesApart) {
    const CColumnTable table = MakeTable();
    for (const int x : {39, 40, 41}) EXPECT_EQ(table.EdgeAt(x), 0u) << x;
    for (const int x : {38, 42, 0}) EXPECT_EQ(table.EdgeAt(x), std::nullopt) << x;
    EXPECT_EQ(table.TitleAt(3), 0u);
    EXPECT_EQ(table.TitleAt(37), 0u);
    EXPECT_EQ(table.TitleAt(43), 1u);
    // Neither edge nor title: exactly two pixels from the edge.
    for (const int x : {0, 2, 38, 39, 40, 41, 42, 144, 200}) {
        EXPECT_EQ(table.TitleAt(x), std::nullopt) << x;
    }
}

TEST(ColumnTable, AColumnWithoutWidthCanBeDrawnOpen) {
    CColumnTable table = MakeTable();
    table.SetRightEdge(1, 43, 8);
    table.LayOut();
    EXPECT_EQ(table[1].width, 3);
    EXPECT_EQ(table[1].characters, 0);
    EXPECT_EQ(table[2].left, 43);
    // Stored and read back, it has no pixel left; its edge is still under the pointer.
    table.SetCharWidth(8);
    table.LayOut();
    EXPECT_EQ(table[1].width, 0);
    EXPECT_EQ(table.EdgeAt(40), 1u);
    table.SetRightEdge(1, 40 + 20, 8);
    table.LayOut();
    EXPECT_EQ(table[1].characters, 2);
    EXPECT_EQ(table[1].width, 20);
}

TEST(ColumnTable, DrawsTitlesOfColumnsThatHaveAWidth) {
    CColumnTable table = MakeTable();
    table.SetRightEdge(1, 40, 8);
    table.LayOut();
    kvx::test::RecordingGraphics graphics;
    CDC dc(&graphics);
    CHeaderCellPainter painter;
    DrawTitles(dc, painter, table, 16);
    const std::string drawn = graphics.Text();
    EXPECT_NE(drawn.find("text 8 0 \"A\" #000000 clip 0 0 40 16"), std::string::npos) << drawn;
    EXPECT_NE(drawn.find("text 48 0 \"C\" #000000 clip 40 0 64 16"), std::string::npos) << drawn;
    EXPECT_EQ(drawn.find("\"B\""), std::string::npos);
}

TEST(NumberList, IsExactlySoManyNumbers) {
    const std::vector<int> numbers = {5, -8, 0, 2147483647};
    EXPECT_EQ(kvx::JoinNumbers(numbers), "5,-8,0,2147483647");
    EXPECT_EQ(kvx::ParseNumbers("5,-8,0,2147483647", 4), numbers);
    for (const char* bad : {"", "5", "5,-8,0", "5,-8,0,1,2", "5,-8,0,", ",5,-8,0", "5,-8,,0",
                            "5,-8,0,x", "5,-8,0,1x", "5 -8 0 1", "5,-8,0,2147483648", "5, 8,0,1"}) {
        EXPECT_EQ(kvx::ParseNumbers(bad, 4), std::nullopt) << bad;
    }
}

}  // namespace
