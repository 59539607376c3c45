// The OS Trace window itself, offscreen, 40 lines by 1600 pixels of chart, on ten million events,
// or as many as KVX_BENCH_EVENTS says: paints, zooming, scrolling, a marker that is dragged and
// dropped, and the marker commands.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <stdexcept>

#include "core/LargeTrace.h"
#include "framework/UpdateHints.h"
#include "host/CommandIds.h"
#include "host/DebuggerFunctions.h"
#include "platform/Backend.h"
#include "platform/base/Keys.h"
#include "sink/OSTraceInstanceCtrl.h"
#include "traceview/TraceView.h"
#include "utils/DllResource.h"
#include "utils/Path.h"

namespace kvx::bench {
namespace {

std::uint32_t Events() {
    const char* const events = std::getenv("KVX_BENCH_EVENTS");
    return events ? static_cast<std::uint32_t>(std::strtoul(events, nullptr, 10)) : 10'000'000;
}

constexpr int kLines = 40;
constexpr int kChartWidth = 1600;

// One window for all benchmarks; the trace is decoded as far as its first display needs.
class Window {
  public:
    static Window& Get() {
        static Window& window = *new Window;  // lives as long as the program
        return window;
    }

    COSTraceView& View() { return *view_; }
    COSTraceData& Data() { return core_.data; }
    ChartGeometry Geometry() const { return view_->Display()->viewport.Geometry(); }
    void Command(UINT id) { instance_->OnCommand(id); }
    void ShowAll() {
        const ChartGeometry g = Geometry();
        view_->Display()->SetDisplayRange(g.traceStart, g.traceEnd);
    }
    // A share of the trace, in hundredths of a per cent, from its middle.
    void Show(double share) {
        ShowAll();
        const ChartGeometry g = Geometry();
        const double span = (g.traceEnd - g.traceStart) * share / 10000.0;
        const double start = g.traceStart + (g.traceEnd - g.traceStart) / 2;
        view_->Display()->SetDisplayRange(start, start + span);
    }
    void Mouse(UINT message, CPoint at) {
        view_->SendMessage(message, MK_LBUTTON, MakePointParam(at.x, at.y));
    }

  private:
    Window() : core_(LargeTrace(Events())) {
        setenv("QT_QPA_PLATFORM", "offscreen", 0);
        InstallBackend();
        CString message;
        const CString path = JoinPath(AfxGetModuleDirectory(), "KvxOSTraceExtRes.dll");
        resources_ = CDllResource::Load(path, message);
        if (!resources_) throw std::runtime_error(message);
        host::ResolveDebuggerFunctions(&core_.host, [](const char*) {});
        main_.Create(WS_OVERLAPPED | WS_VISIBLE, {0, 0, 2000, 900}, HWND{}, 0);
        instance_ = std::make_unique<CKvxOSTraceInstanceCtrl>(&core_.host, nullptr, core_.data);
        instance_->Create(WS_CHILD | WS_VISIBLE, {0, 0, 1900, 800}, &main_, 1);
        instance_->SetFont("Courier New", 11);
        view_ = instance_->Frame().TraceView();
        view_->OnUpdate(view_, kHintTraceReady, nullptr);
        // As large as the lines and the chart ask for, scroll bars and status bar added.
        const ChartGeometry g = Geometry();
        const CRect client = view_->GetClientRect();
        const int width = 1900 + kChartWidth - (g.right - g.left);
        const int height = 800 + (kLines + 1) * g.lineHeight - client.Height();
        instance_->MoveWindow(0, 0, width, height);
    }

    test::Core core_;
    std::unique_ptr<CDllResource> resources_;
    CWnd main_;
    std::unique_ptr<CKvxOSTraceInstanceCtrl> instance_;
    COSTraceView* view_ = nullptr;
};

// A paint of what was not shown before.
void PaintAnew(Window& window) {
    window.View().Display()->kept.Forget();
    window.View().RedrawWindow();
}

void Paint(benchmark::State& state) {
    Window& window = Window::Get();
    window.Show(static_cast<double>(state.range(0)));
    for (auto _ : state) PaintAnew(window);
    const ChartGeometry g = window.Geometry();
    state.counters["lines"] = std::min(g.visibleLines + 1, g.lineCount);
    state.counters["pixels"] = g.right - g.left;
}
BENCHMARK(Paint)->ArgName("share")->Arg(5000)->Arg(100)->Arg(1)->Unit(benchmark::kMillisecond);

void PaintWholeTrace(benchmark::State& state) {
    Window& window = Window::Get();
    window.ShowAll();
    for (auto _ : state) PaintAnew(window);
}
BENCHMARK(PaintWholeTrace)->Unit(benchmark::kMillisecond);

// As after a marker has moved.
void PaintWholeTraceAgain(benchmark::State& state) {
    Window& window = Window::Get();
    window.ShowAll();
    for (auto _ : state) window.View().RedrawWindow();
}
BENCHMARK(PaintWholeTraceAgain)->Unit(benchmark::kMillisecond);

// Expand and Reduce in turn, each with its paint.
void Zoom(benchmark::State& state) {
    Window& window = Window::Get();
    window.Show(100);
    for (auto _ : state) {
        window.Command(ids::kExpand);
        window.View().UpdateWindow();
        window.Command(ids::kReduce);
        window.View().UpdateWindow();
    }
}
BENCHMARK(Zoom)->Unit(benchmark::kMillisecond);

void Scroll(benchmark::State& state) {
    Window& window = Window::Get();
    window.Show(100);
    for (auto _ : state) {
        window.View().SendMessage(WM_HSCROLL, MakeScroll(SB_LINERIGHT, 0));
        window.View().UpdateWindow();
        window.View().SendMessage(WM_HSCROLL, MakeScroll(SB_LINELEFT, 0));
        window.View().UpdateWindow();
    }
}
BENCHMARK(Scroll)->Unit(benchmark::kMillisecond);

// One move of the mouse while the end marker is dragged over the whole trace.
void MarkerDragMove(benchmark::State& state) {
    Window& window = Window::Get();
    window.ShowAll();
    window.View().UpdateWindow();
    const ChartGeometry g = window.Geometry();
    const int y = g.LineCentre(0);
    window.Mouse(WM_LBUTTONDOWN, {g.X(window.Data().markers.GetMarkerTime(kMarkerEnd)), y});
    bool left = false;
    for (auto _ : state) {
        left = !left;
        window.Mouse(WM_MOUSEMOVE, {left ? g.left + 100 : g.right - 100, y});
    }
    window.View().SendMessage(WM_KEYDOWN, VK_ESCAPE);
}
BENCHMARK(MarkerDragMove)->Unit(benchmark::kMillisecond);

// The drop of the end marker on the whole trace: analyses and paint.
void MarkerDrop(benchmark::State& state) {
    Window& window = Window::Get();
    window.ShowAll();
    window.View().UpdateWindow();
    const ChartGeometry g = window.Geometry();
    const int y = g.LineCentre(0);
    for (auto _ : state) {
        const int x = g.X(window.Data().markers.GetMarkerTime(kMarkerEnd));
        window.Mouse(WM_LBUTTONDOWN, {x, y});
        window.Mouse(WM_MOUSEMOVE, {x > g.right - 20 ? x - 30 : g.right - 1, y});
        window.Mouse(WM_LBUTTONUP, {0, y});
        window.View().UpdateWindow();
    }
}
BENCHMARK(MarkerDrop)->Unit(benchmark::kMillisecond);

// The commands that bring a marker into a display in the middle of the trace. Start and end marker
// include the analyses between them.
void MarkerCommand(benchmark::State& state) {
    Window& window = Window::Get();
    window.Show(1);
    for (auto _ : state) window.Command(static_cast<UINT>(state.range(0)));
}
BENCHMARK(MarkerCommand)
    ->ArgName("command")
    ->Arg(ids::kStartMarker)
    ->Arg(ids::kEndMarker)
    ->Arg(ids::kIndicator)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kvx::bench
