// The simulated target: how fast it runs, and how long Stop takes until its recording is open.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>

#include "host/OSTraceService.h"
#include "workbench/formats/OpenRecording.h"
#include "workbench/target/SimulatedTarget.h"

namespace kvx::target {
namespace {

constexpr simulation::Time kTick = 20'000;  // microseconds, as the Workbench lets it run

// One tick of a running target that records into a ring.
void BM_Tick(benchmark::State& state) {
    SimulatedTarget target(100'000);
    target.SetRangeCondition(kRangeFree);
    target.Go();
    for (auto _ : state) target.Advance(kTick);
}
BENCHMARK(BM_Tick)->Unit(benchmark::kMicrosecond);

void BM_StopToRecording(benchmark::State& state) {
    SimulatedTarget target(static_cast<std::size_t>(state.range(0)));
    target.Go();
    while (target.Buffer().IsRecording()) target.Advance(kTick);
    std::string folder = (std::filesystem::temp_directory_path() / "kvx-bench-XXXXXX").string();
    if (!mkdtemp(folder.data())) return state.SkipWithError("no temporary folder");
    const std::string path = folder + "/target.log";
    for (auto _ : state) {
        if (!target.WriteRecording(path).empty()) state.SkipWithError("cannot be written");
        benchmark::DoNotOptimize(formats::OpenRecording(path));
    }
    std::filesystem::remove_all(folder);
}
BENCHMARK(BM_StopToRecording)
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->Arg(10'000'000)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kvx::target
