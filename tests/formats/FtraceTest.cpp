// ftrace's text: every form of line, what its events mean, and what is lost of damaged ones.

#include <gmock/gmock.h>

#include <map>

#include "formats/Damage.h"
#include "formats/TraceFiles.h"
#include "support/Needs.h"
#include "workbench/formats/ftrace/Line.h"
#include "workbench/service/DecodedRecording.h"

namespace kvx::test {
namespace {

using formats::ftrace::ParseLine;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kSwitches =
    "# tracer: nop\n#\n# entries-in-buffer/entries-written: 4/10   #P:2\n#\n"
    "          <idle>-0     [000] d..2.     1.000001: sched_switch: prev_comm=swapper/0 prev_pid=0 "
    "prev_prio=120 prev_state=R ==> next_comm=Web Content next_pid=11 next_prio=120\n"
    "     Web Content-11    [000] d..2.     1.000004: sched_switch: prev_comm=Web Content "
    "prev_pid=11 prev_prio=120 prev_state=R+ ==> next_comm=a:b next_pid=12 next_prio=98\n"
    "             a:b-12    [000] d..2.     1.000009: sched_switch: prev_comm=a:b prev_pid=12 "
    "prev_prio=98 prev_state=D|K ==> next_comm=swapper/0 next_pid=0 next_prio=120\n"
    "          <idle>-0     [001] d..2.     1.000010: sched_wakeup: comm=a:b pid=12 prio=98 "
    "target_cpu=000\n";

TEST(FtraceText, DamageIsAnsweredAtEveryLengthAndEveryByte) {
    ExpectAnswersToDamage(
        "x.ftrace",
        std::string(kSwitches) +
            "CPU:1 [LOST 7 EVENTS]\n"
            "             a:b-12    [001] d..2.     1.000011: irq_handler_entry: irq=3 name=eth\n"
            "             a:b-12    [001] d..2.     1.000012: irq_handler_exit: irq=3 ret=handled\n"
            "             a:b-12    [001] .....     1.000013: sys_enter: NR 0 (3, 7f, 40)\n"
            "             a:b-12    [001] .....     1.000015: sys_exit: NR 0 = 64\n");
}

TEST(FtraceText, TheHeadOfALine) {
    struct Case {
        const char* text;
        const char* comm;
        std::uint64_t pid;
        std::uint32_t cpu;
        std::int64_t time;
        const char* event;
    };
    const Case kCases[] = {
        {"  <idle>-0     [002]    76.211513: x: y", "<idle>", 0, 2, 76'211'513'000, "x: y"},
        {"Web Content-2711  [003] d..3  7.5: x: y", "Web Content", 2711, 3, 7'500'000'000, "x: y"},
        {"kworker/0:0H-24678 [012] dNh4.. 1.000000001: x: y", "kworker/0:0H", 24678, 12,
         1'000'000'001, "x: y"},
        {"x.youtube-23071 (  611) [1004] ...1 514769.085985: x: y", "x.youtube", 23071, 1004,
         514'769'085'985'000, "x: y"},
        {"a [3] b-7 (-----) [000] .... 2.000000: x: y", "a [3] b", 7, 0, 2'000'000'000, "x: y"},
        {"<noname>-1   [0]   7.640000000: sys_close()", "<noname>", 1, 0, 7'640'000'000,
         "sys_close()"},
        {"  ls-4734    2d..1. 106439.675578080: x: [1]", "ls", 4734, 2, 106'439'675'578'080,
         "x: [1]"},
        {"my app  815/816 [001]  3.000001:   sched:x: y", "my app", 816, 1, 3'000'001'000,
         "sched:x: y"},
        {"ls-4 [000] d... 123456: x: y", "ls", 4, 0, 123456, "x: y"}};
    for (const auto& row : kCases) {
        const auto line = ParseLine(row.text);
        ASSERT_TRUE(line) << row.text;
        EXPECT_EQ(line->comm, row.comm);
        EXPECT_EQ(line->pid, row.pid) << row.text;
        EXPECT_EQ(line->cpu, row.cpu) << row.text;
        EXPECT_EQ(line->time, row.time) << row.text;
        EXPECT_EQ(line->event, row.event);
    }
    for (const char* text :
         {"", "[000] 1.000000: x: y", "ls-4 [000] 1.: x", "ls-4 [x] 1.0: x", "ls-4 [99999] 1.0: x",
          "ls-99999999999 [000] 1.0: x", " gid=4", "ls [000] d..2 9999999999999.0: x"})
        EXPECT_FALSE(ParseLine(text)) << text;
}

TEST(FtraceText, SwitchesWakeUpsAndWhatTheHeaderSays) {
    const TempFolder folder;
    const auto trace = Show(folder.Write("t.txt", kSwitches));
    ASSERT_TRUE(trace);
    const auto summary = trace->Summarize();
    EXPECT_EQ(summary.format, "ftrace text (Linux)");
    EXPECT_EQ(summary.records, 4u);
    EXPECT_THAT(trace->GetRecording()->Warnings(), ElementsAre(HasSubstr("6 older events")));
    EXPECT_THAT(Events(*trace),
                ElementsAre("1000001000 run Idle: Web Content", "1000004000 run Web Content: a:b",
                            "1000004000 state Web Content: RDY", "1000009000 state a:b: WAI (SLP)",
                            "1000009000 run a:b: Idle", "1000010000 state a:b: RDY"));
}

// The same switch in the three forms that the tools write.
TEST(FtraceText, TheFormsOfASwitchMeanTheSame) {
    const char* const kHeads[] = {"a-1 [000] 2.000000: sched_switch: ",
                                  "b-2 [000] 3.000000: sched_switch: "};
    const char* const kForms[][2] = {
        {"prev_comm=a prev_pid=1 prev_prio=9 prev_state=S ==> next_comm=b:c next_pid=2 next_prio=8",
         "prev_comm=b:c prev_pid=2 prev_prio=8 prev_state=R+ ==> next_comm=a next_pid=1 "
         "next_prio=9"},
        {"prev_comm=a prev_pid=1 prev_prio=9 prev_state=1 next_comm=b:c next_pid=2 next_prio=8",
         "prev_comm=b:c prev_pid=2 prev_prio=8 prev_state=4096 next_comm=a next_pid=1 next_prio=9"},
        {"a:1 [9] S ==> b:c:2 [8]", "b:c:2 [8] R ==> a:1 [9]"}};
    std::vector<std::vector<std::string>> all;
    for (const auto& form : kForms)
        all.push_back(EventsOfLog(std::string(kHeads[0]) + form[0] + "\n" + kHeads[1] + form[1]));
    EXPECT_THAT(all[0], ElementsAre("2000000000 state a: WAI (SLP)", "2000000000 run a: b:c",
                                    "3000000000 run b:c: a", "3000000000 state b:c: RDY"));
    EXPECT_EQ(all[1], all[0]);
    EXPECT_EQ(all[2], all[0]);
}

TEST(FtraceText, StatesOfATaskThatIsSwitchedOut) {
    const auto stateFor = [](const char* state) {
        const auto events = EventsOfLog(FormatText(
            "a-1 [000] 2.0: sched_switch: prev_comm=a prev_pid=1 prev_prio=9 prev_state=%s ==> "
            "next_comm=b next_pid=2 next_prio=8\n",
            state));
        for (const auto& event : events)
            if (const auto at = event.find("state a: "); at != std::string::npos)
                return event.substr(at + 9);
        return std::string("none");
    };
    for (const char* ready : {"R", "R+", "0", "256", "1024", "2048", "4096"})
        EXPECT_EQ(stateFor(ready), "RDY") << ready;
    for (const char* waits : {"S", "D", "D|K", "I", "1", "2", "130", "1026"})
        EXPECT_EQ(stateFor(waits), "WAI (SLP)") << waits;
    for (const char* stopped : {"T", "t", "P", "4", "8"})
        EXPECT_EQ(stateFor(stopped), "RDY+SUS") << stopped;
    for (const char* ended : {"X", "Z", "x", "16", "32"})
        EXPECT_EQ(stateFor(ended), "DMT") << ended;
}

TEST(FtraceText, AWakeUpThatFailedMeansNothing) {
    const std::string head =
        "b-2 [000] 2.0: sched_switch: b:2 [8] S ==> a:1 [9]\na-1 [000] 3.0: sched_wakeup: ";
    for (const char* text :
         {"comm=b pid=2 prio=8 success=0 target_cpu=000", "b:2 [8] success=0 CPU:000"})
        EXPECT_THAT(EventsOfLog(head + text), testing::SizeIs(2)) << text;
    for (const char* text :
         {"comm=b pid=2 prio=8 success=1 target_cpu=000", "comm=b pid=2 prio=8 target_cpu=000",
          "b:2 [8] success=1 CPU:000", "b:2 [8]<CANT FIND FIELD success> CPU:000"})
        EXPECT_THAT(EventsOfLog(head + text), testing::Contains("3000000000 state b: RDY")) << text;
}

TEST(FtraceText, HandlersAndCalls) {
    const auto events = EventsOfLog(
        "a-1 [000] d... 1.0: sched_switch: b:2 [8] S ==> a:1 [9]\n"
        "a-1 [000] d... 2.0: sys_openat(dfd: ffffff9c, filename: 7fd6, flags: 80000)\n"
        "a-1 [000] d.h. 3.0: irq_handler_entry: irq=26 name=arch timer\n"
        "a-1 [000] d.h. 4.0: irq_handler_exit: irq=26 ret=handled\n"
        "a-1 [000] d.s. 5.0: softirq_entry: vec=1 [action=TIMER]\n"
        "a-1 [000] d.s. 6.0: softirq_exit: vec=1 [action=TIMER]\n"
        "a-1 [000] d... 7.0: sys_openat -> 0xfffffffffffffff5\n"
        "a-1 [000] .... 8.0: sys_enter_read: fd: 0x3, count: 0x10\n"
        "a-1 [000] .... 9.0: sys_exit_read: 0x10\n"
        "a-1 [000] .... 10.0: sys_enter: NR 74 (a, deadbeef)\n"
        "a-1 [000] .... 11.0: sys_exit: NR 74 = -5\n");
    EXPECT_THAT(
        events,
        ElementsAre(
            "1000000000 state b: WAI (SLP)", "1000000000 run b: a",
            "2000000000 call a: openat(dfd=ffffff9c, filename=7fd6, flags=80000) -> ret=-11",
            "3000000000 run a: irq 26 arch timer", "4000000000 run irq 26 arch timer: a",
            "5000000000 run a: softirq 1 TIMER", "6000000000 run softirq 1 TIMER: a",
            "8000000000 call a: read(fd=0x3, count=0x10) -> ret=16",
            "10000000000 call a: syscall_74(a, deadbeef) -> ret=-5"));
}

TEST(FtraceText, Nuttx) {
    const TempFolder folder;
    const auto trace = Show(folder.Write(
        "n.txt",
        " init-1   [0]   7.640000000: sys_nxsem_wait(arg0: 0x10)\n"
        " idle-0   [0]   7.640000000: sched_switch: prev_comm=init prev_pid=1 prev_state=S ==> "
        "next_comm=idle next_pid=0\n"
        " idle-0   [0]   7.650000000: irq_handler_entry: irq=15\n"
        " idle-0   [0]   7.650000000: sched_waking: comm=init pid=1 target_cpu=0\n"
        " idle-0   [0]   7.650000000: irq_handler_exit: irq=15\n"
        " init-1   [0]   7.650000000: sched_switch: prev_comm=idle prev_pid=0 prev_state=R ==> "
        "next_comm=init next_pid=1\n"
        " init-1   [0]   7.660000000: sys_nxsem_wait -> 0\n"));
    ASSERT_TRUE(trace);
    EXPECT_EQ(trace->Summarize().format, "ftrace text (NuttX)");
    EXPECT_THAT(Events(*trace),
                ElementsAre("7640000000 call init: nxsem_wait(arg0=0x10) -> ret=0",
                            "7640000000 state init: WAI (SEM)", "7640000000 run init: Idle",
                            "7650000000 run Idle: irq 15", "7650000000 state init: RDY",
                            "7650000000 run irq 15: Idle", "7650000000 run Idle: init"));
}

TEST(FtraceText, Losses) {
    const std::string event =
        "a-1 [000] d... 2.000000: sched_switch: prev_comm=a prev_pid=1 prev_prio=9 prev_state=R "
        "==> next_comm=a next_pid=1 next_prio=8\n";
    EXPECT_THAT(LossesOfLog(event +
                            "CPU:0 [LOST 12 EVENTS]\nCPU:1 [7 EVENTS DROPPED]\n"
                            "CPU:1 [EVENTS DROPPED]\n" +
                            event),
                ElementsAre("discarded_records 20"));
    // Texts may have several lines; nothing is lost with them, nor with the header.
    EXPECT_THAT(LossesOfLog("cpus=2\nCPU 1 is empty\n" + event +
                            "a-1 [000] d... 2.000000: bprint: one\n two\n\nthree\n"
                            "##### CPU 1 buffer started ####\n" +
                            event),
                IsEmpty());
    EXPECT_THAT(LossesOfLog(event +
                            "a-1 [00x] d... 2.000000: sched_switch: b:2 [8] S ==> a:1 [9]\n"
                            "a-1 [000] d... 2.000000: sched_switch: b:2 [8] S\n" +
                            event),
                ElementsAre("unreadable_records 2"));
    EXPECT_THAT(LossesOfLog("# x   #P:2\n" + event +
                            "a-1 [900] d... 2.000000: sched_switch: b:2 [8] S ==> a:1 [9]\n"),
                ElementsAre("unreadable_records 1"));
    for (auto length = event.size() + 20; length < 2 * event.size() - 2; ++length)
        EXPECT_THAT(LossesOfLog((event + event).substr(0, length)), ElementsAre("cut_record 1"))
            << length;
}

// One wrong digit in a time moves its own event and no other.
TEST(FtraceText, EventsAreInOrderOfTime) {
    const auto at = [](const char* time, int from, int to) {
        return FormatText("a-1 [000] %s: sched_switch: t:%d [8] S ==> t:%d [8]\n", time, from, to);
    };
    const auto log = at("1.0", 1, 2) + at("9.0", 2, 3) + at("3.0", 3, 4) + at("4.0", 4, 5);
    const auto events = EventsOfLog(log);
    ASSERT_FALSE(events.empty());
    EXPECT_TRUE(events.back().starts_with("9000000000"));
    EXPECT_THAT(events, testing::Contains("4000000000 run t: t"));
    EXPECT_THAT(LossesOfLog(log, true), testing::Contains("time_steps_back 1"));
}

TEST(FtraceText, PagesOfSystrace) {
    const std::string lines = kSwitches;
    const auto expected = EventsOfLog(lines);
    const std::string begin = "<!DOCTYPE HTML>\n<html>\n<script>var a = [1];\n</script>\n";
    EXPECT_EQ(EventsOfLog(begin +
                          "<!-- BEGIN TRACE -->\n<script class=\"trace-data\" "
                          "type=\"application/text\">\n" +
                          lines +
                          "</script>\n<script class=\"trace-data\" type=\"application/json\">\n"
                          "{\"a\": 1}\n</script>\n</html>\n"),
              expected);
    std::string escaped;
    for (const char c : lines) escaped += c == '\n' ? std::string("\\n\\\n") : std::string(1, c);
    EXPECT_EQ(EventsOfLog(begin + "<script>\n  var linuxPerfData = \"\\\n" + escaped +
                          "\";\n</script>\n"),
              expected);
}

TEST(FtraceText, WhatCannotBeShownSaysWhy) {
    const TempFolder folder;
    const auto messageFor = [&](std::string_view text) {
        const auto recording = formats::OpenRecording(folder.Write("x.txt", text));
        return recording ? "opened" : recording.GetError().message;
    };
    EXPECT_THAT(messageFor("# tracer: nop\n#\n"), HasSubstr("without an event"));
    EXPECT_THAT(messageFor("    bash-1994    1d...2..    4us+: wakeup\n"
                           "    bash-1994    1d...2..    9us : wakeup\n"),
                HasSubstr("latency format"));
    const auto trace = Show(folder.Write("x.txt",
                                         "# tracer: function\n"
                                         "a-1 [000] d..2 1.0: do_it <-caller\n"
                                         "a-1 [000] d..2 2.0: cpu_idle: state=1 cpu_id=0\n"
                                         "a-1 [000] d..2 3.0: do_it <-caller\n"));
    ASSERT_TRUE(trace);
    EXPECT_THAT(trace->GetRecording()->Warnings(),
                ElementsAre(HasSubstr("2 lines of the function tracers"),
                            HasSubstr("no event says which task runs")));
}

// PATH as it was comes back with the end.
class PathOf {
  public:
    explicit PathOf(const std::string& folder) { setenv("PATH", folder.c_str(), 1); }
    PathOf(const PathOf&) = delete;
    PathOf& operator=(const PathOf&) = delete;
    ~PathOf() { setenv("PATH", before_.c_str(), 1); }

  private:
    std::string before_ = std::getenv("PATH");
};

// What stands in for trace-cmd is a script; the recording is nothing but its first bytes.
TEST(TraceDat, TheProgramThatReadsItIsMissingOrFails) {
    const TempFolder folder;
    const auto recording = folder.Write("trace.dat", "\x17\x08\x44tracing6");
    const PathOf path(folder.Path("bin"));
    const auto program = [&](const std::string& script) {
        namespace fs = std::filesystem;
        fs::permissions(folder.Write("bin/trace-cmd", "#!/bin/sh\n" + script),
                        fs::perms::owner_all);
        return formats::OpenRecording(recording);
    };
    EXPECT_THAT(formats::OpenRecording(recording).GetError().message,
                HasSubstr("it is not installed here"));
    EXPECT_THAT(program("echo no such section >&2; exit 1\n").GetError().message,
                HasSubstr("trace.dat: trace-cmd says: no such section"));
    EXPECT_THAT(program("exit 0\n").GetError().message, HasSubstr("holds no events"));

    const auto whole = program(
        "echo 'cpus=1'\n"
        "echo '  <idle>-0 [000] 1.000000004: sched_switch: prev_comm=swapper/0 "
        "prev_pid=0 prev_prio=120 prev_state=R ==> next_comm=a next_pid=7 "
        "next_prio=98'\nkill -9 $$\n");
    ASSERT_TRUE(whole) << "what came before the end is shown";
    EXPECT_EQ((*whole)->RecordCount(), 1u);
    const auto warnings = (*whole)->Warnings();
    EXPECT_THAT(warnings, testing::Contains(HasSubstr("trace-cmd gave up")));
}

// Sums of run time of every task and processor, as the counts beside the recordings give them.
TEST(FtraceText, RunTimesOfRealRecordings) {
    const std::string folder = RealTraces();
    if (folder.empty()) KVX_SKIP("no folder shared/traces beside the project");
    const std::pair<const char*, const char*> kRecordings[] = {
        {"ftrace/lisa-trace-first1500.txt", "ftrace/lisa-trace-first1500.txt.count.txt"},
        {"ftrace/raw_trace-report.txt", "ftrace/raw_trace-report.txt.count.txt"},
        {"ftrace/trace_idle-report-9digits.txt", "ftrace/trace_idle-report-9digits.txt.count.txt"},
        {"ftrace/trace_legacy_systrace.html", "ftrace/trace_legacy_systrace.html.count.txt"},
        {"trace-dat/raw_trace-v6-nokallsyms.dat", "trace-dat/raw_trace.count.txt"},
        {"trace-dat/raw_trace-v7-zstd-nokallsyms.dat", "trace-dat/raw_trace.count.txt"},
        {"trace-dat/sched_load-v7-zstd-nokallsyms.dat", "trace-dat/sched_load.count.txt"}};
    for (const auto& [name, count] : kRecordings) {
        const auto trace = Show(folder + "/" + name);
        ASSERT_TRUE(trace) << name;
        EXPECT_THAT(CountersOf(trace->Summarize().losses), IsEmpty()) << name;
        std::ifstream counts(folder + "/" + count);
        std::map<std::pair<std::uint32_t, std::uint64_t>, std::int64_t> expected;
        std::uint32_t records = 0;
        for (std::string line; std::getline(counts, line);) {
            long long run = 0;
            unsigned cpu = 0;
            unsigned long long pid = 0;
            if (std::sscanf(line.c_str(), "%lld cpu%u pid %llu", &run, &cpu, &pid) == 3)
                expected[{cpu, pid}] = run;
            std::sscanf(line.c_str(), "events: %u", &records);
        }
        ASSERT_FALSE(expected.empty()) << name;
        EXPECT_EQ(trace->Summarize().records, records) << name;
        std::map<std::pair<std::uint32_t, std::uint64_t>, std::int64_t> found;
        for (const auto& timeline : trace->Decoded()->Timelines()) {
            const auto& events = timeline->events;
            for (const auto run : events.Dispatches(events.Count())) {
                const auto end = events.EndEvent(run);
                if (end == host::kOpenEnd) continue;
                const auto& key = timeline->contexts.Get(events.Next(run)).key;
                found[{timeline->processor, key.id}] += events.Time(end) - events.Time(run);
            }
        }
        EXPECT_EQ(found, expected) << name;
    }
}

}  // namespace
}  // namespace kvx::test
