// CTF traces of Zephyr kernels, without and with ready events.

#include "formats/ZephyrTrace.h"

namespace kvx::test {
namespace {

using namespace zephyr;
using testing::Contains;
using testing::ElementsAre;

// Who is switched out is who runs, whether it is told or not.
TEST(CtfZephyr, MayNotSayWhoIsSwitchedOut) {
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

TEST(CtfZephyr, ReadyTimesFollowFromWhatReleasedTheThread) {
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

TEST(CtfZephyr, ThatRecordsReadinessIsTakenAtItsWord) {
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
TEST(CtfZephyr, IsConcludedFromAWaitAtATime) {
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

}  // namespace
}  // namespace kvx::test
