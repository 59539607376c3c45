// The dialog of long work: where it stands, what it shows, and what it does to its parent.

#include "platform/controls/ProgressCtrl.h"
#include "support/ResourceFixture.h"
#include "trace/dialogs/StopDlg.h"

namespace kvx::test {
namespace {

constexpr UINT kProgress = 9008;

class StopDialog : public ResourceFixture {
  protected:
    void SetUp() override {
        ResourceFixture::SetUp();
        ASSERT_TRUE(parent.Create(WS_OVERLAPPED | WS_VISIBLE, {40, 30, 400, 300}, HWND{}, 0));
    }
    void TearDown() override {
        parent.DestroyWindow();
        ResourceFixture::TearDown();
    }
    CWnd parent;
};

TEST_F(StopDialog, ShowsProgressAtTheCornerOfItsParent) {
    CStopDlgCore dialog(&parent, "Analyzing...");
    EXPECT_FALSE(parent.IsWindowEnabled()) << "while the work goes on";
    dialog.SetProgress(200, 50);
    ASSERT_TRUE(dialog.Create());
    EXPECT_EQ(dialog.GetWindowText(), "Analyzing...");
    EXPECT_EQ(dialog.Check_QXTraceStop(), 0);
    EXPECT_EQ(CWnd::GetFocus(), dialog.GetDlgItem(IDCANCEL)) << "Enter and Space stop";
    EXPECT_EQ(dialog.GetWindowRect().TopLeft(), parent.GetWindowRect().TopLeft());
    EXPECT_GT(dialog.GetWindowRect().Width(), 50);
    auto* const bar = static_cast<CProgressCtrl*>(dialog.GetDlgItem(kProgress));
    ASSERT_NE(bar, nullptr);
    int lower = -1;
    int upper = -1;
    bar->GetRange(lower, upper);
    EXPECT_EQ(lower, 0);
    EXPECT_EQ(upper, 200);
    EXPECT_EQ(bar->GetPos(), 50);
    dialog.SetProgress(200, 150);
    EXPECT_EQ(bar->GetPos(), 50) << "only remembered";
    dialog.UpdateProgress();
    EXPECT_EQ(bar->GetPos(), 150);

    EXPECT_EQ(dialog.Check_QXTraceStop(), 0);
    Click(dialog, IDCANCEL);
    EXPECT_EQ(dialog.Check_QXTraceStop(), 1) << "STOP";
    dialog.DestroyWindow();
    EXPECT_TRUE(parent.IsWindowEnabled());
}

TEST_F(StopDialog, GivesItsParentBackHoweverItEnds) {
    {
        CStopOnlyDlgCore dialog(&parent, "");
        EXPECT_FALSE(parent.IsWindowEnabled());
        ASSERT_TRUE(dialog.Create());
        EXPECT_NE(dialog.GetWindowText(), "") << "the template's own title";
        EXPECT_EQ(dialog.Check_QXTraceStop(), 0);
        EXPECT_EQ(CWnd::GetFocus(), dialog.GetDlgItem(IDCANCEL));
    }
    EXPECT_TRUE(parent.IsWindowEnabled());
    {
        CStopDlgCore never(&parent, "x");
        never.UpdateProgress();
    }
    EXPECT_TRUE(parent.IsWindowEnabled()) << "one that was not created";
    CStopDlgCore alone(nullptr, "x");
    ASSERT_TRUE(alone.Create());
    alone.DestroyWindow();
}

}  // namespace
}  // namespace kvx::test
