// The layout manager without windows: sizes, passes, margins, nesting.

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "framework/WinMgr.h"
#include "platform/base/SystemInfo.h"
#include "support/FakeBackend.h"

namespace {

constexpr UINT kEnd = 0xFFFFFFFFu;

WINRECT Row(std::int32_t margins = 0, std::uint16_t type = RCREST) {
    return {static_cast<std::uint16_t>(RCROWGROUP | type), 0, margins};
}
WINRECT Column(std::int32_t margins = 0, std::uint16_t type = RCREST) {
    return {static_cast<std::uint16_t>(RCCOLGROUP | type), 0, margins};
}
WINRECT Fixed(UINT id, int pixels) {
    return {RCFIXED, id, pixels};
}
WINRECT Percent(UINT id, int percent) {
    return {RCPERCENT, id, percent};
}
WINRECT Rest(UINT id) {
    return {RCREST, id, 0};
}
WINRECT ToFit(UINT id, int width, int height) {
    WINRECT entry{RCTOFIT, id, 0};
    entry.SetToFitSize({width, height});
    return entry;
}
WINRECT EndGroup() {
    return {RCENDGROUP, kEnd, 0};
}
WINRECT EndTable() {
    return {0, kEnd, 0};
}
constexpr std::int32_t Margins(int x, int y) {
    return (y << 16) | (x & 0xFFFF);
}

CRect LayOut(std::vector<WINRECT>& table, int width, int height, UINT id) {
    CWinMgr manager(table.data());
    manager.CalcLayout(width, height, nullptr);
    return manager.GetRect(id);
}

TEST(WinMgr, ToFitGetsItsSizeAndRestTakesWhatIsLeft) {
    std::vector<WINRECT> table{Row(), ToFit(1, 0, 20), Rest(2), EndGroup(), EndTable()};
    EXPECT_EQ(LayOut(table, 50, 100, 1), (CRect{0, 0, 50, 20}));
    EXPECT_EQ(LayOut(table, 50, 100, 2), (CRect{0, 20, 50, 100}));
    EXPECT_EQ(LayOut(table, 50, 10, 1), (CRect{0, 0, 50, 10}));
    EXPECT_EQ(LayOut(table, 50, 10, 2).Height(), 0);
}

// A group that takes the rest has had its least size before.
TEST(WinMgr, AGroupTakesAllThatIsLeft) {
    std::vector<WINRECT> table{Row(),      Column(),   Row(),      Fixed(1, 20), Rest(2),
                               EndGroup(), EndGroup(), EndGroup(), EndTable()};
    EXPECT_EQ(LayOut(table, 50, 100, 2), (CRect{0, 20, 50, 100}));
}

TEST(WinMgr, FixedMayShrinkOnlyWhenNegative) {
    std::vector<WINRECT> soft{Row(), Fixed(1, -30), Rest(2), EndGroup(), EndTable()};
    EXPECT_EQ(LayOut(soft, 10, 20, 1).Height(), 20);
    EXPECT_EQ(LayOut(soft, 10, 100, 1).Height(), 30);
    // A hard one is served in the first pass, before a soft one that stands above it.
    std::vector<WINRECT> both{Row(), Fixed(1, -30), Fixed(2, 30), EndGroup(), EndTable()};
    EXPECT_EQ(LayOut(both, 10, 40, 2).Height(), 30);
    EXPECT_EQ(LayOut(both, 10, 40, 1).Height(), 10);
}

TEST(WinMgr, PercentOfTheGroupAndMarginsHeldAtHalf) {
    std::vector<WINRECT> columns{Column(), Percent(1, 33), Rest(2), EndGroup(), EndTable()};
    EXPECT_EQ(LayOut(columns, 200, 10, 1), (CRect{0, 0, 66, 10}));
    EXPECT_EQ(LayOut(columns, 200, 10, 2), (CRect{66, 0, 200, 10}));
    std::vector<WINRECT> margins{Row(Margins(5, 300)), Rest(1), EndGroup(), EndTable()};
    EXPECT_EQ(LayOut(margins, 40, 100, 1), (CRect{5, 50, 35, 50}));
}

TEST(WinMgr, OnlyTheLastRestEntryGrows) {
    std::vector<WINRECT> table{Row(), Rest(1), Fixed(2, 10), Rest(3), EndGroup(), EndTable()};
    EXPECT_EQ(LayOut(table, 10, 100, 1).Height(), 0);
    EXPECT_EQ(LayOut(table, 10, 100, 3), (CRect{0, 10, 10, 100}));
}

TEST(WinMgr, SizesOfGroupsComeFromTheirChildren) {
    // A column group of fixed height stands below a rest entry: 3 + 2 * 4 pixels of margins.
    std::vector<WINRECT> table{Row(),           Rest(1),         Column(Margins(0, 4), RCPLAIN),
                               ToFit(2, 30, 3), ToFit(3, 20, 2), EndGroup(),
                               EndGroup(),      EndTable()};
    CWinMgr manager(table.data());
    manager.CalcLayout(100, 50, nullptr);
    EXPECT_EQ(manager.GetRect(1), (CRect{0, 0, 100, 39}));
    EXPECT_EQ(manager.GetRect(2), (CRect{0, 43, 30, 46}));
    EXPECT_EQ(manager.GetRect(3), (CRect{30, 43, 50, 46}));
    SIZEINFO info;
    manager.GetMinMaxInfo(nullptr, info);
    EXPECT_EQ(info.minimum, (SIZE{0, 8}));
    EXPECT_EQ(info.maximum.cx, 32767);
}

// The least size of a window is that of its table and of what surrounds it.
TEST(WinMgr, LeastSizesCountTheFrame) {
    kvx::test::FakeBackend backend;
    std::vector<WINRECT> table{Row(), ToFit(2, 30, 20), EndGroup(), EndTable()};
    CWinMgr manager(table.data());
    const auto around = [&](DWORD style, DWORD exStyle, bool shown) {
        CWnd window;
        EXPECT_TRUE(window.CreateEx(exStyle, "", style | (shown ? WS_VISIBLE : 0), {0, 0, 90, 90},
                                    nullptr, 0));
        SIZEINFO info;
        manager.GetMinMaxInfo(&window, info);
        window.DestroyWindow();
        SIZEINFO bare;
        manager.GetMinMaxInfo(nullptr, bare);
        return SIZE{info.minimum.cx - bare.minimum.cx, info.minimum.cy - bare.minimum.cy};
    };
    const int frame = GetSystemMetrics(SM_CXFRAME);
    const int border = GetSystemMetrics(SM_CXBORDER);
    const int edge = GetSystemMetrics(SM_CXEDGE);
    const int caption = GetSystemMetrics(SM_CYCAPTION);
    ASSERT_GT(frame, border);
    EXPECT_EQ(around(WS_POPUP, 0, true), (SIZE{0, 0}));
    EXPECT_EQ(around(WS_POPUP | WS_THICKFRAME, 0, false), (SIZE{0, 0})) << "nobody sees it";
    EXPECT_EQ(around(WS_POPUP | WS_THICKFRAME, 0, true), (SIZE{2 * frame, 2 * frame}));
    EXPECT_EQ(around(WS_POPUP | WS_BORDER, 0, true), (SIZE{2 * border, 2 * border}));
    EXPECT_EQ(around(WS_POPUP | WS_CAPTION, 0, true), (SIZE{2 * border, 2 * border + caption}));
    EXPECT_EQ(around(WS_POPUP, WS_EX_CLIENTEDGE, true), (SIZE{2 * edge, 2 * edge}));
}

TEST(WinMgr, MovedBorderLaysNeighbouringGroupsOutAgain) {
    std::vector<WINRECT> table{Row(),       Row(),   Rest(1),    EndGroup(),
                               Fixed(9, 4), Rest(2), EndGroup(), EndTable()};
    CWinMgr manager(table.data());
    manager.CalcLayout(10, 104, nullptr);
    const CRect before = manager.GetRect(9);
    manager.MoveRect(9, CPoint{7, 15}, nullptr);
    EXPECT_EQ(manager.GetRect(9).top, before.top + 15);
    EXPECT_EQ(manager.GetRect(9).left, before.left);
    EXPECT_EQ(manager.GetRect(1).bottom, before.top + 15);
    EXPECT_EQ(manager.GetRect(2).top, before.bottom + 15);
}

// Whatever the table, entries stand one behind the other without overlap, never get more than the
// group has, and fill it when there is a rest entry.
TEST(WinMgr, RandomRowsNeitherOverlapNorOverflow) {
    std::mt19937 random(7);
    const auto number = [&](unsigned below) { return static_cast<int>(random() % below); };
    for (int round = 0; round < 500; ++round) {
        std::vector<WINRECT> table{Row()};
        const int entries = 1 + number(6);
        bool rest = false;
        for (int i = 1; i <= entries; ++i) {
            const UINT id = static_cast<UINT>(i);
            switch (number(4)) {
                case 0:
                    table.push_back(Fixed(id, number(80) - 40));
                    break;
                case 1:
                    table.push_back(Percent(id, number(120)));
                    break;
                case 2:
                    table.push_back(ToFit(id, number(50), number(50)));
                    break;
                default:
                    table.push_back(Rest(id));
                    rest = true;
                    break;
            }
        }
        table.push_back(EndGroup());
        table.push_back(EndTable());
        const int height = number(150);
        CWinMgr manager(table.data());
        manager.CalcLayout(30, height, nullptr);
        int at = 0;
        for (int i = 1; i <= entries; ++i) {
            const CRect rect = manager.GetRect(static_cast<UINT>(i));
            ASSERT_EQ(rect.top, at);
            ASSERT_GE(rect.Height(), 0);
            at = rect.bottom;
        }
        ASSERT_LE(at, height);
        if (rest) {
            ASSERT_EQ(at, height);
        }
    }
}

}  // namespace
