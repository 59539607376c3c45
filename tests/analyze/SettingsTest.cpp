// Mode and column widths: stored when the window goes, and read when it comes.

#include "analyze/AnalyzeWindow.h"
#include "framework/HostWorkspaceStore.h"

namespace kvx::test {
namespace {

using Settings = AnalyzeWindow;

TEST_F(Settings, AreTwentyThreeNumbers) {
    OpenWindow();
    Close();
    EXPECT_EQ(store.texts[kSettings], kDefaults);
}

TEST_F(Settings, OutliveTheWindow) {
    OpenTrace(AnalyzeTrace(3));
    OpenWindow();
    Command(ids::kRdyToRun);
    const int edge = RightEdge(kRdyRunWidths, 1);
    Drag(*view, {edge, 1}, {edge + 4 * charWidth, 1});
    Close();
    EXPECT_EQ(store.texts[kSettings],
              "1,5,8,5,12,7,22,22,22,22,8,18,5,16,8,22,22,22,7,13,35,35,22");
    OpenWindow();
    EXPECT_TRUE(IsChecked(ids::kRdyToRun));
    EXPECT_EQ(TextsAt(edge + 4 * charWidth), (std::vector<std::string>{"3", "3"}));
    EXPECT_FALSE(instance->AreSettingsModified());
}

TEST_F(Settings, AnythingElseThanTwentyThreeNumbersIsIgnored) {
    const std::string good = kDefaults;
    const std::string bad[] = {"",
                               "1",
                               good.substr(0, good.rfind(',')),
                               good + ",1",
                               good + ",",
                               "1" + good.substr(1, good.size() - 2) + "x",
                               "one" + good.substr(1),
                               "1,,8" + good.substr(5),
                               "1,99999999999" + good.substr(3)};
    for (const std::string& text : bad) {
        store.texts[kSettings] = text;
        OpenWindow();
        EXPECT_TRUE(IsChecked(ids::kRunTime)) << text;
        Close();
        EXPECT_EQ(store.texts[kSettings], kDefaults) << text;
    }
}

TEST_F(Settings, NumbersAreTakenUnchecked) {
    OpenTrace(AnalyzeTrace(3));
    // A mode that is none, no width, a negative and a gigantic one.
    const std::string odd = "77,0,-5,5,12,7,22,22,22,22,8,2147483647,5,12,8,22,22,22,7,13,35,35,22";
    store.texts[kSettings] = odd;
    OpenWindow();
    for (const UINT command : {ids::kRunTime, ids::kRdyToRun, ids::kSystemCall}) {
        EXPECT_FALSE(IsChecked(command));
    }
    EXPECT_EQ(Front(TextsAt(5 * charWidth)), "timer");  // behind the ID, which comes first now
    view->SendMessage(WM_HSCROLL, MakeScroll(SB_RIGHT, 0));
    view->SendMessage(WM_HSCROLL, MakeScroll(SB_LEFT, 0));
    Close();
    EXPECT_EQ(store.texts[kSettings], odd);
    OpenWindow();
    Command(ids::kRunTime);
    EXPECT_TRUE(IsChecked(ids::kRunTime));
}

// A workspace has settings of its own, under the window's own key.
TEST_F(Settings, OfAWorkspaceReplaceThoseOfTheUser) {
    OpenTrace(AnalyzeTrace(3));
    OpenWindow();
    Command(ids::kSystemCall);
    EXPECT_TRUE(instance->AreSettingsModified());
    CWorkspaceStore workspace(&host);
    instance->SaveSettings(workspace, "OSAnalyzeWnd0");
    EXPECT_FALSE(instance->AreSettingsModified());
    EXPECT_EQ(store.texts[kSettings].substr(0, 2), "2,");
    Command(ids::kRunTime);
    instance->LoadSettings(workspace, "OSAnalyzeWnd0");
    EXPECT_FALSE(instance->AreSettingsModified());
    EXPECT_TRUE(IsChecked(ids::kSystemCall));
    EXPECT_EQ(Texts(kSysCallWidths, 0).size(), 3u);
}

}  // namespace
}  // namespace kvx::test
