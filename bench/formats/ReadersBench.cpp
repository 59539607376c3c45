// Recordings of each format, opened and decoded as a whole, beside a text log of as many records:
// KVX_BENCH_RECORDS sets how many.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/base/Text.h"
#include "support/SystemViewWriter.h"
#include "support/ThreadXWriter.h"
#include "workbench/formats/OpenRecording.h"
#include "workbench/service/DecodedRecording.h"
#include "workbench/simulation/Generate.h"

namespace kvx {
namespace {

constexpr std::uint32_t kTasks = 8;

std::uint32_t Records() {
    const char* records = std::getenv("KVX_BENCH_RECORDS");
    return records ? static_cast<std::uint32_t>(std::strtoul(records, nullptr, 10)) : 2000000;
}

// Eight records a round: a task sends, delays, is interrupted, and another one runs.
std::string SystemView() {
    test::SystemViewWriter writer;
    writer.System("O=FreeRTOS").System("I#15=SysTick");
    for (std::uint32_t task = 1; task <= kTasks; ++task)
        writer.Task(16 * task, task, "task" + std::to_string(task));
    for (std::uint32_t i = 0; i < Records() / 8; ++i) {
        const auto task = 16 * (1 + i * 7 % kTasks);
        writer.Packet(53, {task, 3, 4, 0}, 9).Packet(34, {5}, 3).Stop(task, 4, 2).Idle(3);
        writer.Packet(2, {15}, 100).Ready(task, 5).Packet(18, {}, 2).Run(task, 3);
    }
    return writer.Bytes();
}

std::string ThreadX() {
    test::ThreadXWriter writer;
    writer.mask = 0;
    const auto fast = writer.Object(test::ThreadXWriter::Thread, "FAST");
    const auto slow = writer.Object(test::ThreadXWriter::Thread, "SLOW");
    const auto queue = writer.Object(test::ThreadXWriter::Queue, "orders");
    std::uint32_t time = 0;
    for (std::uint32_t i = 0; i < Records() / 4; ++i) {
        writer.Event(time += 9, fast, 68, {queue, 1, 0xFFFFFFFFu, 0});
        writer.Event(time += 2, fast, 2, {fast, 5, 0, slow});
        writer.Event(time += 9, slow, 69, {queue, 2, 0, 1});
        writer.Event(time += 3, slow, 1, {fast, 5, 0, fast});
    }
    return writer.Bytes();
}

// Four records a round: a task wakes another one and gives the processor to it.
std::string Ftrace() {
    std::string text = "# tracer: nop\n";
    for (std::uint32_t i = 0; i < Records() / 4; ++i) {
        const auto from = 1 + i % kTasks;
        const auto to = 1 + (i + 1) % kTasks;
        const auto add = [&](std::uint32_t after, const std::string& event) {
            const auto time = i * 40 + after;
            text += FormatText("           task%u-%u    [000] d..2. %5u.%06u: ", from, 100 + from,
                               time / 1000000, time % 1000000);
            text += event + "\n";
        };
        add(1, "sys_enter: NR 0 (3, 7ffe0010, 200, 0, 0, 0)");
        add(3,
            FormatText("sched_waking: comm=task%u pid=%u prio=120 target_cpu=000", to, 100 + to));
        add(8, "sys_exit: NR 0 = 512");
        add(9, FormatText("sched_switch: prev_comm=task%u prev_pid=%u prev_prio=120 prev_state=S "
                          "==> next_comm=task%u next_pid=%u next_prio=120",
                          from, 100 + from, to, 100 + to));
    }
    return text;
}

// Six records a round: a task is activated and takes the core from another one, which goes on.
std::string Btf() {
    std::string text = "#version 2.2.0\n#creator bench\n#timeScale ns\n0,Core_1,0,T,low,0,start\n";
    for (std::uint32_t i = 0; i < Records() / 6; ++i) {
        const auto add = [&](std::uint32_t after, const std::string& rest) {
            text += FormatText("%u,", i * 100 + after) + rest + "\n";
        };
        const auto task = FormatText("high%u,%u,", i % kTasks, i / kTasks);
        add(1, "STI_A,0,T," + task + "activate");
        add(2, "Core_1,0,T,low,0,preempt");
        add(2, "Core_1,0,T," + task + "start");
        add(5, FormatText("high%u,%u,R,step,%u,start", i % kTasks, i / kTasks, i));
        add(8, "Core_1,0,T," + task + "terminate");
        add(8, "Core_1,0,T,low,0,resume");
    }
    return text;
}

// A file of its own for one benchmark.
class Folder {
  public:
    Folder() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "kvx-bench-XXXXXX").string();
        path_ = mkdtemp(pattern.data());
    }
    ~Folder() { std::filesystem::remove_all(path_); }
    std::string Path(const char* name) const { return (path_ / name).string(); }
    std::string Write(const char* name, const std::string& bytes) const {
        std::ofstream(Path(name), std::ios::binary) << bytes;
        return Path(name);
    }

  private:
    std::filesystem::path path_;
};

void Decode(benchmark::State& state, const std::string& path) {
    std::int64_t records = 0;
    for (auto _ : state) {
        const service::DecodedRecording decoded(std::move(*formats::OpenRecording(path)));
        decoded.WaitForAll();
        records = decoded.GetRecording().CountInFile();
    }
    state.SetItemsProcessed(state.iterations() * records);
}

void BM_TextLog(benchmark::State& state) {
    const Folder folder;
    simulation::GenerateOptions options;
    options.events = Records();
    simulation::GenerateFiles(options, folder.Path("x.log"));
    Decode(state, folder.Path("x.log"));
}
BENCHMARK(BM_TextLog)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

void BM_SystemView(benchmark::State& state) {
    const Folder folder;
    Decode(state, folder.Write("x.SVDat", SystemView()));
}
BENCHMARK(BM_SystemView)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

void BM_ThreadX(benchmark::State& state) {
    const Folder folder;
    Decode(state, folder.Write("x.trx", ThreadX()));
}
BENCHMARK(BM_ThreadX)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

void BM_Ftrace(benchmark::State& state) {
    const Folder folder;
    Decode(state, folder.Write("x.txt", Ftrace()));
}
BENCHMARK(BM_Ftrace)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

void BM_Btf(benchmark::State& state) {
    const Folder folder;
    Decode(state, folder.Write("x.btf", Btf()));
}
BENCHMARK(BM_Btf)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

}  // namespace
}  // namespace kvx
