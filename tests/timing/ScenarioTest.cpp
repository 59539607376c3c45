// Small recordings of which every figure can be counted by hand.

#include "timing/TimingRun.h"

namespace kvx::test {
namespace {

using nlohmann::json;

// Task 1 is woken, runs, is interrupted, waits for a message and sleeps again.
constexpr const char* kOneTask =
    "[0] dispatch to task 1.\n"
    "[1] enter to slp_tsk.\n"
    "[1] task 1 becomes WAITING.\n"
    "[2] dispatch to task 2.\n"
    "[10] enter to int handler 3.\n"
    "[11] enter to iwup_tsk tskid=1.\n"
    "[11] task 1 becomes RUNNABLE.\n"
    "[12] leave from iwup_tsk ercd=0.\n"
    "[13] leave from int handler 3.\n"
    "[15] dispatch to task 1.\n"
    "[16] leave from slp_tsk ercd=0.\n"
    "[20] enter to int handler 4.\n"
    "[23] leave from int handler 4.\n"
    "[30] enter to slp_tsk.\n"
    "[30] task 1 becomes WAITING.\n"
    "[31] dispatch to task 2.\n"
    "[40] enter to int handler 3.\n"
    "[40] enter to iwup_tsk tskid=1.\n"
    "[40] task 1 becomes RUNNABLE.\n"
    "[41] leave from iwup_tsk ercd=0.\n"
    "[42] leave from int handler 3.\n"
    "[43] dispatch to task 1.\n";

TEST(Timing, OneJobCountedByHand) {
    TimingRun run(kOneTask);
    const auto jobs = run.Jobs("1");
    ASSERT_EQ(jobs.size(), 3u);
    EXPECT_TRUE(jobs[0]["cut"]) << "it began before the recording";
    EXPECT_EQ(jobs[0]["activation"], nullptr);
    EXPECT_EQ(jobs[0]["end"], 1);
    const json expected = {{"task", "task 1"},
                           {"number", 1},
                           {"job", 2},
                           {"activation", 11},
                           {"start", 15},
                           {"end", 30},
                           {"rt", 19},
                           {"ipt", 4},
                           {"cet", 12},
                           {"ready", 7},
                           {"blocked", 0},
                           {"suspended", 0},
                           {"preemptions", 0},
                           {"ends_in", "SLP"},
                           {"started_by", {{"context", "int handler 3"}, {"call", "iwup_tsk"}}},
                           {"cut", false}};
    EXPECT_EQ(jobs[1], expected);
    EXPECT_TRUE(jobs[2]["cut"]) << "the recording ends in it";
    EXPECT_EQ(jobs[2]["activation"], 40);
    EXPECT_EQ(jobs[2]["rt"], nullptr);
    const auto timing = run.Table("timing", {"--task", "1"})[0];
    EXPECT_EQ(timing["jobs"], 3);
    EXPECT_EQ(timing["cut_jobs"], 2);
    EXPECT_EQ(timing["period"], json({{"min", 29}, {"avg", 29.0}, {"max", 29}}));
    EXPECT_EQ(timing["rt"]["p99"], 19);
}

TEST(Timing, ARunOfAHandlerIsAJobThatEndsInNothing) {
    TimingRun run(kOneTask);
    const auto job = run.Jobs("int handler 3")[0];
    EXPECT_EQ(job["rt"], 3);
    EXPECT_EQ(job["ends_in"], nullptr);
    ASSERT_EQ(run.Run("explain", {"--task", "int handler 3"}), 0);
    EXPECT_TRUE(run.Out().starts_with("int handler 3 job 1 took 3 us: it ran 3 us.")) << run.Out();
    EXPECT_TRUE(run.Out().ends_with("  ends\n")) << run.Out();
}

TEST(Timing, ARangeCutsTheJobsAtItsEnds) {
    TimingRun run(kOneTask);
    const auto jobs = run.Table("jobs", {"--task", "1", "--start", "12", "--end", "35"});
    ASSERT_EQ(jobs.size(), 1u);
    EXPECT_TRUE(jobs[0]["cut"]);
    EXPECT_EQ(jobs[0]["job"], 2) << "numbers are those of the recording";
    EXPECT_EQ(jobs[0]["activation"], nullptr);
    EXPECT_EQ(jobs[0]["end"], 30);
    const auto whole = run.Table("jobs", {"--task", "1", "--start", "11", "--end", "30"});
    EXPECT_FALSE(whole[0]["cut"]) << "a job that just fits lies in it";
}

// Task 3 takes the lock; task 1 wants it; task 2 keeps task 3 from going on.
constexpr const char* kInversion =
    "[0] dispatch to task 3.\n"
    "[1] enter to wai_sem semid=3.\n"
    "[2] leave from wai_sem ercd=0.\n"
    "[10] enter to int handler 1.\n"
    "[10] enter to iact_tsk tskid=1.\n"
    "[10] task 1 becomes RUNNABLE.\n"
    "[11] leave from iact_tsk ercd=0.\n"
    "[11] enter to iact_tsk tskid=2.\n"
    "[11] task 2 becomes RUNNABLE.\n"
    "[12] leave from iact_tsk ercd=0.\n"
    "[12] leave from int handler 1.\n"
    "[12] dispatch from task 3.\n"
    "[12] dispatch to task 1.\n"
    "[20] enter to wai_sem semid=3.\n"
    "[20] task 1 becomes WAITING.\n"
    "[20] dispatch to task 2.\n"
    "[80] enter to ext_tsk.\n"
    "[80] task 2 becomes DORMANT.\n"
    "[80] dispatch to task 3.\n"
    "[90] enter to sig_sem semid=3.\n"
    "[90] task 1 becomes RUNNABLE.\n"
    "[90] dispatch to task 1.\n"
    "[91] leave from wai_sem ercd=0.\n"
    "[95] enter to sig_sem semid=3.\n"
    "[95] leave from sig_sem ercd=0.\n"
    "[100] enter to ext_tsk.\n"
    "[100] task 1 becomes DORMANT.\n"
    "[100] dispatch to task 3.\n"
    "[101] leave from sig_sem ercd=0.\n"
    "[110] enter to ext_tsk.\n"
    "[110] task 3 becomes DORMANT.\n"
    "[110] dispatch from task 3.\n";

std::string StatesOf(const std::string& log) {
    return "[0] task 1 becomes DORMANT.\n[0] task 2 becomes DORMANT.\n" + log;
}

TEST(Timing, AnInversionIsFoundAndExplained) {
    TimingRun run(StatesOf(kInversion), {1, 5, 9});
    const auto lock = run.Table("locks")[0];
    EXPECT_EQ(lock["kind"], "semaphore");
    EXPECT_TRUE(lock["inferred"]);
    EXPECT_EQ(lock["takes"], 2);
    EXPECT_EQ(lock["contended"], 1);
    EXPECT_EQ(lock["wait_max"], 70);
    EXPECT_EQ(lock["longest_holder"], "T3");
    const auto check = run.Json("check");
    ASSERT_FALSE(check["findings"].empty());
    const auto& found = check["findings"][0];
    EXPECT_EQ(found["kind"], "priority_inversion");
    EXPECT_EQ(found["contexts"], json({"T1", "T3", "T2"}));
    EXPECT_EQ(found["measured"], 60);
    const auto explained = run.Json("explain", {"--task", "T1"});
    EXPECT_EQ(explained["response"], 90);
    EXPECT_EQ(explained["sentence"],
              "T1 job 1 took 90 us: it ran 18 us and was blocked 70 us on semaphore 3 held by T3, "
              "which itself stood ready for 60 us while T2 ran: priority inversion.");
    std::int64_t sum = 0;
    for (const auto& part : explained["parts"]) sum += part["time"].get<std::int64_t>();
    EXPECT_EQ(sum, 90);
}

TEST(Timing, WithoutPrioritiesNoInversionIsGuessed) {
    TimingRun run(StatesOf(kInversion));
    const auto check = run.Json("check");
    for (const auto& finding : check["findings"]) EXPECT_NE(finding["kind"], "priority_inversion");
    EXPECT_NE(check["notes"].dump().find("priority_inversion is not examined"), std::string::npos);
}

// Two tasks take two mutexes in opposite order.
TEST(Timing, ACircleOfLocksIsADeadlock) {
    TimingRun run(
        "[0] task 1 becomes DORMANT.\n[0] task 2 becomes DORMANT.\n"
        "[1] task 2 becomes RUNNABLE.\n[1] dispatch to task 2.\n"
        "[2] enter to loc_mtx mtxid=2.\n[2] leave from loc_mtx ercd=0.\n"
        "[5] task 1 becomes RUNNABLE.\n[5] dispatch from task 2.\n[5] dispatch to task 1.\n"
        "[6] enter to loc_mtx mtxid=1.\n[6] leave from loc_mtx ercd=0.\n"
        "[8] enter to loc_mtx mtxid=2.\n[8] task 1 becomes WAITING.\n[8] dispatch to task 2.\n"
        "[12] enter to loc_mtx mtxid=1.\n[12] task 2 becomes WAITING.\n[12] dispatch from task 2.\n"
        "[50] enter to int handler 1.\n",
        {1, 2});
    const auto check = run.Json("check", {"--fail-on", "deadlock"});
    bool found = false;
    for (const auto& finding : check["findings"]) {
        if (finding["kind"] != "deadlock") continue;
        found = true;
        EXPECT_EQ(finding["contexts"].size(), 2u);
        EXPECT_EQ(finding["start"], 12);
        EXPECT_EQ(finding["severity"], "fault");
    }
    EXPECT_TRUE(found);
    EXPECT_EQ(run.Run("check", {"--fail-on", "deadlock"}), cli::kExitViolated);
    const auto explained = run.Json("explain", {"--task", "T1", "--job", "1"});
    EXPECT_NE(explained["sentence"].get<std::string>().find("deadlock"), std::string::npos);
    EXPECT_EQ(explained["parts"].back()["chain"][0]["object"], "mutex 1");
}

TEST(Timing, ATaskThatWaitsForItselfIsADeadlock) {
    TimingRun run(
        "[0] task 1 becomes DORMANT.\n[1] task 1 becomes RUNNABLE.\n[1] dispatch to task 1.\n"
        "[2] enter to loc_mtx mtxid=1.\n[2] leave from loc_mtx ercd=0.\n"
        "[5] enter to loc_mtx mtxid=1.\n[5] task 1 becomes WAITING.\n[5] dispatch from task 1.\n"
        "[9] enter to int handler 1.\n");
    EXPECT_EQ(run.Json("check")["findings"][0]["sentence"],
              "Deadlock: task 1 waits for mutex 1, which it holds itself, for 4 us, and still does "
              "at the end of the recording.");
}

// A task that moves to another processor while it is ready is one task with one job.
TEST(Timing, AJobGoesOnOnAnotherProcessor) {
    TimingRun run(
        "[0]:[1]: task 1 becomes DORMANT.\n"
        "[5]:[1]: task 1 becomes RUNNABLE.\n"
        "[6]:[1]: dispatch to task 1.\n"
        "[10]:[1]: task 1 migrates from processor 1 to processor 2.\n"
        "[10]:[1]: dispatch from task 1.\n"
        "[14]:[2]: dispatch to task 1.\n"
        "[20]:[2]: enter to ext_tsk.\n"
        "[20]:[2]: task 1 becomes DORMANT.\n"
        "[20]:[2]: dispatch from task 1.\n");
    const auto jobs = run.Jobs("1");
    ASSERT_EQ(jobs.size(), 1u);
    EXPECT_EQ(jobs[0]["rt"], 15);
    EXPECT_EQ(jobs[0]["cet"], 10);
    EXPECT_EQ(jobs[0]["ready"], 5);
    EXPECT_EQ(jobs[0]["blocked"], 0);
    EXPECT_EQ(run.Table("jobs", {"--cpu", "2"}).size(), 0u) << "it began to run on the other one";
}

// A call that finds its message at once ends no job: the backlog is one job.
TEST(Timing, JobsUnderBacklogAreOne) {
    TimingRun run(
        "[0] task 1 becomes DORMANT.\n[2] task 1 becomes RUNNABLE.\n[3] dispatch to task 1.\n"
        "[5] enter to rcv_dtq dtqid=1. p_data=0.\n[6] leave from rcv_dtq ercd=0. data=1.\n"
        "[9] enter to rcv_dtq dtqid=1. p_data=0.\n[9] task 1 becomes WAITING.\n"
        "[9] dispatch from task 1.\n[20] task 1 becomes RUNNABLE.\n[20] dispatch to task 1.\n");
    const auto jobs = run.Jobs("1");
    ASSERT_EQ(jobs.size(), 2u);
    EXPECT_EQ(jobs[0]["rt"], 7);
    EXPECT_EQ(jobs[0]["ends_in"], "DTQ");
}

TEST(Timing, AJobThatNeverRunsHasNoStart) {
    TimingRun run(
        "[0] task 1 becomes DORMANT.\n[0] dispatch to task 2.\n[4] task 1 becomes RUNNABLE.\n"
        "[9] enter to ter_tsk tskid=1.\n[9] task 1 becomes DORMANT.\n[9] leave from ter_tsk "
        "ercd=0.\n");
    const auto job = run.Jobs("1")[0];
    EXPECT_FALSE(job["cut"]);
    EXPECT_EQ(job["rt"], 5);
    EXPECT_EQ(job["cet"], 0);
    EXPECT_EQ(job["start"], nullptr);
    EXPECT_EQ(job["ipt"], nullptr);
}

// A semaphore that an interrupt gives is no lock; waiting for it does not end a job, unless the
// task shows nothing else, or the rules say so.
TEST(Timing, WhereJobsEndFollowsFromTheTaskOrTheRules) {
    const std::string log =
        "[0] dispatch to task 1.\n[1] enter to wai_sem semid=1.\n[1] task 1 becomes WAITING.\n"
        "[1] dispatch from task 1.\n[5] enter to int handler 1.\n[5] enter to isig_sem semid=1.\n"
        "[5] task 1 becomes RUNNABLE.\n[5] leave from isig_sem ercd=0.\n"
        "[5] leave from int handler 1.\n[5] dispatch to task 1.\n[6] leave from wai_sem ercd=0.\n"
        "[8] enter to wai_sem semid=1.\n[8] task 1 becomes WAITING.\n[8] dispatch from task 1.\n"
        "[20] enter to int handler 1.\n[20] enter to isig_sem semid=1.\n"
        "[20] task 1 becomes RUNNABLE.\n[20] leave from isig_sem ercd=0.\n"
        "[20] leave from int handler 1.\n[20] dispatch to task 1.\n[21] leave from wai_sem "
        "ercd=0.\n";
    TimingRun alone(log + "[30] dispatch from task 1.\n");
    ASSERT_EQ(alone.Jobs("1").size(), 3u);
    EXPECT_EQ(alone.Jobs("1")[1]["ends_in"], "SEM");
    const std::string sleeps =
        "[30] enter to slp_tsk.\n[30] task 1 becomes WAITING.\n[30] dispatch from task 1.\n";
    TimingRun sleeping(log + sleeps);
    EXPECT_EQ(sleeping.Jobs("1").size(), 1u);
    const auto rules =
        sleeping.Write("r.toml", "[task.\"task 1\"]\njob_ends_at = [\"wai_sem\", \"SLP\"]\n");
    EXPECT_EQ(sleeping.Table("jobs", {"--task", "1", "--rules", rules}).size(), 3u);
}

}  // namespace
}  // namespace kvx::test
