// Every kind of finding in a recording that shows it, and next to one that just does not.

#include "timing/TimingRun.h"

namespace kvx::test {
namespace {

using nlohmann::json;

json FindingsOf(TimingRun& run, const std::string& kind) {
    json found = json::array();
    const auto check = run.Json("check");
    for (const auto& finding : check["findings"])
        if (finding["kind"] == kind) found.push_back(finding);
    return found;
}

std::string Line(long long time, const std::string& message) {
    return "[" + std::to_string(time) + "] " + message + ".\n";
}

// Task 1, woken at each of the times, runs for so long each time.
std::string Periodic(const std::vector<long long>& wakes, long long runs) {
    std::string log = Line(0, "task 1 becomes DORMANT") + Line(0, "dispatch to task 9");
    for (const auto at : wakes)
        log += Line(at, "task 1 becomes RUNNABLE") + Line(at, "dispatch to task 1") +
               Line(at + runs, "enter to ext_tsk") + Line(at + runs, "task 1 becomes DORMANT") +
               Line(at + runs, "dispatch to task 9");
    return log;
}

std::vector<long long> Every(long long period, int count) {
    std::vector<long long> times;
    for (int i = 1; i <= count; ++i) times.push_back(i * period);
    return times;
}

TEST(Findings, ATaskThatKeepsAPeriodIsLateWhenItTakesLonger) {
    auto wakes = Every(100, 25);
    TimingRun punctual(Periodic(wakes, 60));
    EXPECT_EQ(FindingsOf(punctual, "late_job").size(), 0u);
    // One job is longer than the period; the wake-up after it comes a little late.
    std::string log = Periodic(wakes, 60);
    log += Line(2600, "task 1 becomes RUNNABLE") + Line(2600, "dispatch to task 1") +
           Line(2710, "enter to ext_tsk") + Line(2710, "task 1 becomes DORMANT") +
           Line(2710, "dispatch to task 9") + Line(2715, "task 1 becomes RUNNABLE");
    TimingRun late(log);
    const auto found = FindingsOf(late, "late_job");
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0]["measured"], 110);
    EXPECT_EQ(found[0]["limit"], 100);
    EXPECT_EQ(found[0]["contexts"], json({"task 1"}));
    TimingRun few(Periodic(Every(100, 5), 60) + log.substr(log.find("[2600]")));
    EXPECT_EQ(FindingsOf(few, "late_job").size(), 0u) << "too few jobs to tell a period";
}

TEST(Findings, StarvationIsReadyWithoutRunningForTenPeriods) {
    const auto starved = [](long long until) {
        return Periodic(Every(100, 5), 10) + Line(600, "task 1 becomes RUNNABLE") +
               Line(until, "dispatch to task 1");
    };
    TimingRun patient(starved(1600));
    EXPECT_EQ(FindingsOf(patient, "starvation").size(), 0u);
    TimingRun hungry(starved(1601));
    const auto found = FindingsOf(hungry, "starvation");
    ASSERT_EQ(found.size(), 1u) << "though the recording cuts the job";
    EXPECT_EQ(found[0]["start"], 600);
    EXPECT_EQ(found[0]["end"], 1601);
    EXPECT_EQ(found[0]["limit"], 1000);
}

TEST(Findings, OverloadIsNoIdleTimeForATenthOfASecond) {
    const auto busy = [](long long time) {
        return Line(10, "dispatch to task 1") + Line(50, "dispatch from task 1") +
               Line(50, "dispatch to task 2") + Line(10 + time, "dispatch from task 2") +
               Line(200000, "dispatch to task 1") + Line(200001, "dispatch from task 1");
    };
    TimingRun less(busy(99999));
    EXPECT_EQ(FindingsOf(less, "overload").size(), 0u);
    TimingRun much(busy(100000));
    const auto found = FindingsOf(much, "overload");
    ASSERT_EQ(found.size(), 1u) << "idle for no time between the tasks is not idle";
    EXPECT_EQ(found[0]["measured"], 100000);
    EXPECT_EQ(found[0]["cpu"], 0);
}

TEST(Findings, AHandlerMayTakeATwentiethOfTenMilliseconds) {
    const auto handlers = [](long long second) {
        return Line(0, "dispatch to task 1") + Line(1000, "enter to int handler 7") +
               Line(1300, "leave from int handler 7") + Line(9000, "enter to int handler 7") +
               Line(9000 + second, "leave from int handler 7") +
               Line(30000, "dispatch from task 1");
    };
    TimingRun little(handlers(200));
    EXPECT_EQ(FindingsOf(little, "handler_load").size(), 0u);
    TimingRun much(handlers(201));
    const auto found = FindingsOf(much, "handler_load");
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0]["measured"], 501);
    EXPECT_EQ(found[0]["contexts"], json({"int handler 7"}));
}

TEST(Findings, ErrorsOfCallsAreGroupedUnderTheirNames) {
    std::string log = Line(0, "dispatch to task 1");
    for (int i = 1; i <= 3; ++i)
        log += Line(i * 10, "enter to pol_sem semid=1") +
               Line(i * 10 + 1, "leave from pol_sem ercd=-50");
    log += Line(50, "enter to act_tsk tskid=2") + Line(51, "leave from act_tsk ercd=-43");
    TimingRun run(log);
    const auto found = FindingsOf(run, "call_errors");
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0]["sentence"], "task 1: pol_sem returned E_TMOUT, 3 times.");
    EXPECT_EQ(found[0]["measured"], 3);
    EXPECT_EQ(found[0]["evidence"].size(), 2u);
    EXPECT_EQ(run.Table("errors")[1]["error"], "E_QOVR");
}

TEST(Findings, LocksThatAreMisused) {
    TimingRun run(Line(0, "task 1 becomes DORMANT") + Line(1, "task 1 becomes RUNNABLE") +
                  Line(1, "dispatch to task 1") + Line(2, "enter to loc_mtx mtxid=1") +
                  Line(3, "leave from loc_mtx ercd=0") + Line(5, "enter to slp_tsk") +
                  Line(5, "task 1 becomes WAITING") + Line(5, "dispatch to task 2") +
                  Line(8, "enter to unl_mtx mtxid=1") + Line(9, "leave from unl_mtx ercd=0") +
                  Line(20, "dispatch from task 2"));
    const auto held = FindingsOf(run, "lock_held_at_end");
    ASSERT_EQ(held.size(), 2u);
    EXPECT_EQ(held[0]["sentence"], "task 1 ended a job with mutex 1 held.");
    EXPECT_EQ(held[1]["severity"], "note") << "at the end of the recording it is only told";
    const auto unlocked = FindingsOf(run, "unlock_without_lock");
    ASSERT_EQ(unlocked.size(), 1u);
    EXPECT_EQ(unlocked[0]["contexts"], json({"task 2"}));
}

TEST(Findings, AnOverrunIsAStartWhileTheJobGoesOn) {
    TimingRun run(Line(0, "task 1 becomes DORMANT") + Line(1, "task 1 becomes RUNNABLE") +
                  Line(1, "dispatch to task 1") + Line(10, "enter to int handler 1") +
                  Line(10, "enter to iwup_tsk tskid=1") + Line(11, "leave from iwup_tsk ercd=0") +
                  Line(12, "enter to iwup_tsk tskid=1") + Line(13, "leave from iwup_tsk ercd=-43") +
                  Line(14, "enter to iwup_tsk tskid=1") + Line(15, "leave from iwup_tsk ercd=-18") +
                  Line(16, "leave from int handler 1") + Line(30, "dispatch from task 1"));
    const auto found = FindingsOf(run, "overrun");
    ASSERT_EQ(found.size(), 1u) << "one for each job";
    EXPECT_EQ(found[0]["measured"], 2) << "a refusal for another reason is none";
    EXPECT_EQ(found[0]["contexts"], json({"task 1", "int handler 1"}));
}

// What a gap hides is neither a job nor a wait, and what it cuts is cut.
TEST(Findings, AGapCutsWhatItHides) {
    const std::string log =
        "# tracer: nop\n#\n"
        "          <idle>-0     [000] d..2    10.000000: sched_switch: prev_comm=swapper/0 "
        "prev_pid=0 prev_prio=120 prev_state=R ==> next_comm=a next_pid=11 next_prio=120\n"
        "               a-11    [000] d..2    10.000100: sched_switch: prev_comm=a prev_pid=11 "
        "prev_prio=120 prev_state=S ==> next_comm=b next_pid=12 next_prio=120\n"
        "               b-12    [000] d..2    10.000200: sched_wakeup: comm=a pid=11 prio=120 "
        "target_cpu=000\n"
        "               b-12    [000] d..2    10.000300: sched_switch: prev_comm=b prev_pid=12 "
        "prev_prio=120 prev_state=R ==> next_comm=a next_pid=11 next_prio=120\n"
        "CPU:0 [LOST 5 EVENTS]\n"
        "               b-12    [000] d..2    10.000900: sched_switch: prev_comm=b prev_pid=12 "
        "prev_prio=120 prev_state=S ==> next_comm=a next_pid=11 next_prio=120\n"
        "               a-11    [000] d..2    10.001000: sched_switch: prev_comm=a prev_pid=11 "
        "prev_prio=120 prev_state=S ==> next_comm=swapper/0 next_pid=0 next_prio=120\n";
    TimingRun run(log);
    EXPECT_EQ(FindingsOf(run, "lost_stretch").size(), 1u);
    const auto jobs = run.Jobs("a");
    ASSERT_EQ(jobs.size(), 3u);
    EXPECT_NE(jobs[1]["activation"], nullptr);
    EXPECT_EQ(jobs[1]["end"], nullptr) << "it ends somewhere in the gap";
    EXPECT_EQ(jobs[2]["activation"], nullptr) << "it began somewhere in the gap";
    for (const auto& job : jobs) EXPECT_TRUE(job["cut"]);
}

}  // namespace
}  // namespace kvx::test
