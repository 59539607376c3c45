// Status texts that have no room: cut with an ellipsis, and whole in a tip.

#include "framework/FrameStatusBar.h"

#include <gtest/gtest.h>

#include "platform/Backend.h"

namespace kvx::test {
namespace {

TEST(FrameStatusBar, ATextWithoutRoomShowsWholeInATip) {
    InstallBackend();
    {
        CWnd main;
        ASSERT_TRUE(main.Create(WS_OVERLAPPED | WS_VISIBLE, {0, 0, 400, 100}, nullptr, 0));
        CFrameStatusBar bar;
        ASSERT_TRUE(bar.Create(&main, 1, false));
        bar.MoveWindow(0, 0, 400, 20);
        const CString longText = "Mark: 00:00:00.123.456 - 00:00:09.876.543 = 00:00:09.753.087";
        bar.SetPanes({"Grid: 5", longText, "Area: Full"});
        EXPECT_FALSE(bar.IsTextCut(0));
        EXPECT_EQ(bar.GetText(1), longText);
        const auto moveOver = [&](int part) {
            RECT area;
            bar.GetRect(part, &area);
            bar.SendMessage(WM_MOUSEMOVE, 0, MakePointParam(area.left + 2, 10));
        };
        bar.MoveWindow(0, 0, 200, 20);
        EXPECT_TRUE(bar.IsTextCut(1));
        bar.RedrawWindow();
        moveOver(0);
        EXPECT_EQ(bar.Tip(), nullptr);
        moveOver(1);
        ASSERT_NE(bar.Tip(), nullptr);
        EXPECT_EQ(bar.Tip()->Lines(), (std::vector<CString>{longText, "Area: Full"}));
        bar.SendMessage(WM_CANCELMODE);
        EXPECT_EQ(bar.Tip(), nullptr);
        moveOver(1);
        bar.SendMessage(WM_MOUSELEAVE);
        EXPECT_EQ(bar.Tip(), nullptr);
        moveOver(1);
        main.DestroyWindow();
    }
    RemoveBackend();
}

}  // namespace
}  // namespace kvx::test
