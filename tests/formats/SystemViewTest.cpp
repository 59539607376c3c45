// SystemView recordings: those that the tests write, damaged ones, and real ones.

#include <gmock/gmock.h>

#include "formats/Damage.h"
#include "formats/TraceFiles.h"
#include "support/Needs.h"
#include "support/SystemViewWriter.h"

namespace kvx::test {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// A recording that is open and decoded as a whole.
struct Shown {
    std::unique_ptr<service::TraceService> trace;
    service::Summary summary;

    std::vector<std::string> Lines() const { return Events(*trace); }
    std::vector<std::string> Counters() const { return CountersOf(summary.losses, true); }
    std::string Tip(std::uint32_t event) const {
        Bstr tip;
        trace->GetEventTipText(event, tip.Receive());
        return tip.Utf8();
    }
};

Shown ShowFile(const std::string& path, const formats::OpenOptions& options = {},
               std::uint32_t processor = 0) {
    auto recording = formats::OpenRecording(path, options);
    if (!recording) {
        ADD_FAILURE() << recording.GetError().message;
        return {};
    }
    Shown shown{std::make_unique<service::TraceService>(), {}};
    shown.trace->SetRecording(std::move(*recording));
    shown.trace->ShowProcessor(processor);
    shown.summary = shown.trace->Summarize();
    return shown;
}

Shown ShowBytes(const std::string& bytes, const formats::OpenOptions& options = {}) {
    const TempFolder folder;
    return ShowFile(folder.Write("x.SVDat", bytes), options);
}

constexpr std::uint32_t kMain = 16;
constexpr std::uint32_t kWork = 32;
constexpr std::uint32_t kQueue = 64;
constexpr std::uint32_t kDelayed = 4;  // causes of FreeRTOS
constexpr std::uint32_t kSuspended = 27;

SystemViewWriter FreeRtos() {
    SystemViewWriter writer;
    writer.System("N=App,O=FreeRTOS").System("I#15=SysTick");
    writer.Task(kMain, 5, "main").Task(kWork, 7, "work");
    return writer;
}

formats::OpenOptions Calls(const char* numbering) {
    formats::OpenOptions options;
    options.calls = numbering;
    return options;
}

TEST(SystemView, FreeRtosTasksRunWaitAndAreInterrupted) {
    const auto shown = ShowBytes(FreeRtos()
                                     .Run(kMain)
                                     .Run(kMain)        // said again with every tick
                                     .Packet(34, {30})  // vTaskDelay
                                     .Stop(kMain, kDelayed)
                                     .Run(kWork, 5)
                                     .Packet(2, {15})
                                     .Ready(kMain)
                                     .Packet(18, {})
                                     .Run(kMain)
                                     .Packet(3, {})  // of an interrupt before
                                     .Stop(kMain, kSuspended)
                                     .Idle()
                                     .Ready(kMain)
                                     .Run(kMain)
                                     .Packet(53, {kQueue, 1, 2, 0})
                                     .Packet(29, {kMain})
                                     .Bytes(),
                                 Calls("espressif"));
    EXPECT_THAT(
        shown.Lines(),
        ElementsAre("1000 run Unknown: main", "3000 call main: vTaskDelay(p1=30)",
                    "4000 state main: WAI (DLY)", "9000 run main: work", "10000 run work: SysTick",
                    "11000 state main: RDY", "12000 run SysTick: work", "13000 run work: main",
                    "13000 state work: RDY", "15000 state main: WAI (DTQ)", "16000 run main: Idle",
                    "17000 state main: RDY", "18000 run Idle: main",
                    "19000 call main: xQueueGenericSend(p1=64, p2=1, p3=2, p4=0)",
                    "20000 state main: DMT"));
    EXPECT_EQ(shown.summary.timeUnit, "ns");
    EXPECT_EQ(shown.summary.format, "SystemView recording (FreeRTOS)");
    EXPECT_THAT(shown.Counters(), ElementsAre("handlers_not_entered 1", "wait_causes_inferred 1"));
    EXPECT_THAT(shown.Tip(9), AllOf(HasSubstr("Waits in: xQueueGenericSend(p1=64"),
                                    HasSubstr("concluded"), HasSubstr("Priority: 5")));
    EXPECT_THAT(shown.Tip(2),
                AllOf(HasSubstr("Waits in: vTaskDelay(p1=30)"), Not(HasSubstr("concluded"))));
    EXPECT_THAT(shown.Tip(2), HasSubstr("Task control block: 0x20000040"));
    EXPECT_TRUE(shown.trace->GetRecording()->GetKernel().LargerIsMoreUrgent());
}

// The call in front of a wait is its cause where it is one that is recorded first; what comes later
// is never taken then.
TEST(SystemView, TheCauseOfAWaitIsTheDelayBeforeItElseTheFirstCallBehindIt) {
    const auto wait = [](SystemViewWriter writer, std::uint32_t cause) {
        return writer.Stop(kMain, cause).Idle().Ready(kMain).Run(kMain);
    };
    struct Row {
        std::string bytes;
        const char* state;
        std::vector<std::string> notes;
    };
    const auto begin = FreeRtos().Run(kMain);
    const Row kRows[] = {
        {wait(SystemViewWriter(begin).Packet(36, {kMain}), kSuspended).Bytes(), "RDY+SUS", {}},
        {wait(SystemViewWriter(begin).Packet(34, {3}), kDelayed).Packet(53, {1}).Bytes(),
         "WAI (DLY)",
         {}},
        {wait(begin, kSuspended).Packet(37, {1, 2}).Bytes(),
         "WAI (SLP)",
         {"wait_causes_inferred 1"}},
        {wait(begin, kSuspended).Packet(195, {1, 2}).Bytes(),
         "WAI (FLG)",
         {"wait_causes_inferred 1"}},
        // Another's call, a handler's call, and a call that does not wait explain nothing.
        {wait(begin, kDelayed).Packet(47, {1}).Packet(53, {1}).Bytes(),
         "WAI (SLP)",
         {"wait_cause_unknown 1"}},
        {wait(begin, kDelayed).Packet(2, {15}).Packet(53, {1}).Packet(3, {}).Bytes(),
         "WAI (SLP)",
         {"wait_cause_unknown 1"}},
        {wait(begin, kDelayed).Bytes(), "WAI (SLP)", {"wait_cause_unknown 1"}},
        {wait(begin, kDelayed).Lost(9).Run(kMain).Packet(53, {1}).Bytes(),
         "WAI (SLP)",
         {"discarded_records 9", "wait_cause_unknown 1"}}};
    for (const auto& row : kRows) {
        const auto shown = ShowBytes(row.bytes, Calls("espressif"));
        EXPECT_THAT(shown.Lines(), Contains(HasSubstr(std::string("state main: ") + row.state)));
        EXPECT_EQ(shown.Counters(), row.notes) << row.state;
    }
    // Suspended by another task, which runs on.
    const auto other = ShowBytes(
        FreeRtos().Ready(kWork).Run(kMain).Packet(36, {kWork}).Stop(kWork, kSuspended).Bytes(),
        Calls("espressif"));
    EXPECT_THAT(other.Lines(), Contains("4000 state work: RDY+SUS"));
}

// Espressif's newer ports never record that a task waits.
TEST(SystemView, WaitsThatAreNeverRecordedAreConcludedWhereOneAnswerIsLeft) {
    const auto shown = ShowBytes(FreeRtos()
                                     .Run(kMain)
                                     .Packet(34, {3})
                                     .Run(kWork)  // main delays
                                     .Ready(kMain)
                                     .Run(kMain)  // work is preempted
                                     .Run(kWork)  // main: not known
                                     .Bytes(),
                                 Calls("espressif"));
    EXPECT_THAT(
        shown.Lines(),
        ElementsAre("1000 run Unknown: main", "2000 call main: vTaskDelay(p1=3)",
                    "3000 run main: work", "3000 state main: WAI (DLY)", "4000 state main: RDY",
                    "5000 run work: main", "5000 state work: RDY", "6000 run main: work"));
    EXPECT_THAT(shown.Counters(), ElementsAre("waits_inferred 1", "states_unknown 1"));
}

TEST(SystemView, CallsHaveTheNumbersThatTheRecordingShowsElseNoName) {
    const auto begin = FreeRtos().Run(kMain);
    const auto delay34 =
        SystemViewWriter(begin).Packet(34, {1}).Stop(kMain, kDelayed).Idle().Bytes();
    const auto delay35 =
        SystemViewWriter(begin).Packet(35, {1}).Stop(kMain, kDelayed).Idle().Bytes();
    const auto unclear = SystemViewWriter(begin).Packet(35, {1}).Idle().Bytes();
    const auto author = [](const char* name) {
        return std::string("; Version SystemViewer\n; Author      ") + name + "\n;\n";
    };
    EXPECT_THAT(ShowBytes(delay34).Lines(), Contains(HasSubstr("vTaskDelay(")));
    EXPECT_THAT(ShowBytes(delay35).Lines(), Contains(HasSubstr("vTaskDelay(")));
    EXPECT_THAT(ShowBytes(unclear).Lines(), Contains(HasSubstr("call 35(")));
    EXPECT_THAT(ShowBytes(unclear, Calls("segger")).Lines(), Contains(HasSubstr("vTaskDelay(")));
    EXPECT_THAT(ShowBytes(unclear, Calls("espressif")).Lines(),
                Contains(HasSubstr("vTaskDelayUntil(")));
    EXPECT_THAT(ShowBytes(author("Espressif Inc") + unclear).Lines(),
                Contains(HasSubstr("vTaskDelayUntil(")));
}

constexpr const char* kDescription =
    "# a comment\nOption ReversePriority\nTaskState 0xBF 1=dummy, 2=Waiting\n"
    "NamedType Ticks *=%u ticks 0=NO_WAIT 4294967295=FOREVER\n"
    "34 vTaskDelay xTicksToDelay=%u ms\n"
    "53   xQueueGenericSend xQueue=%I task=%t \"wait=%Ticks\" flag=&Bool code=ErrCode end=%x "
    "| Returns %d\n"
    "nonsense\n99999999999 overflow a=%u\n200\n";

TEST(SystemView, ADescriptionFileNamesCallsAndTheirValues) {
    const auto bytes = FreeRtos()
                           .Named(25, {kQueue}, "orders")
                           .Run(kMain)
                           .Packet(53, {kQueue, kWork, 0xFFFFFFFFu, 255, 7})
                           .Packet(53, {kMain, 0, 3})
                           .Packet(34, {10})
                           .Bytes();
    const TempFolder folder;
    const auto path = folder.Write("rec/x.SVDat", bytes);
    const char* const kExpected[] = {
        "xQueueGenericSend(xQueue=orders, task=work, wait=FOREVER, end=0xFF, p5=7)",
        "xQueueGenericSend(xQueue=0x20000040, task=0, wait=3 ticks)",
        "vTaskDelay(xTicksToDelay=10 ms)"};
    folder.Write("rec/SYSVIEW_FreeRTOS.txt", kDescription);
    for (const char* expected : kExpected)
        EXPECT_THAT(ShowFile(path).Lines(), Contains(HasSubstr(expected)));
    // Elsewhere, in a folder that is given.
    folder.Write("there/SYSVIEW_FreeRTOS.txt", kDescription);
    std::filesystem::remove(folder.Path("rec/SYSVIEW_FreeRTOS.txt"));
    EXPECT_THAT(ShowFile(path).Lines(), Contains(HasSubstr("call 34(p1=10)")));
    formats::OpenOptions options;
    options.descriptions = folder.Path("there");
    EXPECT_THAT(ShowFile(path, options).Lines(), Contains(HasSubstr(kExpected[0])));
    // It numbers calls otherwise than the recording.
    options.calls = "segger";
    const auto other = ShowFile(path, options);
    EXPECT_THAT(other.Lines(), Contains(HasSubstr("vTaskDelete(p1=10)")));
    EXPECT_THAT(other.trace->GetRecording()->Warnings(), ElementsAre(HasSubstr("left aside")));
}

TEST(SystemView, ZephyrsCallsReturnAndItsStatesAreRecorded) {
    SystemViewWriter writer;
    writer.System("N=App,O=Zephyr").Task(kMain, 0xFFFFFFFFu, "main").Task(kWork, 3, "work");
    writer.Run(kMain).Packet(42, {kQueue, 5}).Stop(kMain, 24).Packet(5, {});
    writer.Run(kWork).Ready(kMain).Packet(5, {}).Run(kMain).Packet(28, {42, 0});
    writer.Packet(150, {kQueue}).Packet(999, {1}).Stop(kMain, 24).Packet(5, {}).Idle();
    const auto shown = ShowBytes(writer.Bytes());
    EXPECT_THAT(
        shown.Lines(),
        ElementsAre("1000 run Unknown: main", "2000 call main: k_sem_take(p1=64, p2=5) -> ret=0",
                    "3000 state main: WAI (SEM)", "4000 run main: Idle", "5000 run Idle: work",
                    "6000 state main: RDY", "7000 run work: Idle", "7000 state work: RDY",
                    "8000 run Idle: main", "10000 call main: k_fifo_get(p1=64)",
                    "11000 call main: module 999(p1=1)", "12000 state main: WAI (SLP)",
                    "13000 run main: Idle"));
    EXPECT_EQ(shown.summary.format, "SystemView recording (Zephyr)");
}

TEST(SystemView, PrintsMarkersModulesAndTimers) {
    SystemViewWriter writer;
    writer.Named(22, {0, 512}, "M=Radio,0 Send bytes=%u,1 Reset").Run(kMain);
    writer.Named(26, {}, "%d of 0x%x%%");  // followed by nothing
    writer.Packet(512, {12}).Packet(513, {}).Packet(520, {1}).Packet(15, {3}).Packet(16, {3});
    writer.Packet(31, {0, 8}).Packet(19, {kQueue}).Packet(20, {});
    std::string print("\x08%d of %X\x01\x02\x07\xFF\x01", 14);
    writer.Raw(std::string("\x1A\x0E", 2) + print + "\x01");
    const auto lines = ShowBytes(writer.Bytes()).Lines();
    EXPECT_THAT(lines, Contains(HasSubstr("print(%d of 0x%x%%)")));
    EXPECT_THAT(lines, Contains(HasSubstr("Send(bytes=12)")));
    EXPECT_THAT(lines, Contains(HasSubstr("Reset()")));
    EXPECT_THAT(lines, Contains(HasSubstr("Radio + 8(p1=1)")));
    EXPECT_THAT(lines, Contains(HasSubstr("marker(start=3)")));
    EXPECT_THAT(lines, Contains(HasSubstr("marker(id=8)")));
    EXPECT_THAT(lines, Contains(HasSubstr(": timer 0x20000100")));
    EXPECT_THAT(lines, Contains(HasSubstr("print(warning: 7 of FF)")));
}

// What is lost lies in front of the packet that says so.
TEST(SystemView, NothingIsKnownAcrossRecordsThatWereDropped) {
    const auto shown = ShowBytes(FreeRtos()
                                     .Run(kMain)
                                     .Ready(kWork)
                                     .Packet(2, {15})
                                     .Lost(3, 1000)
                                     .Run(kWork)
                                     .Lost(10, 1000)
                                     .Lost(4, 1)  // begins anew
                                     .Idle()
                                     .Bytes());
    EXPECT_THAT(shown.Lines(),
                ElementsAre("1000 run Unknown: main", "2000 state work: RDY",
                            "3000 run main: SysTick", "3000 run SysTick: Unknown",
                            "1004000 run Unknown: work", "1004000 run work: Unknown",
                            "2004000 run Unknown: Unknown", "2006000 run Unknown: Idle"));
    EXPECT_THAT(CountersOf(shown.summary.losses), ElementsAre("discarded_records 14"));
}

TEST(SystemView, CoresOfOneFileAndOfSeveralAgreeAtTheirStarts) {
    const auto core = [](std::uint32_t first, std::uint32_t task, std::uint32_t delta) {
        SystemViewWriter writer(1000000, first);
        writer.System("O=FreeRTOS").Task(kMain, 5, "main").Task(kWork, 7, "work");
        return writer.Run(task, delta).Idle().Bytes();
    };
    const auto one = core(5, kMain, 10);
    const auto two = core(900000, kWork, 12);
    const TempFolder folder;
    const auto joined =
        folder.Write("x.SVDat", FormatText("; Offset Core1    %zu\n", one.size()) + one + two);
    formats::OpenOptions further;
    further.moreFiles = {folder.Write("1.SVDat", two)};
    const auto first = folder.Write("0.SVDat", one);
    const std::pair<std::string, formats::OpenOptions> kForms[] = {{joined, {}}, {first, further}};
    for (const auto& [path, options] : kForms) {
        EXPECT_THAT(ShowFile(path, options).Lines(),
                    ElementsAre("10000 run Unknown: main", "11000 run main: Idle"));
        const auto second = ShowFile(path, options, 1);
        EXPECT_THAT(second.Lines(), ElementsAre("12000 run Unknown: work", "13000 run work: Idle"));
        EXPECT_EQ(second.summary.records, 14u);
    }
    // The second core is cut off.
    const auto half =
        ShowFile(folder.Write("y.SVDat", FormatText("; Offset Core1    %zu\n", one.size()) + one));
    EXPECT_THAT(half.Lines(), Contains("10000 run Unknown: main"));
    EXPECT_THAT(CountersOf(half.summary.losses), ElementsAre("cut_record 1"));
    EXPECT_THAT(half.trace->GetRecording()->Warnings(),
                ElementsAre(HasSubstr("ends before core 1 begins")));
    further.moreFiles = {folder.Write("letter.txt", "Dear reader")};
    const auto wrong = formats::OpenRecording(first, further);
    ASSERT_FALSE(wrong);
    EXPECT_THAT(wrong.GetError().message, HasSubstr("letter.txt: not a SystemView recording"));
    const auto log =
        formats::OpenRecording(folder.Write("x.log", "[1] dispatch to task 1.\n"), further);
    ASSERT_FALSE(log);
    EXPECT_THAT(log.GetError().message, HasSubstr("is a recording by itself"));
}

TEST(SystemView, DamageCostsNoMoreThanUpToTheNextSync) {
    const std::string sync(10, '\0');
    // The memory of a target: the ring begins in the middle of a packet.
    const auto ring = ShowBytes("\x85\x01\x07" + FreeRtos().Run(kMain).Bytes());
    EXPECT_THAT(ring.Lines(), Contains("1000 run Unknown: main"));
    // An event of a module that there is not, a length beyond the file, an identifier that there is
    // not; and a time that goes on by minutes behind a loss.
    const auto bad = [&](SystemViewWriter writer) {
        return ShowBytes(writer.Raw(sync).Run(kWork).Bytes());
    };
    const auto begin = FreeRtos().Run(kMain);
    for (const auto& shown :
         {bad(SystemViewWriter(begin).Packet(4846, {1})), bad(SystemViewWriter(begin).Raw("\x17")),
          bad(SystemViewWriter(begin).Raw("\x30\xFF\x7F\x01"))}) {
        EXPECT_THAT(shown.Lines(), ElementsAre("1000 run Unknown: main", "1000 run main: Unknown",
                                               "2000 run Unknown: work"));
        EXPECT_THAT(CountersOf(shown.summary.losses), ElementsAre("unreadable_records 1"));
    }
    const auto jump = bad(SystemViewWriter(begin).Lost(1).Run(kMain, 200000000));
    EXPECT_THAT(CountersOf(jump.summary.losses),
                ElementsAre("unreadable_records 1", "discarded_records 1"));
    const auto tail = ShowBytes(SystemViewWriter(begin).Raw("\x17").Bytes());
    EXPECT_THAT(CountersOf(tail.summary.losses), ElementsAre("damaged_tail 1"));
    const auto cut = ShowBytes(SystemViewWriter(begin).Raw("\x04").Bytes());
    EXPECT_THAT(CountersOf(cut.summary.losses), ElementsAre("cut_record 1"));
}

std::string Example() {
    auto writer = FreeRtos();
    writer.Named(22, {0, 512}, "M=Radio,0 Send bytes=%u").Packet(21, {kMain, 4096, 900, 12});
    writer.Run(kMain).Packet(34, {30}).Stop(kMain, kDelayed).Run(kWork).Packet(512, {1});
    writer.Lost(5).Packet(2, {15}).Ready(kMain).Packet(18, {}).Run(kMain).Packet(195, {1, 2});
    return writer.Idle().Bytes();
}

TEST(SystemView, DamageIsAnsweredAtEveryLengthAndEveryByte) {
    ExpectAnswersToDamage("x.SVDat", Example());
}

// More records than stand between two places that are kept; read in parts by other threads too.
TEST(SystemView, AnyRecordIsReadAsItIsInOrder) {
    auto writer = FreeRtos();
    for (std::uint32_t i = 0; i < 30000; ++i)
        writer.Run(i % 2 ? kMain : kWork, i % 7).Packet(53, {i});
    const TempFolder folder;
    const auto path = folder.Write("x.SVDat", writer.Bytes());
    const auto recording = std::move(*formats::OpenRecording(path, Calls("espressif")));
    const auto count = recording->RecordCount();
    std::vector<service::Record> inOrder(count);
    recording->Read(0, inOrder);
    std::vector<service::Record> one(1);
    for (std::uint32_t record = 0; record < count; record += 997) {
        recording->ReadPart(record, one);
        EXPECT_EQ(one.front().time, inOrder[record].time);
        EXPECT_EQ(one.front().subject, inOrder[record].subject);
        EXPECT_EQ(recording->TimeOf(count - 1 - record), inOrder[count - 1 - record].time);
    }
    const auto last = count - 1;
    EXPECT_EQ(recording->Detail(last), "p1=29999");
    EXPECT_EQ(recording->NameOf(last), "xQueueGenericSend");
}

struct RealCore {
    std::uint64_t calls;
    std::map<std::string, std::int64_t> ticks;  // run time without interrupts
};

// Counted by a script of its own, from the first to the last switch of a core.
TEST(SystemView, ARealRecordingOfTwoCoresAgreesWithAnIndependentCount) {
    const auto traces = RealTraces();
    if (traces.empty()) KVX_SKIP("no recordings of real kernels");
    const RealCore kCores[] = {{239,
                                {{"Idle", 10271611},
                                 {"FROM_CPU0", 29092},
                                 {"SysTick", 187115},
                                 {"main", 66887},
                                 {"alloc0", 117797},
                                 {"alloc1", 109247},
                                 {"alloc2", 186611}}},
                               {136,
                                {{"Idle", 10528164},
                                 {"FROM_CPU1", 43616},
                                 {"SysTick", 153096},
                                 {"free0", 90899},
                                 {"free1", 74417},
                                 {"free2", 70470}}}};
    for (std::uint32_t core = 0; core < 2; ++core) {
        const auto shown = ShowFile(traces + "/systemview/heap_log_mcore.svdat", {}, core);
        ASSERT_TRUE(shown.trace);
        EXPECT_EQ(shown.summary.records, 2642u);
        EXPECT_EQ(shown.summary.Shown().systemCalls, kCores[core].calls);
        EXPECT_THAT(CountersOf(shown.summary.losses), IsEmpty());
        std::map<std::string, std::int64_t> ticks;
        for (std::uint32_t e = 0; e < shown.summary.Shown().events; ++e) {
            std::int32_t kind = 0;
            std::int64_t begin = 0;
            std::int64_t end = 0;
            shown.trace->GetEventKind(e, &kind);
            shown.trace->GetEventTime(e, &begin);
            shown.trace->GetEventEndTime(e, &end);
            if (kind == kEventDispatch && end != 0)
                ticks[shown.trace->EventDetail(e)] += (end - begin) / 25;
        }
        ticks.erase("Unknown");
        EXPECT_EQ(ticks, kCores[core].ticks);
    }
}

}  // namespace
}  // namespace kvx::test
