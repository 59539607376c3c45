// Text logs: finding the records, decoding them, and what an event costs in memory.
//
// The log is made once, by the simulated kernel: KVX_BENCH_RECORDS sets its length.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include "workbench/formats/OpenRecording.h"
#include "workbench/formats/text/LineIndex.h"
#include "workbench/formats/text/MappedFile.h"
#include "workbench/service/DecodedRecording.h"
#include "workbench/service/TraceService.h"
#include "workbench/simulation/Generate.h"

namespace kvx {
namespace {

class BigLog {
  public:
    static const BigLog& Get() {
        static const BigLog log;
        return log;
    }
    ~BigLog() { std::filesystem::remove_all(folder_); }
    const std::string& Path() const { return path_; }

  private:
    BigLog() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "kvx-bench-XXXXXX").string();
        folder_ = mkdtemp(pattern.data());
        path_ = folder_ + "/big.log";
        const char* records = std::getenv("KVX_BENCH_RECORDS");
        simulation::GenerateOptions options;
        options.events = records ? std::strtoull(records, nullptr, 10) : 10000000;
        simulation::GenerateFiles(options, path_);
    }

    std::string folder_;
    std::string path_;
};

std::size_t ResidentBytes() {
    std::ifstream file("/proc/self/statm");
    std::size_t total = 0;
    std::size_t resident = 0;
    std::size_t shared = 0;
    file >> total >> resident >> shared;
    return (resident - shared) * 4096;  // without the mapped file
}

// What the memory allows: one pass of memchr for a byte that does not occur.
void BM_ReadEveryByte(benchmark::State& state) {
    const auto file = formats::MapFile(BigLog::Get().Path());
    const auto text = file->Text();
    for (auto _ : state) benchmark::DoNotOptimize(std::memchr(text.data(), '\1', text.size()));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(BM_ReadEveryByte)->Unit(benchmark::kMillisecond);

void BM_FindLineEnds(benchmark::State& state) {
    const auto file = formats::MapFile(BigLog::Get().Path());
    const auto text = file->Text();
    for (auto _ : state) {
        std::size_t lines = 0;
        for (std::size_t at = 0; (at = text.find('\n', at)) != std::string_view::npos; ++at)
            ++lines;
        benchmark::DoNotOptimize(lines);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(BM_FindLineEnds)->Unit(benchmark::kMillisecond);

void BM_Index(benchmark::State& state) {
    const auto file = formats::MapFile(BigLog::Get().Path());
    for (auto _ : state) {
        bool cancelled = false;
        benchmark::DoNotOptimize(formats::BuildLineIndex(file->Text(), {}, nullptr, cancelled));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(file->Text().size()));
}
BENCHMARK(BM_Index)->Unit(benchmark::kMillisecond);

// From the path to the first 300 records: mapping and page faults included.
void BM_OpenAndDecodeTheBeginning(benchmark::State& state) {
    BigLog::Get();
    for (auto _ : state) {
        service::TraceService trace;
        trace.SetRecording(std::move(*formats::OpenRecording(BigLog::Get().Path())));
        std::int64_t a = 0;
        std::int64_t b = 0;
        std::int64_t c = 0;
        trace.AnalyzeRecords(0, 299, &a, &b, &c);
    }
}
BENCHMARK(BM_OpenAndDecodeTheBeginning)->Unit(benchmark::kMillisecond);

void BM_Decode(benchmark::State& state) {
    const auto before = ResidentBytes();
    std::uint64_t events = 0;
    std::uint64_t bytes = 0;
    for (auto _ : state) {
        const service::DecodedRecording decoded(
            std::move(*formats::OpenRecording(BigLog::Get().Path())));
        decoded.WaitForAll();
        events = decoded.Timelines().front()->events.Count();
        bytes = ResidentBytes() - before;
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(events));
    state.counters["events"] = static_cast<double>(events);
    state.counters["bytes_an_event"] = static_cast<double>(bytes) / static_cast<double>(events);
}
BENCHMARK(BM_Decode)->Unit(benchmark::kMillisecond);

// As the chart asks for what is decoded: one record a call.
void BM_DecodeOneByOne(benchmark::State& state) {
    service::TraceService trace;
    trace.SetRecording(std::move(*formats::OpenRecording(BigLog::Get().Path())));
    const auto records = static_cast<std::int32_t>(trace.GetRecording()->RecordCount());
    for (auto _ : state) {
        trace.DiscardData();
        std::int64_t a = 0;
        std::int64_t b = 0;
        std::int64_t c = 0;
        for (std::int32_t i = 0; i < records; ++i) trace.AnalyzeRecords(i, i, &a, &b, &c);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * records);
}
BENCHMARK(BM_DecodeOneByOne)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kvx
