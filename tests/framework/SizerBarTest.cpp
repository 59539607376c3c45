// The sizer bar in a window of its own: limits, notification, cancelled drags.

#include <gtest/gtest.h>

#include <vector>

#include "framework/SizerBar.h"
#include "platform/Keys.h"
#include "platform/qt/QtBackend.h"

namespace {

constexpr UINT kTop = 10;
constexpr UINT kBar = 11;
constexpr UINT kBottom = 12;
constexpr UINT kEnd = 0xFFFFFFFFu;

class LayoutWindow : public CWnd {
  public:
    std::vector<CPoint> moved;

  protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageMapEntry kEntries[] = {
            ON_MESSAGE<kWinMgrMessage, &LayoutWindow::OnWinMgr>()};
        static const MessageMap kMap{&CWnd::GetMessageMap(), kEntries};
        return kMap;
    }
    // The upper window wants to stay at least 20 high.
    LRESULT OnWinMgr(WPARAM id, LPARAM notify) {
        auto* const record = reinterpret_cast<WINMGRNOTIFY*>(notify);
        if (record->code == kWinMgrSizeBarMoved) moved.push_back(record->moved);
        if (record->code != kWinMgrGetSizeInfo || id != kTop) return 0;
        record->sizeInfo.minimum.cy = 20;
        return 1;
    }
};

class SizerBar : public ::testing::Test {
  protected:
    SizerBar()
        : table_{{RCROWGROUP | RCREST, 0, 0}, {RCPERCENT, kTop, 30}, {RCFIXED, kBar, 6},
                 {RCREST, kBottom, 0},        {RCENDGROUP, kEnd, 0}, {0, kEnd, 0}},
          manager_(table_) {}

    void SetUp() override {
        kvx::InstallQtBackend();
        ASSERT_TRUE(window_.Create(WS_OVERLAPPED | WS_VISIBLE, {0, 0, 200, 300}, HWND{}, 0));
        ASSERT_TRUE(top_.Create(WS_CHILD | WS_VISIBLE, RECT{}, &window_, kTop));
        ASSERT_TRUE(bottom_.Create(WS_CHILD | WS_VISIBLE, RECT{}, &window_, kBottom));
        ASSERT_TRUE(bar_.Create(WS_CHILD | WS_VISIBLE, &window_, manager_, kBar, RECT{}));
        manager_.CalcLayout(&window_);
        manager_.SetWindowPositions(&window_);
    }
    void TearDown() override {
        window_.DestroyWindow();
        kvx::RemoveQtBackend();
    }
    void Send(UINT message, int x, int y) {
        bar_.SendMessage(message, MK_LBUTTON, MakePointParam(x, y));
    }

    WINRECT table_[6];
    CWinMgr manager_;
    LayoutWindow window_;
    CWnd top_;
    CWnd bottom_;
    CSizerBar bar_;
};

TEST_F(SizerBar, TellsHowFarItMovedAcrossItself) {
    Send(WM_LBUTTONDOWN, 3, 2);
    Send(WM_MOUSEMOVE, 43, 10);
    Send(WM_LBUTTONUP, 43, 17);
    EXPECT_EQ(window_.moved, (std::vector<CPoint>{{0, 15}}));
    Send(WM_MOUSEMOVE, 43, 30);
    Send(WM_LBUTTONUP, 43, 30);
    EXPECT_EQ(window_.moved.size(), 1u);
    const int before = manager_.GetRect(kTop).Height();
    manager_.MoveRect(kBar, window_.moved[0], &window_);
    EXPECT_EQ(manager_.GetRect(kTop).Height(), before + 15);
}

TEST_F(SizerBar, StopsAtTheLeastHeightOfItsNeighbour) {
    Send(WM_LBUTTONDOWN, 3, 2);
    Send(WM_MOUSEMOVE, 3, -200);
    Send(WM_LBUTTONUP, 3, -200);
    const int least = 20;
    EXPECT_EQ(window_.moved, (std::vector<CPoint>{{0, least - manager_.GetRect(kTop).Height()}}));
}

TEST_F(SizerBar, EscapeAndACancelledModeEndADragSilently) {
    for (const UINT message : {WM_CHAR, WM_CANCELMODE}) {
        Send(WM_LBUTTONDOWN, 3, 2);
        Send(WM_MOUSEMOVE, 3, 20);
        bar_.SendMessage(message, VK_ESCAPE);
        Send(WM_LBUTTONUP, 3, 20);
        EXPECT_TRUE(window_.moved.empty());
    }
}

}  // namespace
