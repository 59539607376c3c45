// Sorting the system-call table of a real service: a generated log of ten million lines, a range of
// one million calls.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include "trace/TraceData.h"
#include "workbench/cli/RecordingSource.h"
#include "workbench/formats/OpenRecording.h"
#include "workbench/simulation/Generate.h"

namespace kvx::bench {
namespace {

constexpr std::uint64_t kLines = 10'000'000;
constexpr std::uint32_t kRows = 1'000'000;

// The decoded log, the same for all benchmarks.
class DecodedLog {
  public:
    static DecodedLog& Get() {
        static DecodedLog log;
        return log;
    }

  private:
    service::TraceService service_;
    cli::RecordingSource source_{service_};

  public:
    COSTraceData data{source_};

  private:
    DecodedLog() {
        const auto path = std::filesystem::temp_directory_path() / "kvx_sort_bench.log";
        const std::string failure = simulation::GenerateFiles({kLines, 1}, path.string());
        if (!failure.empty()) throw std::runtime_error(failure);
        auto opened = formats::OpenRecording(path.string());
        if (!opened) throw std::runtime_error(opened.GetError().message);
        service_.SetRecording(std::move(*opened));
        data.engine.Open(nullptr);
        int advanced = 0;
        double first = 0.0;
        double end = 0.0;
        double analysed = 0.0;
        data.engine.GetTimes(&first, &end, &analysed);
        data.engine.AnalyzeUpTo(nullptr, end, &advanced);
        data.contexts.Load();
        std::uint32_t last = 0;
        service_.GetHistoryEvent(kRows - 1, &last);
        data.markers.SetMarker(nullptr, kMarkerStart, 1);
        data.markers.SetMarker(nullptr, kMarkerEnd, last);
        std::filesystem::remove(path);
    }
};

// A click on a title, until its rows can be read. The first one of a column reads the texts; the
// further ones, which are counted here, find them.
void SortSysCallsOfLog(benchmark::State& state) {
    COSSysCallList& calls = DecodedLog::Get().data.sysCalls;
    for (auto _ : state) {
        calls.Sort(static_cast<int>(state.range(0)), 0);
        benchmark::DoNotOptimize(calls.RowHistoryIndex(0));
    }
    state.counters["rows"] = static_cast<double>(calls.RowCount());
}
// The first sort by a column, texts included.
void SortSysCallsOfLogAnew(benchmark::State& state) {
    COSSysCallList& calls = DecodedLog::Get().data.sysCalls;
    for (auto _ : state) {
        state.PauseTiming();
        calls.Sort(state.range(0) == 1 ? 2 : 1, 0);  // another column's texts
        benchmark::DoNotOptimize(calls.RowHistoryIndex(0));
        state.ResumeTiming();
        calls.Sort(static_cast<int>(state.range(0)), 0);
        benchmark::DoNotOptimize(calls.RowHistoryIndex(0));
    }
    state.counters["rows"] = static_cast<double>(calls.RowCount());
}
BENCHMARK(SortSysCallsOfLogAnew)
    ->ArgName("column")
    ->DenseRange(0, 4)
    ->Unit(benchmark::kMillisecond);

// The end marker is dropped at the end of the log and a little before it in turn, with the table
// sorted by a column and on show: all analyses, and the rows in their order.
void DropOnSortedCalls(benchmark::State& state) {
    COSTraceData& data = DecodedLog::Get().data;
    double first = 0.0;
    double end = 0.0;
    double analysed = 0.0;
    data.engine.GetTimes(&first, &end, &analysed);
    data.markers.MoveEndIntoDisplay(nullptr, end);
    data.sysCalls.Sort(static_cast<int>(state.range(0)), 0);
    benchmark::DoNotOptimize(data.sysCalls.RowHistoryIndex(0));
    bool before = false;
    for (auto _ : state) {
        before = !before;
        data.markers.MoveEndIntoDisplay(nullptr, before ? end - (end - first) / 100.0 : end);
        benchmark::DoNotOptimize(data.sysCalls.FindRow(*data.sysCalls.Entry(0)));
    }
    state.counters["rows"] = static_cast<double>(data.sysCalls.RowCount());
}
BENCHMARK(DropOnSortedCalls)->ArgName("column")->DenseRange(0, 4)->Unit(benchmark::kMillisecond);

// What a machine needs to read as much memory as the columns of ten million events take.
void SumOfColumns(benchmark::State& state) {
    static const std::vector<std::uint64_t> columns(240'000'000 / sizeof(std::uint64_t), 1);
    for (auto _ : state) {
        std::uint64_t sum = 0;
        for (const std::uint64_t word : columns) sum += word;
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(SumOfColumns)->Unit(benchmark::kMillisecond);

BENCHMARK(SortSysCallsOfLog)->ArgName("column")->DenseRange(0, 4)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kvx::bench
