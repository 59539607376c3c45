// Contexts in great number: what finding one of them, and its line, costs.

#include <benchmark/benchmark.h>

#include <fstream>

#include "host/OSTraceService.h"
#include "simulation/TemporaryFolder.h"
#include "workbench/formats/OpenRecording.h"
#include "workbench/service/TraceService.h"

namespace kvx {
namespace {

// Every task becomes ready, runs and waits once; the numbers come in no order.
std::string LogOf(std::int64_t tasks) {
    std::string log;
    for (std::int64_t i = 0; i < tasks; ++i) {
        const auto task = std::to_string(i * 7919 % tasks + 1);
        const auto at = [&](int offset) { return "[" + std::to_string(10 * i + offset) + "] "; };
        log += at(1) + "task " + task + " becomes RUNNABLE.\n" + at(2) + "dispatch to task " +
               task + ".\n" + at(6) + "task " + task + " becomes WAITING.\n" + at(6) +
               "dispatch from task " + task + ".\n";
    }
    return log;
}

// Decodes everything and asks for the line of each event's context.
void BM_Contexts(benchmark::State& state) {
    const simulation::TemporaryFolder folder;
    const auto path = folder.Path("tasks.log");
    std::ofstream(path) << LogOf(state.range(0));
    for (auto _ : state) {
        service::TraceService trace;
        trace.SetRecording(std::move(*formats::OpenRecording(path, {})));
        std::int64_t a = 0;
        std::int64_t b = 0;
        std::int64_t c = 0;
        for (std::int32_t record = 0; record < 4 * state.range(0); record += 302) {
            trace.AnalyzeRecords(record, record + 301, &a, &b, &c);
            std::int32_t lines = 0;
            trace.GetContextCount(&lines);
            benchmark::DoNotOptimize(lines);
        }
        std::uint32_t events = 0;
        trace.GetEventCount(&events);
        for (std::uint32_t event = 0; event < events; ++event) {
            std::int32_t line = 0;
            trace.GetEventContext(event, &line);
            benchmark::DoNotOptimize(line);
        }
    }
}
BENCHMARK(BM_Contexts)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kvx
