#include <benchmark/benchmark.h>

#include <numeric>
#include <vector>

#include "LargeTrace.h"
#include "trace/EventReader.h"
#include "traceview/model/KeptItems.h"

namespace kvx::bench {

namespace {

constexpr std::uint32_t kEvents = 10'000'000;

// Of the tables of the modes, or, 3, all of them: what windows read after a marker was dropped.
void ReadTables(COSTraceData& data, std::int64_t which) {
    for (std::size_t mode = 0; mode < data.analyses.size(); ++mode)
        if (which == 3 || which == static_cast<std::int64_t>(mode))
            benchmark::DoNotOptimize(data.analyses[mode]->RowCount());
}

// A marker dropped on the whole trace, and the tables read.
void MarkerDrop(benchmark::State& state) {
    test::Core& core = LargeCore(kEvents);
    core.service.bulk = state.range(0) != 0;
    core.SetRange(0, kEvents - 1);
    for (auto _ : state) {
        core.data.markers.SetMarker(nullptr, kMarkerEnd, kEvents - 1);
        ReadTables(core.data, state.range(1));
    }
}
BENCHMARK(MarkerDrop)
    ->ArgNames({"bulk", "table"})
    ->ArgsProduct({{1}, {0, 1, 2, 3}})
    ->Args({0, 3})
    ->Unit(benchmark::kMillisecond);

// What reading as much memory once takes.
void SumOfMemory(benchmark::State& state) {
    const std::vector<std::uint64_t> memory(std::size_t{240} * 1000 * 1000 / 8, 3);
    for (auto _ : state)
        benchmark::DoNotOptimize(std::accumulate(memory.begin(), memory.end(), std::uint64_t{0}));
}
BENCHMARK(SumOfMemory)->Unit(benchmark::kMillisecond);

// The same with a range that begins late, so that waits look back.
void MarkerDropLate(benchmark::State& state) {
    test::Core& core = LargeCore(kEvents);
    core.service.bulk = state.range(0) != 0;
    core.SetRange(kEvents / 2, kEvents - 1);
    for (auto _ : state) {
        core.data.markers.SetMarker(nullptr, kMarkerEnd, kEvents - 1);
        ReadTables(core.data, 3);
    }
}
BENCHMARK(MarkerDropLate)->ArgName("bulk")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond);

// A click on a column of the system-call table.
void SortSysCalls(benchmark::State& state) {
    test::Core& core = LargeCore(kEvents);
    core.service.bulk = true;
    const std::uint32_t last = core.service.Trace().sysCalls[1'000'000 - 1];
    core.SetRange(0, last);
    for (auto _ : state) {
        core.data.sysCalls.Sort(static_cast<int>(state.range(0)), 0);
        benchmark::DoNotOptimize(core.data.sysCalls.RowHistoryIndex(0));
    }
    state.counters["rows"] = core.data.sysCalls.RowCount();
}
BENCHMARK(SortSysCalls)->ArgName("column")->DenseRange(0, 4)->Unit(benchmark::kMillisecond);

// What one paint of 40 lines x 1600 pixels draws. share: how much of the trace is shown, in
// hundredths; form: 0 plain operations, 1 columns, 2 columns with lists by context.
void Chart(benchmark::State& state) {
    const auto events = static_cast<std::uint32_t>(state.range(2)) * 1'000'000;
    test::Core& core = LargeCore(events);
    core.service.bulk = state.range(1) != 0;
    core.service.indexed = state.range(1) == 2;
    core.service.Reload();
    ChartGeometry g;
    g.left = 300;
    g.right = 1900;
    g.traceStart = static_cast<double>(core.service.Trace().time.front());
    g.traceEnd = static_cast<double>(core.service.end);
    g.scale = 100.0 / static_cast<double>(state.range(0));
    g.displayStart = g.traceStart + (g.traceEnd - g.traceStart) * 0.3 * (g.scale > 1.0);
    g.displayEnd = g.displayStart + (g.traceEnd - g.traceStart) / g.scale;
    g.lineHeight = 16;
    g.charWidth = 8;
    g.lineCount = core.data.contexts.GetCount();
    g.visibleLines = g.lineCount - 1;
    g.clientHeight = (g.lineCount + 1) * g.lineHeight;
    const double grid = (g.displayEnd - g.displayStart) / 5.0;
    static_cast<void>(TakeColumns(core.service));  // which this service makes when first asked
    for (auto _ : state) {
        KeptItems kept;
        const ChartItems items = BuildChart(&core.service, g, core.data.engine, core.data.contexts,
                                            core.data.markers, grid, kept);
        state.counters["items"] = static_cast<double>(items.size());
    }
}
BENCHMARK(Chart)
    ->ArgNames({"share", "form", "million"})
    ->ArgsProduct({{100, 1}, {2, 1, 0}, {10}})
    ->Args({100, 2, 1})
    ->Args({100, 2, 100})
    ->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace kvx::bench
