#pragma once
// An OS Trace window in a test: on the real back-end, offscreen, over a scripted trace.

#include "sink/OSTraceInstanceCtrl.h"
#include "support/ComponentWindow.h"
#include "traceview/TraceView.h"

namespace kvx::test {

// Three lines and idle; a period of 100 counts: handler, control, logger, idle.
inline ScriptedTrace PeriodicTrace(int periods) {
    ScriptedTrace trace;
    const auto handler = trace.AddHandler(3, "timer", 0x1234);
    const auto control = trace.AddTask(1, "control");
    const auto logger = trace.AddTask(2, "logger");
    const auto idle = trace.AddIdle();
    trace.State(0, control, 1);
    trace.State(0, logger, 6);
    for (int i = 0; i < periods; ++i) {
        const std::int64_t t = 100 + i * 100;
        trace.Dispatch(t, idle, handler);
        trace.Dispatch(t + 10, handler, control);
        trace.Call(t + 15, control, 4, {i == periods - 1 ? "last_call" : "sig_sem", "", ""});
        trace.State(t + 20, control, 4);
        trace.Dispatch(t + 20, control, logger);
        trace.Dispatch(t + 60, logger, idle);
    }
    return trace;
}

class TraceWindow : public ComponentWindow {
  protected:
    // Opens the window on the trace at 800 x 300.
    void Open(ScriptedTrace trace) {
        service.Load(std::move(trace));
        instance = std::make_unique<CKvxOSTraceInstanceCtrl>(&host, nullptr, data);
        ASSERT_TRUE(instance->Create(WS_CHILD | WS_VISIBLE, {0, 0, 800, 300}, &Main(), 1));
        instance->SetFont("Courier New", 11);
        view = instance->Frame().TraceView();
        view->OnUpdate(view, kHintTraceReady, nullptr);
        host.onBroadcast = [this](const EventRecord& record) {
            const bool own = instance && instance->IsSender(record.datum);
            if (instance && !own) instance->UpdateView(kHintDisplayChanged);
        };
        view->UpdateWindow();
    }

    void Close() override {
        if (!instance) return;
        instance->DestroyWindow();
        instance.reset();
        view = nullptr;
    }

    ChartViewport& Viewport() const { return view->Display()->viewport; }
    ChartGeometry Geometry() const { return Viewport().Geometry(); }
    // The middle of a line's row, in the table.
    CPoint Cell(int line) const { return {40, Geometry().LineCentre(line)}; }
    CPoint InChart(double time) const {
        return {Geometry().X(time), Geometry().LineCentre(Geometry().firstLine)};
    }
    void Press(CPoint at) { ComponentWindow::Press(*view, at); }
    void Move(CPoint at) { ComponentWindow::Move(*view, at); }
    void Release(CPoint at) { ComponentWindow::Release(*view, at); }
    void Drag(CPoint from, CPoint to) { ComponentWindow::Drag(*view, from, to); }
    bool Enabled(UINT command) const {
        CCmdUI ui(command);
        return instance->OnUpdateCommand(command, ui) && ui.IsEnabled();
    }
    void Command(UINT command) {
        ASSERT_TRUE(Enabled(command)) << command;
        ASSERT_TRUE(instance->OnCommand(command)) << command;
    }
    double MarkerTime(int which) const { return data.markers.GetMarkerTime(which); }
    CString NameOf(int line) const { return data.contexts.GetShownName(line); }
    // Presses STOP of the progress dialog, as the user does while records are decoded.
    void StopAfter(int blocks);

    std::unique_ptr<CKvxOSTraceInstanceCtrl> instance;
    COSTraceView* view = nullptr;
};

}  // namespace kvx::test
