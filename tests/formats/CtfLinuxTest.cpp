// CTF traces of Linux scheduling on two processors.

#include "formats/CtfWriter.h"

namespace kvx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(CtfLinux, IsShownOneProcessorAtATime) {
    enum : std::uint8_t {
        kSwitch = 1,
        kWakeup,
        kMigrate,
        kIrqIn,
        kIrqOut,
        kRead,
        kReadDone,
        kSoftIn,
        kSoftOut
    };
    CtfWriter ctf(
        "clock { name = mono; freq = 1000000000; offset_s = 1700000000; };\n"
        "typealias integer { size = 32; align = 8; signed = false; map = clock.mono.value; } := "
        "stamp_t;\n"
        "stream { event.header := struct { stamp_t timestamp; uint8_t id; };\n"
        "  event.context := struct { uint32_t cpu_id; }; };\n");
    ctf.Declare("sched_switch", kSwitch,
                "name_t prev_comm[8]; int32_t prev_tid; int64_t prev_state; name_t next_comm[8]; "
                "int32_t next_tid;");
    ctf.Declare("sched_wakeup", kWakeup, "name_t comm[8]; int32_t tid; uint32_t target_cpu;");
    ctf.Declare("sched_migrate_task", kMigrate, "name_t comm[8]; int32_t tid; int32_t dest_cpu;");
    ctf.Declare("irq_handler_entry", kIrqIn, "int32_t irq; name_t name[8];");
    ctf.Declare("irq_handler_exit", kIrqOut, "int32_t irq; int32_t ret;");
    ctf.Declare("irq_softirq_entry", kSoftIn, "uint32_t vec;");
    ctf.Declare("irq_softirq_exit", kSoftOut, "uint32_t vec;");
    ctf.Declare("syscall_entry_read", kRead, "uint32_t fd;");
    ctf.Declare("syscall_exit_read", kReadDone, "int64_t ret;");
    const auto event = [&](std::uint32_t time, std::uint8_t id, std::uint32_t cpu) -> CtfWriter& {
        return ctf.Event(time, id).Put(cpu);
    };
    const auto toTask = [&](std::uint32_t time, std::uint32_t cpu, const char* from,
                            std::int32_t fromId, std::int64_t state, const char* to,
                            std::int32_t toId) {
        event(time, kSwitch, cpu).Name(from).Put(fromId).Put(state).Name(to).Put(toId);
    };
    toTask(100, 0, "swapper", 0, 0, "shell", 21);
    event(110, kRead, 0).Put(5u);
    event(120, kIrqIn, 0).Put(9).Name("eth0");
    event(125, kIrqOut, 0).Put(9).Put(1);
    event(126, kSoftIn, 0).Put(3u);
    event(127, kSoftOut, 0).Put(3u);
    toTask(130, 0, "shell", 21, 1, "swapper", 0);
    event(140, kWakeup, 1).Name("shell").Put(21).Put(0u);
    event(150, kMigrate, 0).Name("shell").Put(21).Put(1);
    toTask(160, 1, "swapper", 0, 0, "shell", 21);
    event(170, kReadDone, 1).Put(std::int64_t{512});
    toTask(180, 1, "shell", 21, 0x40, "swapper", 0);
    const TempFolder folder;
    const auto trace = Show(ctf.Write(folder));
    ASSERT_TRUE(trace);
    EXPECT_THAT(trace->GetRecording()->Processors(), ElementsAre(0, 1));
    EXPECT_THAT(CountersOf(trace->Summarize().losses, true), IsEmpty());
    // Whole days are taken off the times: what is left is the time of day.
    constexpr std::int64_t kBase = std::int64_t{1700000000 % 86400} * 1000000000;
    EXPECT_EQ(trace->GetRecording()->FirstTime(), kBase + 100);
    const auto relative = [&] {
        auto lines = Events(*trace);
        for (auto& line : lines)
            line = FormatText("%lld", std::stoll(line) - kBase) + line.substr(line.find(' '));
        return lines;
    };
    EXPECT_THAT(relative(),
                ElementsAre("100 run Idle: shell", "110 call shell: read(fd=5) -> ret=512",
                            "120 run shell: irq 9 eth0", "125 run irq 9 eth0: shell",
                            "126 run shell: softirq 3 NET_RX", "127 run softirq 3 NET_RX: shell",
                            "130 state shell: WAI (MBF)", "130 run shell: Idle",
                            "140 state shell: DMT+PAUSE"));
    ASSERT_TRUE(trace->ShowProcessor(1));
    trace->Summarize();
    // Ready since it was woken, wherever that was.
    EXPECT_THAT(relative(), ElementsAre("140 state shell: RDY", "160 run Idle: shell",
                                        "180 state shell: DMT", "180 run shell: Idle"));
}

// A task is ready on the processor that runs it next, from when it became ready.
TEST(CtfLinux, TasksWaitWhereTheyRunNext) {
    enum : std::uint8_t { kSwitch = 1, kWaking, kWakeup, kMigrate };
    CtfWriter ctf(
        "stream { event.header := struct { uint32_t timestamp; uint8_t id; };\n"
        "  event.context := struct { uint32_t cpu_id; }; };\n");
    ctf.Declare("sched_switch", kSwitch, "int32_t prev_tid; int64_t prev_state; int32_t next_tid;");
    ctf.Declare("sched_waking", kWaking, "int32_t tid; uint32_t target_cpu;");
    ctf.Declare("sched_wakeup", kWakeup, "int32_t tid; uint32_t target_cpu;");
    ctf.Declare("sched_migrate_task", kMigrate, "int32_t tid; int32_t dest_cpu;");
    std::uint32_t time = 0;
    const auto to = [&](std::uint32_t cpu, std::int32_t from, std::int64_t state,
                        std::int32_t next) {
        ctf.Event(time++, kSwitch).Put(cpu).Put(from).Put(state).Put(next);
    };
    const auto says = [&](std::uint8_t what, std::int32_t task, std::uint32_t cpu) {
        ctf.Event(time++, what).Put(0u).Put(task).Put(cpu);
    };
    to(0, 7, 1, 8);        // 0: 7 sleeps
    to(1, 9, 1, 0);        // 1: 9 sleeps
    says(kWaking, 7, 0);   // 2: said to wake up there,
    says(kWakeup, 7, 1);   // 3: and woken up here
    to(1, 0, 0, 7);        // 4
    to(0, 8, 0, 10);       // 5: 8 is taken the processor away
    says(kMigrate, 8, 1);  // 6
    says(kMigrate, 8, 0);  // 7
    says(kMigrate, 8, 1);  // 8
    to(1, 7, 1, 8);        // 9
    says(kWakeup, 9, 1);   // 10: does not run again
    says(kMigrate, 9, 0);  // 11
    const TempFolder folder;
    const auto trace = Show(ctf.Write(folder));
    ASSERT_TRUE(trace);
    trace->Summarize();
    EXPECT_THAT(Events(*trace), ElementsAre("0 state task 7: WAI (SLP)", "0 run task 7: task 8",
                                            "2 state task 7: DMT+PAUSE", "5 run task 8: task 10",
                                            "5 state task 8: DMT+PAUSE", "11 state task 9: RDY"));
    ASSERT_TRUE(trace->ShowProcessor(1));
    trace->Summarize();
    EXPECT_THAT(
        Events(*trace),
        ElementsAre("1 state task 9: WAI (SLP)", "1 run task 9: Idle", "2 state task 7: RDY",
                    "4 run Idle: task 7", "5 state task 8: RDY", "9 state task 7: WAI (SLP)",
                    "9 run task 7: task 8", "10 state task 9: RDY", "11 state task 9: DMT+PAUSE"));
}

// What a handler at the start goes back to shows only in the switch behind it.
TEST(CtfLinux, TaskThatRanAtTheStartIsKnown) {
    enum : std::uint8_t { kSwitch = 1, kIrqIn, kIrqOut };
    CtfWriter ctf("stream { event.header := struct { uint32_t timestamp; uint8_t id; }; };\n");
    ctf.Declare("sched_switch", kSwitch,
                "name_t prev_comm[8]; int32_t prev_tid; int64_t prev_state; int32_t next_tid;");
    ctf.Declare("irq_handler_entry", kIrqIn, "int32_t irq; name_t name[8];");
    ctf.Declare("irq_handler_exit", kIrqOut, "int32_t irq;");
    ctf.Event(1, kIrqIn).Put(9).Name("eth0");
    ctf.Event(2, kIrqOut).Put(9);
    ctf.Event(3, kSwitch).Name("shell").Put(21).Put(std::int64_t{1}).Put(0);
    EXPECT_THAT(EventsOf(ctf), ElementsAre("1 run shell: irq 9 eth0", "2 run irq 9 eth0: shell",
                                           "3 state shell: WAI (SLP)", "3 run shell: Idle"));
}

}  // namespace
}  // namespace kvx::test
