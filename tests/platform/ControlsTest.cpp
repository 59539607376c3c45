// Controls that the platform layer draws itself: what they show, and that they show it anew.

#include <gtest/gtest.h>

#include "platform/base/SystemInfo.h"
#include "platform/controls/Button.h"
#include "platform/controls/MnemonicText.h"
#include "platform/controls/Static.h"
#include "platform/controls/StatusBarCtrl.h"
#include "platform/drawing/ClientDC.h"
#include "support/FakeBackend.h"

namespace {

constexpr RECT kPlace{0, 0, 100, 60};

class ControlsTest : public testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(top.Create(WS_POPUP | WS_VISIBLE, kPlace, nullptr, 0)); }
    void TearDown() override { top.DestroyWindow(); }
    std::shared_ptr<const kvx::Surface> Paint(const CWnd& window) {
        auto picture = backend.windows.Paint(window.GetSafeHwnd());
        backend.windows.At(window.GetSafeHwnd()).presented = {};
        return picture;
    }
    bool IsDue(const CWnd& window) {
        return !backend.windows.At(window.GetSafeHwnd()).presented.IsRectEmpty();
    }
    // Characters are solid cells of 8 x 16: where they stand in a row of them.
    static std::string RowOf(const kvx::Surface& picture, int row, COLORREF ink) {
        std::string text;
        for (int x = 4; x < picture.Size().cx; x += 8)
            text += picture.At(x, row * 16 + 8) == ink ? '#' : '.';
        return text;
    }
    kvx::test::FakeBackend backend;
    CWnd top;
};

TEST(Mnemonics, AreNotShown) {
    const std::pair<const char*, const char*> texts[] = {
        {"&Open", "Open"}, {"Save && &Close", "Save & Close"},
        {"End&", "End&"},  {"&", "&"},
        {"", ""},          {"a&bc", "abc"}};
    for (const auto& [text, shown] : texts) EXPECT_EQ(kvx::WithoutMnemonics(text), shown) << text;
}

TEST_F(ControlsTest, FramesAndTextsAreDrawnAnewWhenTheyChange) {
    CButton group;
    CStatic label;
    ASSERT_TRUE(group.Create("a", WS_CHILD | WS_VISIBLE | BS_GROUPBOX, kPlace, &top, 1));
    ASSERT_TRUE(label.Create("a", WS_CHILD | WS_VISIBLE, kPlace, &top, 2));
    for (CWnd* const window : {static_cast<CWnd*>(&group), static_cast<CWnd*>(&label)}) {
        Paint(*window);
        EXPECT_FALSE(IsDue(*window));
        window->SetWindowText("b");
        EXPECT_TRUE(IsDue(*window));
        Paint(*window);
        window->EnableWindow(false);
        EXPECT_TRUE(IsDue(*window));
        Paint(*window);
        window->SendMessage(WM_CANCELMODE);
        EXPECT_FALSE(IsDue(*window)) << "nothing has changed";
    }
    CButton none;
    EXPECT_EQ(none.GetCheck(), BST_UNCHECKED) << "before it is there";
}

TEST_F(ControlsTest, StaticTextStandsWhereItsStyleSays) {
    struct Row {
        DWORD style;
        const char* text;
        std::vector<std::string> lines;
    };
    const Row rows[] = {
        {SS_LEFT, "ab", {"##..........", "............"}},
        {SS_RIGHT, "ab", {"..........##", "............"}},
        {SS_CENTER, "ab", {".....##.....", "............"}},
        {SS_LEFT, "ab\ncde", {"##..........", "###........."}},
        {SS_LEFT, "aaaa bbbb cccc", {"#########...", "####........"}},
        {SS_LEFTNOWORDWRAP, "aaaa bbbb cccc", {"############", "............"}},
        {SS_LEFT, "&ab", {"##..........", "............"}},
        {SS_LEFT | SS_NOPREFIX, "&ab", {"###.........", "............"}},
    };
    for (const auto& [style, text, lines] : rows) {
        CStatic label;
        ASSERT_TRUE(label.Create(text, WS_CHILD | WS_VISIBLE | style, {0, 0, 96, 32}, &top, 2));
        const auto picture = Paint(label);
        for (int line = 0; line < 2; ++line)
            EXPECT_EQ(RowOf(*picture, line, GetSysColor(COLOR_BTNTEXT)),
                      lines[static_cast<std::size_t>(line)])
                << text << " " << style;
        EXPECT_EQ(picture->At(95, 31), GetSysColor(COLOR_3DFACE));
    }
    CStatic frame;
    ASSERT_TRUE(frame.Create("", WS_CHILD | WS_VISIBLE | SS_BLACKFRAME, {0, 0, 20, 20}, &top, 3));
    Paint(frame);
    CClientDC(&frame).FillSolidRect(5, 5, 10, 10, RGB(9, 9, 9));
    frame.Invalidate(true);
    const auto picture = Paint(frame);
    for (int i = 0; i < 20; ++i)
        for (const auto& [x, y] : {std::pair(i, 0), {i, 19}, {0, i}, {19, i}})
            EXPECT_EQ(picture->At(x, y), RGB(0, 0, 0)) << x << " " << y;
    for (const int inside : {1, 18}) {
        EXPECT_NE(picture->At(inside, 10), RGB(0, 0, 0)) << "one pixel wide";
        EXPECT_NE(picture->At(10, inside), RGB(0, 0, 0));
    }
    EXPECT_EQ(picture->At(10, 10), RGB(9, 9, 9)) << "left to who fills it";
}

class StatusBarTest : public ControlsTest {
  protected:
    void SetUp() override {
        ControlsTest::SetUp();
        ASSERT_TRUE(bar.Create(WS_CHILD | WS_VISIBLE, {0, 0, 100, 24}, &top, 4));
        constexpr int kEdges[] = {40, 70, -1};
        ASSERT_TRUE(bar.SetParts(3, kEdges));
    }
    CStatusBarCtrl bar;
};

TEST_F(StatusBarTest, PartsAreWhereTheyWereSet) {
    EXPECT_FALSE(bar.SetParts(0, nullptr));
    int edges[4] = {9, 9, 9, 9};
    EXPECT_EQ(bar.GetParts(2, edges), 3);
    EXPECT_EQ(edges[0], 40);
    EXPECT_EQ(edges[1], 70);
    EXPECT_EQ(edges[2], 9) << "no more than asked for";
    EXPECT_EQ(bar.GetParts(4, edges), 3);
    EXPECT_EQ(edges[2], -1);
    EXPECT_EQ(edges[3], 9);
    EXPECT_EQ(bar.GetParts(0, nullptr), 3);
    int horizontal = 0;
    int vertical = 0;
    int spacing = 0;
    EXPECT_TRUE(bar.GetBorders(horizontal, vertical, spacing));
    RECT parts[3];
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(bar.GetRect(i, &parts[i]));
    EXPECT_EQ(parts[0], (RECT{horizontal, vertical, 40, 24}));
    EXPECT_EQ(parts[1], (RECT{40 + spacing, vertical, 70, 24}));
    EXPECT_EQ(parts[2], (RECT{70 + spacing, vertical, 100, 24})) << "-1: to the end of the bar";
    EXPECT_FALSE(bar.GetRect(3, &parts[0]));
    EXPECT_FALSE(bar.GetRect(-1, &parts[0]));
    EXPECT_EQ(bar.PartAt({20, 12}), 0);
    EXPECT_EQ(bar.PartAt({60, 12}), 1);
    EXPECT_EQ(bar.PartAt({99, 12}), 2);
    EXPECT_EQ(bar.PartAt({20, 30}), -1);
}

TEST_F(StatusBarTest, TextsAreDrawnAnewOnlyWhereTheyChange) {
    int type = -1;
    Paint(bar);
    EXPECT_TRUE(bar.SetText("ab", 1, SBT_POPOUT));
    RECT part;
    bar.GetRect(1, &part);
    EXPECT_EQ(backend.windows.At(bar.GetSafeHwnd()).presented, part);
    EXPECT_EQ(bar.GetText(1, &type), "ab");
    EXPECT_EQ(type, SBT_POPOUT);
    Paint(bar);
    EXPECT_TRUE(bar.SetText("ab", 1, SBT_POPOUT));
    EXPECT_FALSE(IsDue(bar)) << "it is there";
    EXPECT_TRUE(bar.SetText("ab", 1, SBT_SUNKEN));
    EXPECT_TRUE(IsDue(bar)) << "another edge";
    EXPECT_FALSE(bar.SetText("ab", 3));
    EXPECT_EQ(bar.GetText(3), "");
    EXPECT_EQ(bar.GetText(-1), "");
    EXPECT_EQ(bar.SendMessage(WM_SETTEXT, 0, reinterpret_cast<LPARAM>("x")), 1);
    EXPECT_EQ(bar.GetText(0), "x") << "its text is that of the first part";
    EXPECT_FALSE(bar.IsTextCut(0));
    bar.SetText("abcdefgh", 0);
    EXPECT_TRUE(bar.IsTextCut(0));
    EXPECT_FALSE(bar.IsTextCut(3));
}

TEST_F(StatusBarTest, EdgesSayWhichWayAPartStands) {
    const COLORREF light = GetSysColor(COLOR_BTNHIGHLIGHT);
    const COLORREF dark = GetSysColor(COLOR_BTNSHADOW);
    RECT part;
    bar.GetRect(1, &part);
    const auto corners = [&](int type) {
        bar.SetText("", 1, type);
        const auto picture = Paint(bar);
        return std::pair(picture->At(part.left, part.top),
                         picture->At(part.right - 1, part.bottom - 1));
    };
    EXPECT_EQ(corners(SBT_SUNKEN), std::pair(dark, light));
    EXPECT_EQ(corners(SBT_POPOUT), std::pair(light, dark));
    const COLORREF face = GetSysColor(COLOR_3DFACE);
    EXPECT_EQ(corners(SBT_NOBORDERS), std::pair(face, face));
}

// Three ridges, each a light line and a dark one beside it, in the corner and nowhere else.
TEST_F(StatusBarTest, TheGripIsDrawnWhereTheStyleSays) {
    constexpr int kEdges[] = {40};
    const auto ridges = [&](DWORD style) {
        CStatusBarCtrl grip;
        EXPECT_TRUE(grip.Create(WS_CHILD | WS_VISIBLE | style, {0, 0, 100, 24}, &top, 5));
        EXPECT_TRUE(grip.SetParts(1, kEdges));
        const auto picture = Paint(grip);
        int found = 0;
        for (int x = 60; x < 100; ++x)
            found += picture->At(x, 23) == GetSysColor(COLOR_BTNHIGHLIGHT);
        return found;
    };
    EXPECT_EQ(ridges(0), 0);
    EXPECT_EQ(ridges(SBARS_SIZEGRIP), 3);
}

}  // namespace
