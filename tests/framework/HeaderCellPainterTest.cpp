// The raised cell as recorded drawing.

#include <gtest/gtest.h>

#include "framework/HeaderCellPainter.h"
#include "framework/SystemColors.h"
#include "support/RecordingGraphics.h"

namespace {

std::string Drawn(std::string_view text, bool selected, CellAlign align) {
    kvx::test::RecordingGraphics graphics;
    CDC dc(&graphics);
    CHeaderCellPainter painter;
    painter.Draw(dc, {10, 20, 60, 38}, text, selected, align);
    return graphics.Text();
}

TEST(HeaderCellPainter, EdgesFaceAndEngravedText) {
    const std::string drawn = Drawn("VEC", false, CellAlign::Left);
    const std::string cell =
        "fill 10 20 59 21 #FFFFFF\n"
        "fill 10 21 11 38 #FFFFFF\n"
        "fill 11 37 60 38 #808080\n"
        "fill 59 21 60 37 #808080\n"
        "fill 11 21 59 37 #C0C0C0\n";
    EXPECT_EQ(drawn.substr(0, cell.size()), cell);
    EXPECT_NE(drawn.find("text 19 21 \"VEC\" #FFFFFF clip 10 20 60 38\n"
                         "text 18 20 \"VEC\" #000000 clip 10 20 60 38\n"),
              std::string::npos)
        << drawn;
}

TEST(HeaderCellPainter, AlignmentAndSelection) {
    EXPECT_NE(Drawn("VEC", false, CellAlign::Centre).find("text 23 20 \"VEC\" #000000"),
              std::string::npos);
    EXPECT_NE(Drawn("VEC", false, CellAlign::Right).find("text 28 20 \"VEC\" #000000"),
              std::string::npos);
    // A text wider than the cell begins left of it when centred, and is clipped.
    EXPECT_NE(Drawn("a long header", false, CellAlign::Centre).find("text -17 20"),
              std::string::npos);
    const std::string selected = Drawn("VEC", true, CellAlign::Left);
    EXPECT_EQ(selected.find("#000000 clip"), std::string::npos);
    EXPECT_NE(selected.find("text 18 20 \"VEC\" #FFFFFF clip 10 20 60 38"), std::string::npos)
        << selected;
}

TEST(NamedColors, NamesIndexesAndSystemColours) {
    COLORREF colour = 0;
    EXPECT_TRUE(ColorOfIndex(16, &colour));
    EXPECT_EQ(colour, RGB(229, 225, 223));
    for (const int index : {-1, kColorSystem, kColorHighlight, 20}) {
        EXPECT_FALSE(ColorOfIndex(index, &colour));
        EXPECT_EQ(colour, RGB(255, 255, 255));
    }
    EXPECT_STREQ(NameOfColor(19), "MEDGREY");
    EXPECT_STREQ(NameOfColor(20), "UNKNOWN");
    EXPECT_EQ(IndexOfColor("HIGHLIGHT"), kColorHighlight);
    EXPECT_EQ(IndexOfColor("highlight"), -1);
    EXPECT_NE(ResolveColor(kColorSystem, true), ResolveColor(kColorSystem, false));
}

}  // namespace
