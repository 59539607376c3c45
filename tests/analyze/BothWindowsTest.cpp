// OS Trace and OS Analyze over the same data: what one does, the other follows, and neither follows
// itself.

#include "analyze/AnalyzeTrace.h"
#include "analyze/AnalyzeView.h"
#include "analyze/FakeDocking.h"
#include "framework/StatusFrameWnd.h"
#include "platform/drawing/ClientDC.h"
#include "sink/OSTraceDataCommandSink.h"
#include "support/ComponentWindow.h"
#include "support/RecordingGraphics.h"
#include "traceview/TraceView.h"

namespace kvx::test {
namespace {

// The windows are those that the command sink opens, over the sink's own data.
class BothWindows : public ComponentWindow {
  protected:
    void SetUp() override {
        ComponentWindow::SetUp();
        docking_ = std::make_unique<FakeDocking>(Main());
        sink_ = std::make_unique<CKvxOSTraceDataCommandSink>(&host, docking_.get());
        ASSERT_TRUE(sink_->Create(WS_CHILD, RECT{}, &Main(), 1));
        host.onBroadcast = [this](const EventRecord& record) {
            ASSERT_EQ(record.id, host::kEventDisplayChanged);
            sink_->UpdateWindows(kHintDisplayChanged, record.datum);
        };
    }
    void Close() override {
        if (sink_) sink_->CloseAllInstances();
        sink_.reset();
        docking_.reset();
    }

    bool MayOpen(UINT command) {
        CCmdUI ui(command);
        return sink_->OnUpdateCommand(command, ui) && ui.IsEnabled();
    }
    template <class View>
    View* ViewIn(std::size_t window) const {
        CWnd* const control = docking_->windows.at(window)->GetDlgItem(1);
        CWnd* const frame = control ? control->GetDlgItem(kFirstPane) : nullptr;
        return frame ? dynamic_cast<View*>(frame->GetDlgItem(kFirstPane)) : nullptr;
    }
    // Both windows on a trace of so many periods.
    void OpenBoth(int periods) {
        service.Load(AnalyzeTrace(periods));
        sink_->OnCommand(ids::kOpenOSTrace);
        sink_->OnCommand(ids::kOpenOSAnalyze);
        for (const auto& window : docking_->windows) {
            window->GetDlgItem(1)->MoveWindow(window->GetClientRect());
        }
        chart = ViewIn<COSTraceView>(0);
        table = ViewIn<COSAnalyzeView>(1);
        ASSERT_NE(chart, nullptr);
        ASSERT_NE(table, nullptr);
        CClientDC dc(table);
        CFont font;
        font.CreatePointFont(110, "Courier New");
        dc.SelectObject(&font);
        TEXTMETRIC metrics;
        dc.GetTextMetrics(&metrics);
        charWidth = metrics.tmAveCharWidth;
        rowHeight = metrics.tmHeight + metrics.tmExternalLeading;
        host.broadcasts.clear();
    }
    static std::string Drawing(CView& view) {
        RecordingGraphics graphics;
        CDC dc(&graphics);
        view.OnDraw(&dc);
        return graphics.Text();
    }
    // In the table's column that begins behind so many characters.
    void ClickTable(int characters, int row) {
        Click(*table, {characters * charWidth + 5, (row + 1) * rowHeight + 5});
    }

    std::unique_ptr<FakeDocking> docking_;
    std::unique_ptr<CKvxOSTraceDataCommandSink> sink_;
    COSTraceView* chart = nullptr;
    COSAnalyzeView* table = nullptr;
    int charWidth = 0;
    int rowHeight = 0;
};

TEST_F(BothWindows, OneOfEachKindOpensAndIsShownAgain) {
    EXPECT_TRUE(MayOpen(ids::kOpenOSAnalyze));
    OpenBoth(10);
    EXPECT_EQ(docking_->windows.size(), 2u);
    EXPECT_EQ(docking_->menus, (std::vector<UINT>{ids::kMenuOSTrace, ids::kMenuOSAnalyze}));
    EXPECT_EQ(docking_->toolbars,
              (std::vector<UINT>{ids::kToolbarOSTrace, ids::kToolbarOSAnalyze}));
    EXPECT_TRUE(MayOpen(ids::kOpenOSAnalyze));
    const HWND window = docking_->windows[1]->GetSafeHwnd();
    docking_->states.clear();
    sink_->OnCommand(ids::kOpenOSAnalyze);
    EXPECT_EQ(docking_->windows.size(), 2u);
    EXPECT_EQ(docking_->states, (std::map<HWND, int>{{window, kDockShow}}));

    // Not found any more while the window is open: a second one is refused.
    const auto named = std::exchange(docking_->named, {});
    EXPECT_FALSE(MayOpen(ids::kOpenOSAnalyze));
    docking_->named = named;
    const HWND control = docking_->windows[1]->GetDlgItem(1)->GetSafeHwnd();
    EXPECT_EQ(sink_->CloseInstance(control, 0), 1);
    docking_->named.clear();
    EXPECT_TRUE(MayOpen(ids::kOpenOSAnalyze));
}

TEST_F(BothWindows, AClickOnAMaxCellMovesTheIndicatorAndTheChartFollows) {
    OpenBoth(400);
    const double displayed = chart->Display()->viewport.Geometry().displayStart;
    // The window shows the first records; the chart scrolls away from them.
    chart->SendMessage(WM_HSCROLL, MakeScroll(SB_RIGHT, 0));
    ASSERT_GT(chart->Display()->viewport.Geometry().displayStart, displayed + 1000);
    const double away = chart->Display()->viewport.Geometry().displayStart;
    host.broadcasts.clear();
    ClickTable(5 + 8 + 5 + 12 + 7, kControlLine);
    ASSERT_EQ(host.broadcasts.size(), 1u);
    EXPECT_EQ(host.broadcasts[0].datum,
              reinterpret_cast<std::uintptr_t>(static_cast<IViewSender*>(table)));
    EXPECT_LT(chart->Display()->viewport.Geometry().displayStart, away);
    EXPECT_TRUE(chart->Display()->viewport.Geometry().InDisplay(110.0));
    EXPECT_NE(Drawing(*table).find("invert"), std::string::npos);
}

// A view that were told of its own change would bring the row into the middle.
TEST_F(BothWindows, TheTableDoesNotFollowItsOwnClick) {
    OpenBoth(40);
    table->SendMessage(WM_COMMAND, MakeCommand(ids::kSystemCall));
    const int visible = table->GetClientRect().Height() / rowHeight - 1;
    ASSERT_GT(40, visible + 3);
    table->SendMessage(WM_KEYDOWN, VK_DOWN);
    ClickTable(1, visible);  // the row that is only partly shown
    EXPECT_EQ(host.broadcasts.size(), 1u);
    EXPECT_EQ(table->GetScrollPos(SB_VERT), 1);
    // The chart's indicator is followed.
    chart->SendMessage(WM_COMMAND, MakeCommand(ids::kIndicator));
    EXPECT_EQ(host.broadcasts.size(), 2u);
}

TEST_F(BothWindows, AMarkerDroppedInTheChartRebuildsTheTables) {
    OpenBoth(400);
    ASSERT_EQ(Drawing(*table).find("invert"), std::string::npos);
    const ChartGeometry geometry = chart->Display()->viewport.Geometry();
    const std::string before = Drawing(*table);
    const int y = geometry.LineCentre(0);
    const int from = geometry.X(geometry.displayEnd);
    const int to = geometry.X(1110.0);
    Press(*chart, {from, y});
    Move(*chart, {to, y});
    EXPECT_TRUE(Drawing(*table) == before) << "not while it is dragged";
    EXPECT_TRUE(host.broadcasts.empty());
    Release(*chart, {to, y});
    ASSERT_EQ(host.broadcasts.size(), 1u);
    EXPECT_EQ(host.broadcasts[0].datum,
              reinterpret_cast<std::uintptr_t>(static_cast<IViewSender*>(chart)));
    const std::string after = Drawing(*table);
    EXPECT_NE(after.find("\"   11\" #000000"), std::string::npos) << "runs of the timer";
}

}  // namespace
}  // namespace kvx::test
