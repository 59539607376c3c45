// CTF: a whole decode beside what the library's own program takes to read the same and show
// nothing.
//
// The trace is made once: two processors of a Linux kernel, packets of 256 KiB. KVX_BENCH_RECORDS
// sets how many events it has.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include "workbench/formats/OpenRecording.h"
#include "workbench/service/TraceService.h"

namespace kvx {
namespace {

constexpr const char* kMetadata = R"(/* CTF 1.8 */
typealias integer { size = 8; align = 8; signed = false; } := uint8_t;
typealias integer { size = 32; align = 8; signed = false; } := uint32_t;
typealias integer { size = 64; align = 8; signed = false; } := uint64_t;
typealias integer { size = 32; align = 8; signed = true; } := int32_t;
typealias integer { size = 64; align = 8; signed = true; } := int64_t;
typealias integer { size = 8; align = 8; signed = false; encoding = UTF8; } := text_t;
trace { major = 1; minor = 8; byte_order = le;
  packet.header := struct { uint32_t magic; uint32_t stream_id; }; };
clock { name = mono; freq = 1000000000; };
typealias integer { size = 64; align = 8; signed = false; map = clock.mono.value; } := stamp_t;
struct context { stamp_t timestamp_begin; stamp_t timestamp_end; uint64_t content_size;
  uint64_t packet_size; uint64_t events_discarded; uint32_t cpu_id; };
stream { id = 0; packet.context := struct context;
  event.header := struct { uint8_t id; stamp_t timestamp; }; };
event { name = "sched_switch"; id = 1; stream_id = 0; fields := struct { text_t prev_comm[16];
  int32_t prev_tid; int32_t prev_prio; int64_t prev_state; text_t next_comm[16]; int32_t next_tid;
  int32_t next_prio; }; };
event { name = "sched_waking"; id = 2; stream_id = 0; fields := struct { text_t comm[16];
  int32_t tid; int32_t prio; int32_t target_cpu; }; };
event { name = "syscall_entry_read"; id = 3; stream_id = 0;
  fields := struct { uint32_t fd; uint64_t buf; uint64_t count; }; };
event { name = "syscall_exit_read"; id = 4; stream_id = 0; fields := struct { int64_t ret; }; };
)";

class Packets {
  public:
    Packets(const std::string& path, std::uint32_t processor)
        : out_(path, std::ios::binary), processor_(processor) {}
    ~Packets() { End(); }

    // Room for one more event of that time.
    void Begin(std::uint64_t time, std::uint8_t id) {
        if (packet_.size() > kPacket - 128) End();
        if (packet_.empty()) {
            first_ = time;
            packet_.resize(kHead);
        }
        last_ = time;
        Put(id);
        Put(time);
    }
    template <class Number>
    void Put(Number value) {
        const auto at = packet_.size();
        packet_.resize(at + sizeof(value));
        std::memcpy(packet_.data() + at, &value, sizeof(value));
    }
    void Name(std::int32_t task) {
        char name[16] = {};
        std::snprintf(name, sizeof(name), "task-%d", task);
        packet_.append(name, sizeof(name));
    }

  private:
    static constexpr std::size_t kPacket = std::size_t{256} << 10;
    static constexpr std::size_t kHead = 52;

    void End() {
        if (packet_.empty()) return;
        const auto content = packet_.size();
        packet_.resize(kPacket);
        std::string rest;
        rest.swap(packet_);
        Put(std::uint32_t{0xC1FC1FC1});
        Put(std::uint32_t{0});
        Put(first_);
        Put(last_);
        Put(std::uint64_t{8 * content});
        Put(std::uint64_t{8 * kPacket});
        Put(std::uint64_t{0});
        Put(processor_);
        std::copy(packet_.begin(), packet_.end(), rest.begin());
        packet_.clear();
        out_.write(rest.data(), static_cast<std::streamsize>(rest.size()));
    }

    std::ofstream out_;
    const std::uint32_t processor_;
    std::string packet_;
    std::uint64_t first_ = 0;
    std::uint64_t last_ = 0;
};

class BigTrace {
  public:
    static const BigTrace& Get() {
        static const BigTrace trace;
        return trace;
    }
    ~BigTrace() { std::filesystem::remove_all(folder_); }
    const std::string& Path() const { return folder_; }
    std::uint64_t Events() const { return events_; }

  private:
    BigTrace() {
        std::string pattern = (std::filesystem::temp_directory_path() / "kvx-ctf-XXXXXX").string();
        folder_ = mkdtemp(pattern.data());
        std::ofstream(folder_ + "/metadata") << kMetadata;
        const char* wanted = std::getenv("KVX_BENCH_RECORDS");
        events_ = wanted ? std::strtoull(wanted, nullptr, 10) : 2000000;
        Packets streams[] = {{folder_ + "/channel0_0", 0}, {folder_ + "/channel0_1", 1}};
        std::int32_t running[] = {1, 2};
        std::uint64_t time = 1000;
        for (std::uint64_t i = 0; i < events_; i += 4) {
            const auto cpu = i / 4 % 2;
            Packets& out = streams[cpu];
            const auto next = static_cast<std::int32_t>(i * 7919 % 97 + 1);
            out.Begin(time += 300, 3);
            out.Put(5u);
            out.Put(std::uint64_t{0x7F0000001000});
            out.Put(i);
            out.Begin(time += 200, 2);
            out.Name(next);
            out.Put(next);
            out.Put(20);
            out.Put(static_cast<std::int32_t>(cpu));
            out.Begin(time += 700, 1);
            out.Name(running[cpu]);
            out.Put(running[cpu]);
            out.Put(20);
            out.Put(static_cast<std::int64_t>(i % 3 == 0));
            out.Name(next);
            out.Put(next);
            out.Put(20);
            running[cpu] = next;
            out.Begin(time += 100, 4);
            out.Put(static_cast<std::int64_t>(i));
        }
    }

    std::string folder_;
    std::uint64_t events_ = 0;
};

void Count(benchmark::State& state) {
    state.counters["events/s"] = benchmark::Counter(
        static_cast<double>(BigTrace::Get().Events()) * static_cast<double>(state.iterations()),
        benchmark::Counter::kIsRate);
}

void BM_LibrarysProgram(benchmark::State& state) {
    const auto command = "babeltrace2 '" + BigTrace::Get().Path() + "' -o dummy";
    for (auto _ : state)
        if (std::system(command.c_str()) != 0) state.SkipWithError("babeltrace2 fails");
    Count(state);
}
BENCHMARK(BM_LibrarysProgram)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_ReadCtf(benchmark::State& state) {
    for (auto _ : state)
        if (!formats::OpenRecording(BigTrace::Get().Path())) state.SkipWithError("not opened");
    Count(state);
}
BENCHMARK(BM_ReadCtf)->Unit(benchmark::kMillisecond)->UseRealTime();

// From the name of the trace to the first 300 records decoded, while the rest is still read.
class UntilBeginning final : public formats::IOpenProgress {
  public:
    bool Progress(std::uint64_t, std::uint64_t) override { return !beginning_; }
    bool WantsBeginning() const override { return true; }
    void Beginning(std::unique_ptr<formats::Recording> beginning) override {
        beginning_ = std::move(beginning);
    }
    std::unique_ptr<formats::Recording> Take() { return std::move(beginning_); }

  private:
    std::unique_ptr<formats::Recording> beginning_;
};

void BM_FirstLookAtCtf(benchmark::State& state) {
    for (auto _ : state) {
        UntilBeginning progress;
        (void)formats::OpenRecording(BigTrace::Get().Path(), {}, &progress);
        auto beginning = progress.Take();
        if (!beginning) return state.SkipWithError("no beginning");
        service::TraceService trace;
        trace.SetRecording(std::move(beginning));
        std::int64_t a = 0, b = 0, c = 0;
        if (trace.AnalyzeRecords(1, 300, &a, &b, &c) < 0) state.SkipWithError("not decoded");
    }
}
BENCHMARK(BM_FirstLookAtCtf)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_ReadAndDecodeCtf(benchmark::State& state) {
    for (auto _ : state) {
        auto recording = formats::OpenRecording(BigTrace::Get().Path());
        if (!recording) return state.SkipWithError("not opened");
        service::TraceService trace;
        trace.SetRecording(std::move(*recording));
        benchmark::DoNotOptimize(trace.Summarize().records);
    }
    Count(state);
}
BENCHMARK(BM_ReadAndDecodeCtf)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace kvx
