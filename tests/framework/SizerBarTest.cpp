// The sizer bar in a window that owns a layout: limits, notification, the bar that follows the
// mouse, cancelled drags.

#include "framework/SizerBar.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/Backend.h"
#include "platform/base/Keys.h"
#include "platform/windows/Cursor.h"
#include "support/DrawnWindow.h"

namespace {

constexpr UINT kFirst = 10;
constexpr UINT kBar = 11;
constexpr UINT kSecond = 12;
constexpr UINT kEnd = 0xFFFFFFFFu;
constexpr int kThickness = 6;

// Moves the border when its bar tells that it was moved.
class LayoutWindow : public CWnd {
  public:
    CWinMgr* manager = nullptr;
    std::vector<CPoint> moved;
    // What the parts want, in both directions; 0: anything.
    struct Wish {
        UINT id = 0;
        int least = 0;
        int most = 0;
    };
    std::vector<Wish> wishes{{kFirst, 20, 0}};

  protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageMapEntry kEntries[] = {
            ON_MESSAGE<kWinMgrMessage, &LayoutWindow::OnWinMgr>()};
        static const MessageMap kMap{&CWnd::GetMessageMap(), kEntries};
        return kMap;
    }
    LRESULT OnWinMgr(WPARAM id, LPARAM notify) {
        auto* const record = reinterpret_cast<WINMGRNOTIFY*>(notify);
        if (record->code == kWinMgrSizeBarMoved) {
            moved.push_back(record->moved);
            manager->MoveRect(static_cast<UINT>(id), record->moved, this);
            manager->SetWindowPositions(this);
            return 1;
        }
        LRESULT handled = 0;
        for (const Wish& wish : wishes) {
            if (record->code != kWinMgrGetSizeInfo || id != wish.id) continue;
            if (wish.least) record->sizeInfo.minimum = {wish.least, wish.least};
            if (wish.most) record->sizeInfo.maximum = {wish.most, wish.most};
            handled = 1;
        }
        return handled;
    }
};

// A window of 200 x 300 with a bar between two others, above each other or side by side.
class Layout {
  public:
    explicit Layout(bool columns = false)
        : table_{{std::uint16_t((columns ? RCCOLGROUP : RCROWGROUP) | RCREST), 0, 0},
                 {RCPERCENT, kFirst, 30},
                 {RCFIXED, kBar, kThickness},
                 {RCREST, kSecond, 0},
                 {RCENDGROUP, kEnd, 0},
                 {0, kEnd, 0}},
          manager_(table_) {
        window.manager = &manager_;
        EXPECT_TRUE(window.Create(WS_OVERLAPPED | WS_VISIBLE, {0, 0, 200, 300}, HWND{}, 0));
        EXPECT_TRUE(first.Create(WS_CHILD | WS_VISIBLE, RECT{}, &window, kFirst));
        EXPECT_TRUE(second.Create(WS_CHILD | WS_VISIBLE, RECT{}, &window, kSecond));
        EXPECT_TRUE(bar.Create(WS_CHILD | WS_VISIBLE, &window, manager_, kBar, RECT{}));
        manager_.CalcLayout(&window);
        manager_.SetWindowPositions(&window);
    }
    ~Layout() { window.DestroyWindow(); }
    void Send(UINT message, int x, int y) {
        bar.SendMessage(message, MK_LBUTTON, MakePointParam(x, y));
    }
    void Drag(CPoint from, CPoint to) {
        Send(WM_LBUTTONDOWN, from.x, from.y);
        Send(WM_MOUSEMOVE, (from.x + to.x) / 2, (from.y + to.y) / 2);
        Send(WM_MOUSEMOVE, to.x, to.y);
        Send(WM_LBUTTONUP, to.x, to.y);
    }
    // Row by row.
    std::vector<std::uint32_t> Picture() const {
        const kvx::Surface drawn = kvx::test::DrawingOf(window.GetSafeHwnd());
        const SIZE size = drawn.DeviceSize();
        return {drawn.Data(), drawn.Data() + std::ptrdiff_t{size.cx} * size.cy};
    }
    std::size_t At(int x, int y) const {
        return static_cast<std::size_t>(y * window.GetClientRect().Width() + x);
    }

  private:
    WINRECT table_[6];
    CWinMgr manager_;

  public:
    LayoutWindow window;
    CWnd first;
    CWnd second;
    CSizerBar bar;
};

class SizerBar : public ::testing::Test {
  protected:
    static void SetUpTestSuite() { kvx::InstallBackend(); }
    static void TearDownTestSuite() { kvx::RemoveBackend(); }
};

using Points = std::vector<CPoint>;

TEST_F(SizerBar, MovesTheBorderAcrossItself) {
    Layout layout;
    const int before = layout.first.GetWindowRect().Height();
    const int bottom = layout.second.GetWindowRect().bottom;
    layout.Drag({3, 2}, {43, 17});
    EXPECT_EQ(layout.window.moved, (Points{{0, 15}}));
    EXPECT_EQ(layout.first.GetWindowRect().Height(), before + 15);
    EXPECT_EQ(layout.second.GetWindowRect().top, layout.bar.GetWindowRect().bottom);
    EXPECT_EQ(layout.second.GetWindowRect().bottom, bottom);
    // The mouse without a drag moves nothing.
    layout.Send(WM_MOUSEMOVE, 43, 30);
    layout.Send(WM_LBUTTONUP, 43, 30);
    EXPECT_EQ(layout.window.moved.size(), 1u);

    Layout columns(true);
    columns.Drag({2, 3}, {22, 90});
    EXPECT_EQ(columns.window.moved, (Points{{20, 0}}));
}

// The bar's own thickness counts into the most that a neighbour may have.
TEST_F(SizerBar, StopsAtTheLimitsOfBothNeighbours) {
    struct Case {
        LayoutWindow::Wish wish;
        int pull;
        int firstHeight;  // after it
    };
    const int whole = 300 - kThickness;
    for (const Case& each : {Case{{kFirst, 20, 0}, -250, 20},
                             {{kFirst, 0, 150}, 250, 150 - kThickness},
                             {{kSecond, 40, 0}, 280, whole - 40},
                             {{kSecond, 0, 240}, -80, 300 - 240}}) {
        Layout layout;
        layout.window.wishes = {each.wish};
        const int before = layout.first.GetWindowRect().Height();
        layout.Drag({3, 2}, {3, 2 + each.pull});
        EXPECT_EQ(layout.window.moved, (Points{{0, each.firstHeight - before}}));
        EXPECT_EQ(layout.first.GetWindowRect().Height(), each.firstHeight);
    }
}

// The cursor that the bar asks for.
HCURSOR CursorOver(CSizerBar& bar) {
    SetCursor(LoadStandardCursor(IDC_ARROW));
    EXPECT_EQ(bar.SendMessage(WM_SETCURSOR, 0, 0), 1);
    return SetCursor(LoadStandardCursor(IDC_ARROW));
}

TEST_F(SizerBar, ItsShapeWhenItIsFirstAskedDecidesItsDirection) {
    Layout horizontal;
    EXPECT_EQ(CursorOver(horizontal.bar), LoadStandardCursor(IDC_SIZENS));
    Layout layout;
    layout.bar.MoveWindow(0, 90, 5, 5);
    EXPECT_EQ(CursorOver(layout.bar), LoadStandardCursor(IDC_SIZEWE));
    layout.bar.MoveWindow(0, 90, 200, 5);  // too late
    EXPECT_EQ(CursorOver(layout.bar), LoadStandardCursor(IDC_SIZEWE));
}

TEST_F(SizerBar, AnInvertedBarFollowsTheMouseAndLeavesNoTrace) {
    Layout layout;
    const auto before = layout.Picture();
    CPoint corner = layout.bar.GetWindowRect().TopLeft();
    layout.window.ScreenToClient(&corner);
    const int top = corner.y;
    layout.Send(WM_LBUTTONDOWN, 3, 2);
    layout.Send(WM_MOUSEMOVE, 3, 42);
    const auto during = layout.Picture();
    for (int y = 0; y < layout.window.GetClientRect().Height(); ++y) {
        const bool inBar = y >= top + 40 && y < top + 40 + kThickness;
        EXPECT_EQ(during[layout.At(100, y)] != before[layout.At(100, y)], inBar) << y;
    }
    layout.Send(WM_LBUTTONUP, 3, 42);
    EXPECT_EQ(layout.Picture(), before);
}

TEST_F(SizerBar, EscapeAndACancelledModeEndADragSilently) {
    for (const UINT message : {WM_CHAR, WM_CANCELMODE}) {
        Layout layout;
        const auto before = layout.Picture();
        layout.Send(WM_LBUTTONDOWN, 3, 2);
        layout.Send(WM_MOUSEMOVE, 3, 20);
        layout.bar.SendMessage(WM_CHAR, 'x');  // does not end it
        EXPECT_NE(layout.Picture(), before);
        layout.bar.SendMessage(message, VK_ESCAPE);
        EXPECT_EQ(layout.Picture(), before);
        layout.Send(WM_LBUTTONUP, 3, 20);
        EXPECT_TRUE(layout.window.moved.empty());
    }
}

}  // namespace
