// Sorting the system-call table of a real service: a generated log of ten million lines, a range of
// one million calls.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "trace/TraceData.h"
#include "workbench/cli/AnalysisHost.h"
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
    COSTraceData data;

  private:
    DecodedLog() {
        const auto path = std::filesystem::temp_directory_path() / "kvx_sort_bench.log";
        const std::string failure = simulation::GenerateFiles({kLines, 1}, path.string());
        if (!failure.empty()) throw std::runtime_error(failure);
        auto opened = formats::OpenRecording(path.string());
        if (!opened) throw std::runtime_error(opened.GetError().message);
        service_.SetRecording(std::move(*opened));
        host_ = std::make_unique<cli::AnalysisHost>(service_);
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

    service::TraceService service_;
    std::unique_ptr<cli::AnalysisHost> host_;
};

void SortSysCallsOfLog(benchmark::State& state) {
    COSSysCallList& calls = DecodedLog::Get().data.sysCalls;
    for (auto _ : state) calls.Sort(static_cast<int>(state.range(0)), 0);
    state.counters["rows"] = static_cast<double>(calls.RowCount());
}
BENCHMARK(SortSysCallsOfLog)->ArgName("column")->DenseRange(0, 4)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kvx::bench
