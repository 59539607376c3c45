// The three tables in the window: modes, sorting by clicks, the pick-up, the status bar.

#include <future>

#include "analyze/AnalyzeWindow.h"

namespace kvx::test {
namespace {

using Modes = AnalyzeWindow;
using Strings = std::vector<std::string>;

TEST_F(Modes, AreChosenByCommandsAndMarkTheSettings) {
    OpenTrace(AnalyzeTrace(50));
    OpenWindow();
    EXPECT_FALSE(instance->AreSettingsModified());
    EXPECT_TRUE(IsChecked(ids::kRunTime));
    EXPECT_EQ(Names(), (Strings{"timer", "control", "logger", "Idle", "Unknown"}));
    Command(ids::kRunTime);
    EXPECT_FALSE(instance->AreSettingsModified());

    Command(ids::kRdyToRun);
    EXPECT_TRUE(instance->AreSettingsModified());
    EXPECT_FALSE(IsChecked(ids::kRunTime));
    EXPECT_TRUE(IsChecked(ids::kRdyToRun));
    EXPECT_EQ(Texts(kRdyRunWidths, 1), (Strings{"control", "logger"}));
    EXPECT_EQ(Texts(kRdyRunWidths, 3), (Strings{"5", "34"}));

    Command(ids::kSystemCall);
    EXPECT_TRUE(IsChecked(ids::kSystemCall));
    for (const UINT command : {ids::kRunTime, ids::kRdyToRun, ids::kSystemCall}) {
        EXPECT_TRUE(IsEnabled(command));
    }
    EXPECT_EQ(Front(Texts(kSysCallWidths, 0)), "1");
}

TEST_F(Modes, EachColumnKeepsItsOwnDirection) {
    OpenTrace(AnalyzeTrace(50));
    OpenWindow();
    const Strings ascending = {"Unknown", "timer", "Idle", "control", "logger"};
    const Strings descending(ascending.rbegin(), ascending.rend());
    constexpr std::size_t kName = CRunTimeAnalysis::Name;
    constexpr std::size_t kTotal = CRunTimeAnalysis::Total;
    ClickCell(kRunTimeWidths, kTotal, -1);
    EXPECT_EQ(Names(), ascending);
    ClickCell(kRunTimeWidths, kTotal, -1);
    EXPECT_EQ(Names(), descending);
    ClickCell(kRunTimeWidths, kName, -1);
    EXPECT_EQ(Names(), (Strings{"Idle", "Unknown", "control", "logger", "timer"}));
    ClickCell(kRunTimeWidths, kTotal, -1);
    EXPECT_EQ(Names(), ascending);
    // A press two pixels from an edge sorts nothing, nor does one on the body.
    const int edge = RightEdge(kRunTimeWidths, kName);
    Click(*view, {edge + 2, rowHeight / 2});
    Click(*view, {edge - 2, rowHeight / 2});
    ClickCell(kRunTimeWidths, kName, 2);
    EXPECT_EQ(Names(), ascending);

    Command(ids::kRdyToRun);
    ClickCell(kRdyRunWidths, 1, -1);
    ClickCell(kRdyRunWidths, 1, -1);
    EXPECT_EQ(Texts(kRdyRunWidths, 1), (Strings{"logger", "control"}));
    Command(ids::kSystemCall);
    ClickCell(kSysCallWidths, 4, -1);
    ClickCell(kSysCallWidths, 4, -1);
    EXPECT_EQ(Front(Texts(kSysCallWidths, 0)), "50");
    // A rebuild keeps the order of all three.
    data.markers.Rebuild(nullptr, true);
    EXPECT_EQ(Front(Texts(kSysCallWidths, 0)), "50");
    Command(ids::kRunTime);
    EXPECT_EQ(Names(), ascending);
}

TEST_F(Modes, PickUpLeavesTheChosenCallsAndIsEndedByTheSameCommand) {
    OpenTrace(AnalyzeTrace(50));
    OpenWindow();
    EXPECT_FALSE(IsEnabled(ids::kPickUp));
    Command(ids::kSystemCall);
    EXPECT_TRUE(IsEnabled(ids::kPickUp));
    EXPECT_FALSE(IsChecked(ids::kPickUp));
    Key(VK_END);
    ASSERT_GT(FirstRow(), 0);
    const int first = FirstRow();

    Command(ids::kPickUp);  // the user cancels the service's dialog
    EXPECT_EQ(data.sysCalls.EntryCount(), 50);
    EXPECT_EQ(FirstRow(), first);

    service.pickUpChoice = {"wai_sem"};
    Command(ids::kPickUp);
    EXPECT_TRUE(IsChecked(ids::kPickUp));
    EXPECT_EQ(data.sysCalls.EntryCount(), 25);
    EXPECT_EQ(FirstRow(), 0);
    const Strings names = Texts(kSysCallWidths, 1);
    EXPECT_EQ(Strings(names.size(), "wai_sem"), names);
    EXPECT_EQ(Texts(kSysCallWidths, 0)[1], "4");  // numbers are those of the whole history

    Key(VK_END);
    Command(ids::kPickUp);
    EXPECT_FALSE(IsChecked(ids::kPickUp));
    EXPECT_EQ(data.sysCalls.EntryCount(), 50);
    EXPECT_EQ(FirstRow(), 0);

    Command(ids::kPickUp);
    EXPECT_TRUE(IsChecked(ids::kPickUp));
    service.pickUpTrue = 1;  // neither true nor false
    EXPECT_FALSE(IsChecked(ids::kPickUp));
    EXPECT_TRUE(IsEnabled(ids::kPickUp));
    service.pickUpTrue = VARIANT_TRUE;
    Command(ids::kPickUp);

    // What the service cannot tell, and no service at all.
    service.failing = {"IsPickUpActive"};
    EXPECT_FALSE(IsEnabled(ids::kPickUp));
    service.failing.clear();
    host.services.erase(host::kOSTraceService);
    EXPECT_FALSE(IsEnabled(ids::kPickUp));
    Command(ids::kPickUp);
    EXPECT_EQ(Texts(kSysCallWidths, 0), Strings());
}

TEST_F(Modes, APickUpWithoutACallInTheRangeLeavesAnEmptyTable) {
    OpenTrace(AnalyzeTrace(4));
    data.markers.SetMarker(nullptr, kMarkerEnd, kEventsPerPeriod - 1);
    OpenWindow();
    Command(ids::kSystemCall);
    service.pickUpChoice = {"wai_sem"};  // the first period calls sig_sem
    Command(ids::kPickUp);
    EXPECT_EQ(data.sysCalls.EntryCount(), 0);
    EXPECT_EQ(Texts(kSysCallWidths, 0), Strings());
    EXPECT_NE(Drawing().find("\"No\""), std::string::npos);
    Command(ids::kPickUp);
    EXPECT_EQ(Texts(kSysCallWidths, 1), Strings{"sig_sem"});
}

TEST_F(Modes, StatusBarShowsTheMarkedRangeWhileATraceIsOpen) {
    OpenWindow();
    ASSERT_NE(StatusBar(), nullptr);
    EXPECT_FALSE(StatusBar()->IsWindowVisible());
    const int whole = view->GetWindowRect().Height();
    EXPECT_EQ(whole, instance->Frame().GetClientRect().Height());
    EXPECT_FALSE(IsEnabled(ids::kSave));

    OpenTrace(AnalyzeTrace(3));
    EXPECT_TRUE(StatusBar()->IsWindowVisible());
    EXPECT_EQ(StatusBar()->GetText(0), "Mark: 100 - 380 = 280");
    EXPECT_LT(view->GetWindowRect().Height(), whole);
    EXPECT_TRUE(IsEnabled(ids::kSave));
    data.markers.SetMarker(nullptr, kMarkerStart, kEventsPerPeriod);
    EXPECT_EQ(StatusBar()->GetText(0), "Mark: 200 - 380 = 180");

    data.engine.Clear(nullptr, 1);
    EXPECT_FALSE(StatusBar()->IsWindowVisible());
    EXPECT_EQ(view->GetWindowRect().Height(), whole);
    EXPECT_EQ(Names(), Strings());
}

TEST_F(Modes, DrawingHoldsTheLockOfTheAnalyses) {
    class Prober final : public IGraphics {
      public:
        explicit Prober(CMutex& lock) : lock_(lock) {}
        bool held = true;
        int texts = 0;
        void SetClip(const std::optional<RECT>&) override {}
        void FillRect(const RECT&, const FillPattern&) override {}
        void InvertRect(const RECT&) override {}
        void XorRect(const RECT&, COLORREF) override {}
        void Line(POINT, POINT, const LinePattern&) override {}
        void RoundRect(const RECT&, SIZE, const std::optional<LinePattern>&,
                       const std::optional<FillPattern>&) override {}
        void Text(POINT, std::string_view, const TextStyle&) override {
            ++texts;
            const auto free = std::async(
                std::launch::async, [this] { return lock_.try_lock() && (lock_.unlock(), true); });
            held = held && !const_cast<std::future<bool>&>(free).get();
        }
        void Image(POINT, SIZE, const std::uint32_t*) override {}
        SIZE TextExtent(const LOGFONT&, std::string_view) override { return {8, 16}; }
        TEXTMETRIC Metrics(const LOGFONT&) override { return {}; }

      private:
        CMutex& lock_;
    };
    OpenTrace(AnalyzeTrace(3));
    OpenWindow();
    Prober prober(data.lock);
    CDC dc(&prober);
    view->OnDraw(&dc);
    EXPECT_GT(prober.texts, 50);
    EXPECT_TRUE(prober.held);
    auto free = std::async(std::launch::async,
                           [this] { return data.lock.try_lock() && (data.lock.unlock(), true); });
    EXPECT_TRUE(free.get());
}

TEST_F(Modes, WithoutADebuggerNothingIsDrawn) {
    OpenTrace(AnalyzeTrace(3));
    OpenWindow();
    host::ClearDebuggerFunctions(nullptr);
    EXPECT_EQ(Drawing(), "");
    EXPECT_FALSE(IsEnabled(ids::kPickUp));
}

}  // namespace
}  // namespace kvx::test
