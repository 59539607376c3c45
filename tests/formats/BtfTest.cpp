// BTF: tasks and interrupts with their instances and cores, calls, and the writer for FreeRTOS.

#include <gmock/gmock.h>

#include <map>

#include "formats/Damage.h"
#include "formats/TraceFiles.h"
#include "support/Needs.h"
#include "workbench/service/DecodedRecording.h"

namespace kvx::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::string_view kHeader = "#version 2.2.0\n#creator test\n#timeScale us\n";

std::vector<std::string> EventsOfBtf(std::string_view lines, std::uint32_t processor = 0) {
    return EventsOfLog(std::string(kHeader).append(lines), {}, processor);
}

TEST(Btf, DamageIsAnsweredAtEveryLengthAndEveryByte) {
    ExpectAnswersToDamage("x.btf", std::string(kHeader) +
                                       "1,STI_A,0,T,A,0,activate\n"
                                       "2,Core_1,0,T,A,0,start\n"
                                       "2,A,0,R,Step,0,start\n"
                                       "3,A,0,SEM,S,0,requestsemaphore,1\n"
                                       "4,Core_1,0,T,A,0,preempt\n"
                                       "4,Core_1,0,I,Tick,0,start\n"
                                       "5,Core_1,0,I,Tick,0,terminate\n"
                                       "5,Core_1,0,T,A,0,resume\n"
                                       "6,A,0,SEM,S,0,released\n"
                                       "7,A,0,R,Step,0,terminate\n"
                                       "9,Core_1,0,T,A,0,terminate\n");
}

TEST(Btf, ATaskFromActivationToItsEnd) {
    EXPECT_THAT(EventsOfBtf("1,STI_A,0,T,A,0,activate\n"
                            "2,Core_1,0,T,A,0,start\n"
                            "3,STI_B,0,T,B,0,activate\n"
                            "4,Core_1,0,T,A,0,preempt\n"
                            "4,Core_1,0,T,B,0,start\n"
                            "6,Core_1,0,T,B,0,wait\n"
                            "7,Core_1,0,T,A,0,resume\n"
                            "8,EV,0,T,B,0,release\n"
                            "9,Core_1,0,T,A,0,terminate\n"),
                ElementsAre("1000 state A: RDY", "2000 run Unknown: A", "3000 state B: RDY",
                            "4000 run A: B", "4000 state A: RDY", "6000 state B: WAI (FLG)",
                            "6000 run B: Idle", "7000 run Idle: A", "8000 state B: RDY",
                            "9000 state A: DMT", "9000 run A: Idle"));
}

// What is said of one moment in another order means the same; polling keeps the core.
TEST(Btf, OneMomentAndPolling) {
    EXPECT_THAT(EventsOfBtf("1,Core_1,0,T,A,0,start\n"
                            "4,Core_1,0,T,A,0,terminate\n"
                            "4,STI_C,0,T,C,0,activate\n"
                            "4,Core_1,0,T,B,0,start\n"
                            "5,Core_1,0,T,B,0,poll\n"
                            "6,Core_1,0,T,B,0,run\n"
                            "7,Core_1,0,T,B,0,park\n"),
                ElementsAre("1000 run Unknown: A", "4000 state A: DMT", "4000 run A: B",
                            "4000 state C: RDY", "7000 state B: WAI (SLP)", "7000 run B: Idle"));
}

TEST(Btf, InterruptsAreHandlersOverTheirTask) {
    // The task goes on behind the first, and loses the core behind the second.
    EXPECT_THAT(EventsOfBtf("1,Core_1,0,T,A,0,start\n"
                            "2,Core_1,0,T,A,0,preempt\n2,Core_1,0,I,Tick,0,start\n"
                            "3,Core_1,0,I,Tick,0,terminate\n3,Core_1,0,T,A,0,resume\n"
                            "5,Core_1,0,T,A,0,preempt\n5,Core_1,0,I,Tick,1,start\n"
                            "6,Core_1,0,I,Tick,1,terminate\n"
                            "8,Core_1,0,T,B,0,start\n"),
                ElementsAre("1000 run Unknown: A", "2000 run A: Tick", "3000 run Tick: A",
                            "5000 run A: Tick", "6000 run Tick: A", "6000 run A: Idle",
                            "6000 state A: RDY", "8000 run Idle: B"));
}

// A task has one line: an activation while it lives shows when the instance before has ended.
TEST(Btf, TwoInstancesOfATask) {
    EXPECT_THAT(EventsOfBtf("1,Core_1,0,T,A,0,start\n2,S,0,T,A,1,activate\n"
                            "3,Core_1,0,T,A,0,terminate\n5,Core_1,0,T,A,1,start\n"
                            "6,Core_1,0,T,A,1,terminate\n"),
                ElementsAre("1000 run Unknown: A", "3000 run A: Idle", "3000 state A: RDY",
                            "5000 run Idle: A", "6000 state A: DMT", "6000 run A: Idle"));
}

TEST(Btf, RunnablesAndSemaphoresAreCallsOfTheirTask) {
    const auto events = EventsOfBtf(
        "1,Core_1,0,T,A,0,start\n1,A,0,R,Lock,0,start\n"
        "2,A,0,SEM,S,0,requestsemaphore,0\n2,S,0,SEM,S,0,queued,0\n2,A,0,SEM,S,0,waiting,1\n"
        "3,Core_1,0,T,A,0,wait\n5,S,0,T,A,0,release\n6,Core_1,0,T,A,0,resume\n"
        "6,A,0,SEM,S,0,assigned,1\n6,A,0,R,Lock,0,terminate\n"
        "7,A,0,R,Work,0,start\n8,Core_1,0,T,A,0,wait\n9,E,0,T,A,0,release\n"
        "9,Core_1,0,T,A,0,resume\n10,A,0,R,Work,0,terminate\n11,A,0,SEM,S,0,released,1\n");
    EXPECT_THAT(events,
                testing::IsSupersetOf({"1000 call A: Lock()", "2000 call A: requestsemaphore(S)",
                                       "3000 state A: WAI (SEM)", "7000 call A: Work()",
                                       "8000 state A: WAI (FLG)"}));
    const TempFolder folder;
    const auto trace = Show(folder.Write(
        "x.btf",
        std::string(kHeader) +
            "1,Core_1,0,T,A,0,start\n1,A,0,R,Lock,0,start\n2,A,0,SEM,S,0,requestsemaphore,0\n"
            "3,A,0,R,Lock,0,terminate\n4,A,0,SEM,S,0,released,1\n"));
    EXPECT_THAT(CountersOf(trace->Summarize().losses, true), IsEmpty());
    // All calls have returned.
    for (const auto& timeline : trace->Decoded()->Timelines())
        for (const auto call : timeline->events.Calls(timeline->events.Count()))
            EXPECT_NE(timeline->events.ReturnRecord(call), service::kNoRecord);
}

TEST(Btf, CoresAndTablesOfNumbers) {
    const std::string lines =
        "#typeTable\n#-1 T\n#-2 I\n#entityTable\n#-1 Core_1\n#-2 Core_4\n#-3 A\n"
        "#-4 B\n5,1,0,1,3,0,start\n6,2,0,1,4,0,start\n7,1,0,1,3,0,terminate\n";
    EXPECT_THAT(EventsOfBtf(lines, 1),
                ElementsAre("5000 run Unknown: A", "7000 state A: DMT", "7000 run A: Idle"));
    EXPECT_THAT(EventsOfBtf(lines, 4), ElementsAre("6000 run Unknown: B"));
}

// The writer for FreeRTOS names the task before where others name the core, and does not tell
// ready from waiting: nothing is shown of a task that does not run.
TEST(Btf, TheWriterForFreeRtos) {
    const std::string lines =
        "1,Core_0,0,T,[0/0001]Run,0,preempt,create pri:4\n"
        "2,Core_0,0,T,[0/0002]Cs,0,preempt,create pri:3\n"
        "3,[0/0000],0,T,[0/0001]Run,0,resume,\n"
        "4,Core_0,0,STI,sem,0,trigger,take 0x8\n"
        "5,Core_0,0,T,[0/0001]Run,0,preempt,\n"
        "6,[0/0001]Run,0,T,[0/0002]Cs,0,resume,\n"
        "7,Core_1,0,T,[1/0003]Idle,0,preempt,\n"
        "8,[1/0003]Idle,0,T,[1/0001]Run,0,resume,\n";
    EXPECT_THAT(
        EventsOfBtf(lines),
        ElementsAre("3000 run Unknown: Run", "4000 call Run: sem_take(0x8)", "5000 run Run: Idle",
                    "6000 run Idle: Cs", "8000 state Run: DMT+PAUSE"));
    EXPECT_THAT(EventsOfBtf(lines, 1), ElementsAre("7000 run Idle: Idle", "8000 run Idle: Run"));
    EXPECT_THAT(LossesOfLog(std::string(kHeader) + lines, true),
                ElementsAre("ready_times_unknown 3"));
}

TEST(Btf, Losses) {
    const std::string good(std::string(kHeader) +
                           "1,Core_1,0,T,A,0,start\n2,Core_1,0,C,Core_1,0,x\n");
    EXPECT_THAT(LossesOfLog(good), IsEmpty());
    EXPECT_THAT(LossesOfLog(good + "x,Core_1,0,T,A,0,start\n3,Core_1,0\n4,Core_1,0,??,A,0,start\n\n"
                                   "5,Core_1,0,T,A,0,terminate\n"),
                ElementsAre("unreadable_records 3"));
    EXPECT_THAT(LossesOfLog(good + "3,Core_1,0,T,A"), ElementsAre("cut_record 1"));
    const TempFolder folder;
    const auto recording = formats::OpenRecording(folder.Write("x.btf", kHeader));
    ASSERT_FALSE(recording);
    EXPECT_THAT(recording.GetError().message, HasSubstr("without an event"));
}

// Sums of run time by task and core, as the counts beside the recordings give them.
TEST(Btf, RunTimesOfRealRecordings) {
    const std::string folder = RealTraces();
    if (folder.empty()) KVX_SKIP("no folder shared/traces beside the project");
    const auto sums = [&](const std::string& name) {
        const auto trace = Show(folder + "/btf/" + name);
        EXPECT_THAT(CountersOf(trace->Summarize().losses), IsEmpty()) << name;
        std::map<std::string, std::int64_t> run;
        for (const auto& timeline : trace->Decoded()->Timelines()) {
            const auto& events = timeline->events;
            for (const auto start : events.Dispatches(events.Count())) {
                const auto end = events.EndEvent(start);
                const auto& context = timeline->contexts.Get(events.Next(start));
                if (end == host::kOpenEnd || context.IsIdle()) continue;
                run[FormatText("Core_%u %s #%04d", timeline->processor, context.name.c_str(),
                               context.number)] += events.Time(end) - events.Time(start);
            }
        }
        return run;
    };
    std::map<std::string, std::int64_t> expected;
    std::ifstream counts(folder + "/btf/example-1core.btf.count.txt");
    for (std::string line; std::getline(counts, line);) {
        long long time = 0;
        char core[16];
        int begin = 0;
        if (std::sscanf(line.c_str(), "%lld %15s %n", &time, core, &begin) == 2 &&
            std::string_view(core).starts_with("Core_"))
            expected[std::string(core) + " " + line.substr(static_cast<std::size_t>(begin))] =
                1000 * time;
    }
    ASSERT_EQ(expected.size(), 39u);
    EXPECT_EQ(sums("example-1core.btf"), expected);
    std::map<char, std::int64_t> cores;
    for (const auto& [name, time] : sums("tracecompass-20140219-123819.btf"))
        cores[name[5]] += time;
    EXPECT_EQ(cores, (std::map<char, std::int64_t>{{'1', 427'206'475}, {'2', 292'271'600}}));
    EXPECT_EQ(Show(folder + "/btf/example-2cores.btf")->Summarize().records, 9052u);
}

}  // namespace
}  // namespace kvx::test
