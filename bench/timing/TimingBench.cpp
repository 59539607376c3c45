// Jobs, waits, locks and findings of a log of 10 million lines, beside decoding it.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>

#include "workbench/formats/OpenRecording.h"
#include "workbench/service/DecodedRecording.h"
#include "workbench/simulation/Generate.h"
#include "workbench/timing/Findings.h"
#include "workbench/timing/LockTable.h"
#include "workbench/timing/WaitTable.h"

namespace kvx {
namespace {

constexpr std::uint64_t kLines = 10'000'000;

// Written once, removed at the end.
class BigLog {
  public:
    static const BigLog& Get() {
        static const BigLog log;
        return log;
    }
    ~BigLog() {
        std::filesystem::remove(path_);
        std::filesystem::remove(simulation::ResourcePath(path_));
    }
    std::unique_ptr<service::DecodedRecording> Decode() const {
        auto decoded =
            std::make_unique<service::DecodedRecording>(std::move(*formats::OpenRecording(path_)));
        decoded->WaitForAll();
        return decoded;
    }

  private:
    BigLog() : path_((std::filesystem::temp_directory_path() / "kvx_bench_timing.log").string()) {
        simulation::GenerateFiles({.events = kLines, .seed = 1}, path_);
    }
    std::string path_;
};

void BM_DecodeForTiming(benchmark::State& state) {
    BigLog::Get();
    for (auto _ : state) benchmark::DoNotOptimize(BigLog::Get().Decode());
}
BENCHMARK(BM_DecodeForTiming)->Unit(benchmark::kMillisecond);

// All jobs, waits, locks and findings.
void BM_Timing(benchmark::State& state) {
    const auto decoded = BigLog::Get().Decode();
    std::size_t events = 0;
    for (const auto& timeline : decoded->Timelines()) events += timeline->events.Count();
    std::size_t bytes = 0;
    for (auto _ : state) {
        const timing::Model model(*decoded);
        timing::Walk walk = model.NewWalk();
        const timing::Selection all{model.Range(), std::nullopt};
        timing::WaitTable waits(all, model.AllContexts().Count());
        timing::LockTable locks(walk, all);
        walk.Add(waits);
        walk.Add(locks);
        walk.Run();
        benchmark::DoNotOptimize(waits.Rows());
        benchmark::DoNotOptimize(locks.Rows());
        benchmark::DoNotOptimize(timing::FindAll(model, {}));
        bytes = model.Bytes();
    }
    state.counters["bytes_an_event"] = static_cast<double>(bytes) / static_cast<double>(events);
}
BENCHMARK(BM_Timing)->Unit(benchmark::kMillisecond);

void BM_CallFacts(benchmark::State& state) {
    const auto decoded = BigLog::Get().Decode();
    for (auto _ : state) benchmark::DoNotOptimize(timing::CallFacts(*decoded));
}
BENCHMARK(BM_CallFacts)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kvx
