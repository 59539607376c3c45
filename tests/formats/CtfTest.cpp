// CTF traces that the tests write themselves: a Zephyr kernel without and with ready events, and
// Linux scheduling on two processors.

#include <gmock/gmock.h>

#include <cstring>

#include "formats/TraceFiles.h"

namespace kvx::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kTypes =
    "/* CTF 1.8 */\n"
    "typealias integer { size = 8; align = 8; signed = false; } := uint8_t;\n"
    "typealias integer { size = 32; align = 8; signed = false; } := uint32_t;\n"
    "typealias integer { size = 32; align = 8; signed = true; } := int32_t;\n"
    "typealias integer { size = 64; align = 8; signed = true; } := int64_t;\n"
    "typealias integer { size = 8; align = 8; signed = false; encoding = ASCII; } := name_t;\n"
    "typealias enum : uint32_t { MUTEX_LOCK = 35, SLEEP = 39 } := call_id;\n"
    "trace { major = 1; minor = 8; byte_order = le; };\n";

// Metadata and one stream, written field by field.
class CtfWriter {
  public:
    explicit CtfWriter(const char* header) : metadata_(std::string(kTypes) + header) {}

    // fields: the text of the event's structure.
    void Declare(const char* name, int id, const char* fields) {
        metadata_ += FormatText("event { name = \"%s\"; id = %d;", name, id);
        if (*fields) metadata_ += FormatText(" fields := struct { %s };", fields);
        metadata_ += " };\n";
    }
    template <class Number>
    CtfWriter& Put(Number value) {
        char bytes[sizeof(value)];
        std::memcpy(bytes, &value, sizeof(value));
        stream_.append(bytes, sizeof(value));
        return *this;
    }
    CtfWriter& Event(std::uint32_t time, std::uint8_t id) { return Put(time).Put(id); }
    CtfWriter& Name(std::string name) {
        name.resize(8);
        stream_ += name;
        return *this;
    }
    std::string Write(const TempFolder& folder) const {
        folder.Write("trace/channel0", stream_);
        folder.Write("trace/metadata", metadata_);
        return folder.Path("trace");
    }

  private:
    std::string metadata_;
    std::string stream_;
};

constexpr const char* kZephyrHeader =
    "stream { event.header := struct { uint32_t timestamp; uint8_t id; }; };\n";
constexpr const char* kThread = "uint32_t thread_id; name_t name[8];";

// Ids as a kernel could choose them; nothing may depend on them.
enum Id : std::uint8_t {
    kIn = 70,
    kOut,
    kCreate,
    kIsrIn,
    kIsrOut,
    kIdle,
    kTake,
    kBlock,
    kTaken,
    kGive,
    kGiven,
    kSuspend,
    kResume,
    kReady,
    kPend,
    kStart,
    kEnd,
    kLock,
    kInit,
    kSleep,
    kSlept,
    kYield,
    kAbort,
    kSuspendEnd,
    kExpire,
    kExpired,
    kNamed
};
constexpr std::uint32_t kMain = 0x1000, kWork = 0x2000, kRest = 0x3000, kSem = 0xABCDE;

CtfWriter Zephyr() {
    CtfWriter ctf(kZephyrHeader);
    ctf.Declare("thread_switched_in", kIn, kThread);
    ctf.Declare("thread_switched_out", kOut, kThread);
    ctf.Declare("thread_create", kCreate, kThread);
    ctf.Declare("thread_suspend", kSuspend, kThread);
    ctf.Declare("thread_resume", kResume, kThread);
    ctf.Declare("isr_enter", kIsrIn, "");
    ctf.Declare("isr_exit", kIsrOut, "");
    ctf.Declare("idle", kIdle, "");
    return ctf;
}

CtfWriter NewZephyr() {
    auto ctf = Zephyr();
    ctf.Declare("semaphore_take_enter", kTake, "uint32_t id; uint32_t timeout;");
    ctf.Declare("semaphore_take_blocking", kBlock, "uint32_t id; uint32_t timeout;");
    ctf.Declare("semaphore_take_exit", kTaken, "uint32_t id; uint32_t timeout; int32_t ret;");
    ctf.Declare("semaphore_give_enter", kGive, "uint32_t id;");
    ctf.Declare("semaphore_give_exit", kGiven, "uint32_t id;");
    ctf.Declare("semaphore_init", kInit, "uint32_t id; int32_t ret;");
    return ctf;
}

std::vector<std::string> EventsOf(const CtfWriter& ctf, std::vector<std::string> counters = {}) {
    const TempFolder folder;
    const auto trace = Show(ctf.Write(folder));
    if (!trace) return {};
    EXPECT_THAT(CountersOf(trace->Summarize().losses, true), testing::ElementsAreArray(counters));
    return Events(*trace);
}

// Who is switched out is who runs, whether it is told or not.
TEST(Ctf, ZephyrMayNotSayWhoIsSwitchedOut) {
    const auto eventsOf = [](bool told) {
        CtfWriter ctf(kZephyrHeader);
        ctf.Declare("thread_switched_in", kIn, kThread);
        ctf.Declare("thread_switched_out", kOut, told ? kThread : "");
        ctf.Declare("semaphore_take_enter", kTake, "uint32_t id; uint32_t timeout;");
        ctf.Declare("semaphore_take_blocking", kBlock, "uint32_t id; uint32_t timeout;");
        std::uint32_t before = kRest;
        const auto turn = [&](std::uint32_t time, std::uint32_t to) {
            auto& out = ctf.Event(time, kOut);
            if (told) out.Put(before).Name("x");
            ctf.Event(time, kIn).Put(to).Name("x");
            before = to;
        };
        ctf.Event(5, kIn).Put(kRest).Name("x");
        turn(10, kMain);
        ctf.Event(20, kTake).Put(kSem).Put(5u);
        ctf.Event(21, kBlock).Put(kSem).Put(5u);
        turn(22, kWork);
        turn(30, kMain);
        return EventsOf(ctf, {"ready_times_unknown 1"});
    };
    EXPECT_EQ(eventsOf(false), eventsOf(true));
    EXPECT_THAT(eventsOf(false), Contains("22 state x: WAI (SEM)"));
}

TEST(Ctf, ZephyrReadyTimesFollowFromWhatReleasedTheThread) {
    auto ctf = NewZephyr();
    ctf.Event(10, kOut).Put(kMain).Name("main");
    ctf.Event(10, kIn).Put(kMain).Name("main");
    ctf.Event(20, kCreate).Put(kWork).Name("work");
    ctf.Event(25, kInit).Put(kSem).Put(0);
    ctf.Event(30, kOut).Put(kMain).Name("main");
    ctf.Event(30, kIn).Put(kWork).Name("work");
    ctf.Event(40, kTake).Put(kSem).Put(5u);
    ctf.Event(40, kBlock).Put(kSem).Put(5u);
    ctf.Event(41, kOut).Put(kWork).Name("work");
    ctf.Event(41, kIn).Put(kMain).Name("main");
    ctf.Event(50, kGive).Put(kSem);
    ctf.Event(51, kGiven).Put(kSem);
    // main sleeps by a call that this kernel does not record: the idle thread runs before it does
    // again, so that it cannot have been ready.
    ctf.Event(60, kOut).Put(kMain).Name("main");
    ctf.Event(60, kIn).Put(kWork).Name("work");
    ctf.Event(61, kTaken).Put(kSem).Put(5u).Put(-11);
    ctf.Event(70, kTake).Put(kSem).Put(5u);
    ctf.Event(70, kBlock).Put(kSem).Put(5u);
    ctf.Event(70, kOut).Put(kWork).Name("work");
    ctf.Event(70, kIn).Put(kRest).Name("sleepy");
    ctf.Event(70, kIdle);
    ctf.Event(80, kIsrIn);
    ctf.Event(82, kIsrOut);
    ctf.Event(83, kOut).Put(kRest).Name("sleepy");
    ctf.Event(83, kIn).Put(kMain).Name("main");
    ctf.Event(90, kOut).Put(kMain).Name("main");
    ctf.Event(90, kIn).Put(kWork).Name("work");
    EXPECT_THAT(
        EventsOf(ctf, {"wait_cause_unknown 1", "ready_times_inferred 4"}),
        ElementsAre("10 run main: main", "20 call main: thread_create(thread_id=0x2000, name=work)",
                    "20 state work: RDY", "25 call main: semaphore_init(id=0xABCDE, ret=0)",
                    "30 run main: work", "30 state main: RDY",
                    "40 call work: semaphore_take(id=0xABCDE, timeout=5) -> ret=-11",
                    "41 state work: WAI (SEM)", "41 run work: main",
                    "50 call main: semaphore_give(id=0xABCDE)", "50 state work: RDY",
                    "60 state main: WAI (SLP)", "60 run main: work",
                    "70 call work: semaphore_take(id=0xABCDE, timeout=5)",
                    "70 state work: WAI (SEM)", "70 run work: Idle", "80 run Idle: ISR",
                    "80 state main: RDY", "80 state work: RDY", "82 run ISR: Idle",
                    "83 run Idle: main", "90 run main: work", "90 state main: RDY"));
}

TEST(Ctf, ZephyrThatRecordsReadinessIsTakenAtItsWord) {
    auto ctf = Zephyr();
    ctf.Declare("thread_ready", kReady, kThread);
    ctf.Declare("thread_pending", kPend, kThread);
    ctf.Declare("start_call", kStart, "call_id id;");
    ctf.Declare("end_call", kEnd, "call_id id;");
    ctf.Declare("mutex_lock", kLock, "uint32_t id;");
    ctf.Event(10, kIn).Put(kMain).Name("unknown");
    ctf.Event(11, kLock).Put(kSem);
    ctf.Event(12, kEnd).Put(35u);
    ctf.Event(20, kLock).Put(kSem);
    ctf.Event(21, kPend).Put(kMain).Name("unknown");
    ctf.Event(22, kOut).Put(kMain).Name("unknown");
    ctf.Event(22, kIn).Put(kWork).Name("work");
    ctf.Event(30, kReady).Put(kMain).Name("unknown");
    ctf.Event(31, kSuspend).Put(kMain).Name("unknown");
    ctf.Event(32, kResume).Put(kMain).Name("unknown");
    ctf.Event(40, kStart).Put(39u);
    ctf.Event(41, kSuspend).Put(kWork).Name("work");  // how this kernel sleeps
    ctf.Event(42, kOut).Put(kWork).Name("work");
    ctf.Event(42, kIn).Put(kMain).Name("unknown");
    ctf.Event(43, kEnd).Put(35u);
    EXPECT_THAT(
        EventsOf(ctf),
        ElementsAre("10 run Unknown: thread 1000", "11 call thread 1000: mutex_lock(id=0xABCDE)",
                    "20 call thread 1000: mutex_lock(id=0xABCDE)",
                    "21 state thread 1000: WAI (MTX)", "22 run thread 1000: work",
                    "30 state thread 1000: RDY", "31 state thread 1000: RDY+SUS",
                    "32 state thread 1000: RDY", "40 call work: sleep()",
                    "41 state work: WAI (DLY)", "42 run work: thread 1000"));
}

// Kernel 4 says when a thread is ready and what it pends on, but not that a sleep is a wait.
TEST(Ctf, ZephyrIsConcludedFromAWaitAtATime) {
    auto ctf = Zephyr();
    ctf.Declare("thread_sched_ready", kReady, kThread);
    ctf.Declare("thread_sched_pend", kPend, kThread);
    ctf.Declare("thread_sched_abort", kAbort, kThread);
    ctf.Declare("thread_suspend_exit", kSuspendEnd, kThread);
    ctf.Declare("k_sleep_enter", kSleep, "uint32_t timeout;");
    ctf.Declare("k_sleep_exit", kSlept, "uint32_t timeout; int32_t ret;");
    ctf.Declare("thread_yield", kYield, "");
    ctf.Declare("timer_expiry_enter", kExpire, "uint32_t id;");
    ctf.Declare("timer_expiry_exit", kExpired, "uint32_t id;");
    ctf.Declare("named_event", kNamed, "name_t name[8]; uint32_t arg0;");
    const auto thread = [&](std::uint32_t time, Id id, std::uint32_t which) {
        ctf.Event(time, id).Put(which).Name(which == kMain ? "main" : "work");
    };
    const auto swap = [&](std::uint32_t time, std::uint32_t from, std::uint32_t to) {
        thread(time, kOut, from);
        thread(time, kIn, to);
    };
    thread(10, kIn, kMain);
    ctf.Event(11, kSleep).Put(100u);
    swap(12, kMain, kWork);
    ctf.Event(20, kIsrIn);
    ctf.Event(21, kExpire).Put(0xAAu);
    ctf.Event(22, kNamed).Name("tick").Put(7u);
    ctf.Event(23, kExpired).Put(0xAAu);
    thread(24, kReady, kMain);
    ctf.Event(25, kIsrOut);
    swap(26, kWork, kMain);
    ctf.Event(27, kSlept).Put(100u).Put(0);
    ctf.Event(30, kSleep).Put(0u);  // a sleep of no time yields
    ctf.Event(30, kYield);
    swap(31, kMain, kWork);
    swap(32, kWork, kMain);
    ctf.Event(33, kSlept).Put(0u).Put(0);
    thread(40, kSuspend, kMain);
    swap(41, kMain, kWork);
    thread(42, kResume, kMain);
    thread(42, kReady, kMain);
    thread(50, kPend, kWork);
    swap(51, kWork, kMain);
    thread(52, kSuspendEnd, kMain);
    thread(53, kReady, kWork);
    thread(60, kAbort, kMain);
    swap(61, kMain, kWork);
    EXPECT_THAT(
        EventsOf(ctf, {"wait_cause_unknown 1"}),
        ElementsAre("10 run Unknown: main", "11 call main: k_sleep(timeout=100) -> ret=0",
                    "12 state main: WAI (DLY)", "12 run main: work", "20 run work: ISR",
                    "21 run ISR: timer AA", "22 call timer AA: named_event(name=tick, arg0=7)",
                    "23 run timer AA: ISR", "24 state main: RDY", "25 run ISR: work",
                    "26 run work: main", "26 state work: RDY",
                    "30 call main: k_sleep(timeout=0) -> ret=0", "30 call main: thread_yield()",
                    "31 run main: work", "31 state main: RDY", "32 run work: main",
                    "32 state work: RDY", "40 state main: RDY+SUS", "41 run main: work",
                    "42 state main: RDY", "50 state work: WAI (SLP)", "51 run work: main",
                    "53 state work: RDY", "60 state main: DMT", "61 run main: work"));
}

// Times of a day long after 1970, two processors, a task that moves.
// Values in values are shown down to the eighth below the field, whichever way they are nested.
TEST(Ctf, FieldsAreShownAsDeepAsPeopleRead) {
    const auto shown = [](int depth, const std::string& open, const std::string& close) {
        auto ctf = Zephyr();
        std::string fields = "enum : uint8_t { a = 0 } tag; ";
        for (int i = 0; i < depth; ++i) fields += open + " { ";
        fields += "uint32_t a;";
        for (int i = 0; i < depth; ++i) fields += close;
        fields.erase(fields.size() - 2) += "v;";
        ctf.Declare("named_event", kNamed, fields.c_str());
        ctf.Event(10, kIn).Put(kMain).Name("main");
        ctf.Event(11, kNamed).Put(std::uint8_t{0}).Put(7u);
        return EventsOf(ctf, {}).at(1);
    };
    EXPECT_EQ(shown(1, "variant <tag>", "} a;"), "11 call main: named_event(tag=a, v=7)");
    EXPECT_EQ(shown(8, "variant <tag>", "} a;"), "11 call main: named_event(tag=a, v=7)");
    EXPECT_EQ(shown(9, "variant <tag>", "} a;"), "11 call main: named_event(tag=a, v=)");
    EXPECT_EQ(shown(2, "struct", "} a;"), "11 call main: named_event(tag=a, v={{7}})");
    EXPECT_EQ(shown(9, "struct", "} a;"), "11 call main: named_event(tag=a, v={{{{{{{{{}}}}}}}}})");
}

TEST(Ctf, LinuxIsShownOneProcessorAtATime) {
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
TEST(Ctf, LinuxTasksWaitWhereTheyRunNext) {
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
TEST(Ctf, LinuxTaskThatRanAtTheStartIsKnown) {
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

class KeepBeginning final : public formats::IOpenProgress {
  public:
    bool Progress(std::uint64_t, std::uint64_t) override { return true; }
    bool WantsBeginning() const override { return true; }
    void Beginning(std::unique_ptr<formats::Recording> recording) override {
        ++count;
        beginning = std::move(recording);
    }
    std::unique_ptr<formats::Recording> beginning;
    int count = 0;
};

// It is a recording in itself, and the same as far as it goes.
TEST(Ctf, TheBeginningOfALongTraceIsHandedOverBeforeTheRest) {
    auto ctf = NewZephyr();
    for (std::uint32_t time = 10; time < 300000; time += 10) {
        const bool back = time % 20 != 0;
        ctf.Event(time, kOut).Put(back ? kWork : kMain).Name(back ? "work" : "main");
        ctf.Event(time, kIn).Put(back ? kMain : kWork).Name(back ? "main" : "work");
    }
    const TempFolder folder;
    const auto path = ctf.Write(folder);
    KeepBeginning progress;
    auto whole = formats::OpenRecording(path, {}, &progress);
    ASSERT_TRUE(whole) << whole.GetError().message;
    ASSERT_EQ(progress.count, 1);
    service::TraceService all;
    service::TraceService first;
    all.SetRecording(std::move(*whole));
    first.SetRecording(std::move(progress.beginning));
    EXPECT_THAT(first.GetRecording()->Warnings(), ElementsAre(testing::HasSubstr("beginning")));
    first.Summarize();
    all.Summarize();
    const auto events = Events(first);
    const auto wholeEvents = Events(all);
    EXPECT_GE(first.GetRecording()->RecordCount(), 20000u);
    ASSERT_LT(events.size(), wholeEvents.size());
    ASSERT_GT(events.size(), 1000u);
    EXPECT_TRUE(std::equal(events.begin(), events.end(), wholeEvents.begin()));
}

}  // namespace
}  // namespace kvx::test
