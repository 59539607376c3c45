// Rules files: what they say, what is wrong with them, and what a recording does to them.

#include <gmock/gmock.h>

#include "timing/TimingRun.h"
#include "workbench/simulation/Generate.h"

namespace kvx::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;

// Handler 1 starts task 1 at 10, 110 and 230; each time it runs 20, waits 5 for a mutex and wakes
// task 2, which runs 10.
class Rules : public testing::Test {
  protected:
    static std::string Log() {
        std::string log = "[0] task 1 becomes DORMANT.\n[0] task 2 becomes DORMANT.\n";
        for (const int at : {10, 110, 230}) {
            const auto line = [&](int after, const char* message) {
                log += "[" + std::to_string(at + after) + "] " + message + ".\n";
            };
            line(0, "enter to int handler 1");
            line(0, "enter to iact_tsk tskid=1");
            line(0, "task 1 becomes RUNNABLE");
            line(0, "leave from iact_tsk ercd=0");
            line(2, "leave from int handler 1");
            line(2, "dispatch to task 1");
            line(12, "enter to act_tsk tskid=2");
            line(12, "task 2 becomes RUNNABLE");
            line(12, "leave from act_tsk ercd=0");
            line(22, "enter to ext_tsk");
            line(22, "task 1 becomes DORMANT");
            line(22, "dispatch to task 2");
            line(32, "enter to ext_tsk");
            line(32, "task 2 becomes DORMANT");
            line(32, "dispatch from task 2");
        }
        return log + "[400] enter to int handler 1.\n[402] leave from int handler 1.\n";
    }

    json Check(const std::string& rules, std::vector<std::string> arguments = {}) {
        arguments.insert(arguments.begin(), {"--rules", run_.Write("r.toml", rules)});
        status_ = run_.Run("check", arguments);
        arguments.emplace_back("--json");
        run_.Run("check", arguments);
        return json::parse(run_.Out(), nullptr, false);
    }
    // The one violation there is: rule and measured.
    std::string Violation(const std::string& rules) {
        const auto found = Check(rules)["violations"];
        EXPECT_EQ(found.size(), 1u) << found;
        EXPECT_EQ(status_, cli::kExitViolated);
        return found.empty()
                   ? ""
                   : found[0]["rule"].get<std::string>() + " " + found[0]["measured"].dump();
    }
    void Holds(const std::string& rules) {
        EXPECT_EQ(Check(rules)["violations"].size(), 0u) << rules;
        EXPECT_EQ(status_, cli::kExitDone);
    }
    std::string ErrorOf(const std::string& rules) {
        EXPECT_EQ(run_.Run("check", {"--rules", run_.Write("r.toml", rules)}), cli::kExitUsage);
        return run_.Error();
    }

    TimingRun run_{Log()};
    int status_ = 0;
};

TEST_F(Rules, EachMaximumIsViolatedAboveIt) {
    const std::string task = "[task.\"task 1\"]\n";
    Holds(task + "deadline = 22\ncet = 20\nipt = 2\nblocked = 0\nperiod = 110\njitter = 10\n");
    EXPECT_EQ(Check(task + "deadline = 21\n")["violations"].size(), 3u);
    EXPECT_EQ(Check(task + "cet = \"19us\"\n")["violations"].size(), 3u);
    EXPECT_EQ(Check(task + "ipt = \"0.001ms\"\n")["violations"].size(), 3u);
    EXPECT_EQ(Check(task + "deadline = 21\n")["violations"][0]["kind"], "late_job");
    EXPECT_EQ(Check(task + "period = 100\njitter = 10\n")["violations"].size(), 1u);
    EXPECT_EQ(Violation(task + "period = 100\njitter = 19\n"), "task.task 1.period 20");
    EXPECT_EQ(Check("[handler.\"int handler 1\"]\ncet = 1\n")["violations"].size(), 4u);
    EXPECT_EQ(Check("[handler.\"int handler 1\"]\ncet = 1\n")["rules"][0]["examined"], 4);
}

TEST_F(Rules, LoadIsThatOfTheBusiestStretch) {
    Holds("[cpu]\nload = 1.0\nwindow = 32\n");
    EXPECT_EQ(Violation("[cpu]\nload = \"99 %\"\nwindow = 32\n"), "cpu.load 1");
    Holds("[cpu]\nload = 0.5\nwindow = 64\n");
    EXPECT_EQ(Violation("[cpu]\nload = 0.49\nwindow = 64\n"), "cpu.load 0.5");
}

TEST_F(Rules, AChainGoesFromTheFirstActivationToTheLastEnd) {
    const std::string path = "path = [\"int handler 1\", \"task 1\", \"task 2\"]\n";
    Holds("[chain.x]\n" + path + "max = 32\n");
    const auto checked = Check("[chain.x]\n" + path + "max = 31\n");
    EXPECT_EQ(checked["violations"].size(), 3u);
    EXPECT_EQ(checked["violations"][0]["measured"], 32);
    EXPECT_EQ(checked["rules"][0]["open"], 1) << "the last interrupt starts nothing";
    EXPECT_EQ(checked["rules"][0]["examined"], 3);
    const auto other = Check("[chain.x]\npath = [\"task 2\", \"task 1\"]\nmax = 1\n");
    EXPECT_EQ(other["rules"][0]["open"], 3);
}

TEST_F(Rules, AcceptedFindingsAreCountedAndHidden) {
    const auto checked = Check(
        "[task.\"task 1\"]\ncet = 19\n[[accept]]\nkind = \"cet\"\ncontexts = [\"task 1\"]\n"
        "reason = \"will be shorter\"\n");
    EXPECT_EQ(checked["violations"].size(), 0u);
    EXPECT_EQ(checked["accepted"], 3);
    EXPECT_EQ(status_, cli::kExitDone);
}

TEST_F(Rules, WhatIsWrongIsToldWithItsPlace) {
    const auto error = ErrorOf(
        "[task.\"task 1\"]\ndeadlin = 5\ncet = \"5 parsecs\"\n\n[task.nobody]\n[cpu]\nload = 7\n"
        "window = 5\n[[accept]]\nkind = \"noise\"\nreason = \"x\"\n");
    for (const char* part : {"r.toml:2:1: 'deadlin' is not known here", "r.toml:3:7: '5 parsecs'",
                             "r.toml:5:7: there is no task 'nobody'", "r.toml:7:8: a share",
                             "r.toml:10:8: a kind of finding"})
        EXPECT_THAT(error, HasSubstr(part));
    EXPECT_THAT(ErrorOf("[task\n"), HasSubstr("r.toml:1:"));
    for (const char* letter : {"\xC3\xB6", "\xC5\xA9", "\xE5\x91\xA8"})  // needs quotes
        EXPECT_THAT(ErrorOf("[task." + std::string(letter) + "]\n"), HasSubstr("r.toml:1:7: "));
    EXPECT_THAT(ErrorOf("[handler.\"int handler 1\"]\njob_ends_at = [\"SEM\"]\n"),
                HasSubstr("r.toml:2:1"));
    EXPECT_THAT(ErrorOf("[task.\"task 1\"]\njob_ends_at = [\"XYZ\"]\n"), HasSubstr("r.toml:2:16"));
    EXPECT_THAT(ErrorOf("[task.\"task 1\"]\njitter = 5\n"), HasSubstr("jitter needs a period"));
    EXPECT_EQ(run_.Run("check", {"--rules", "/nowhere/r.toml"}), cli::kExitUsage);
    EXPECT_THAT(run_.Error(), HasSubstr("No such file"));
    EXPECT_EQ(run_.Run("check", {"--fail-on", "noise"}), cli::kExitUsage);
}

TEST_F(Rules, SuggestedRulesHoldForTheirRecordingAndHaveAFifthToSpare) {
    ASSERT_EQ(run_.Run("check", {"--suggest"}), 0);
    const auto suggested = run_.Out();
    EXPECT_THAT(suggested, HasSubstr("[task.\"task 1\"]\ndeadline = \"27us\"\ncet = \"24us\"\n"));
    Holds(suggested);
}

TEST_F(Rules, ABuildServerSeesEachRuleAsATestCase) {
    const auto report = run_.Write("report.xml", "");
    Check("[task.\"task 1\"]\ncet = 19\ndeadline = 100\n",
          {"--junit", report, "--fail-on", "deadlock"});
    std::ifstream file(report);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    EXPECT_THAT(text, HasSubstr("tests=\"3\" failures=\"1\""));
    EXPECT_THAT(text, HasSubstr("classname=\"task.task 1\" name=\"deadline\"/>"));
    EXPECT_THAT(text, HasSubstr("<failure message=\"task 1 job 1 ran 20 us, longer"));
    EXPECT_EQ(run_.Run("check", {"--junit", "/nowhere/x.xml"}), cli::kExitFailed);
}

// A violated rule comes before what was lost.
TEST_F(Rules, ViolationsComeBeforeLosses) {
    TimingRun lossy(Log() + "[500] enter to wai_sem semid\n[501] dispatch to nobody.\n");
    const auto rules = lossy.Write("r.toml", "[task.\"task 1\"]\ncet = 19\n");
    EXPECT_EQ(lossy.Run("check", {"--strict"}), cli::kExitLosses);
    EXPECT_EQ(lossy.Run("check", {"--strict", "--rules", rules}), cli::kExitViolated);
}

TEST(Demonstration, ItsMissedDeadlineIsFoundAndExplained) {
    const TempFolder folder;
    const auto log = folder.Path("drive.log");
    ASSERT_EQ(simulation::WriteDemonstration(log), "");
    std::ifstream file(log);
    TimingRun run(std::string{std::istreambuf_iterator<char>(file), {}});
    std::ifstream resources(simulation::ResourcePath(log));
    run.Write("x.res", std::string{std::istreambuf_iterator<char>(resources), {}});
    const std::string rules = std::string(std::getenv("KVX_SOURCE_DIR")) + "/examples/drive.toml";
    EXPECT_EQ(run.Run("check", {"--rules", rules}), cli::kExitViolated);
    const auto findings = run.Json("check", {"--rules", rules})["findings"];
    EXPECT_EQ(findings[0]["kind"], "priority_inversion");
    EXPECT_THAT(
        run.Json("explain", {"--task", "MOTOR_CTRL", "--rules", rules})["sentence"]
            .get<std::string>(),
        testing::MatchesRegex("MOTOR_CTRL job [0-9]+ took .* \\(deadline 10 ms\\): it ran .* "
                              "and was blocked .* on semaphore 1 held by LOGGER, which itself "
                              "stood ready for .* while PATH_PLAN ran: priority inversion\\."));
}

TEST(Compare, RatiosFindingsAndConditions) {
    TimingRun run(
        "[0] task 1 becomes DORMANT.\n[1] task 1 becomes RUNNABLE.\n[1] dispatch to task 1.\n"
        "[11] enter to ext_tsk.\n[11] task 1 becomes DORMANT.\n[11] dispatch from task 1.\n"
        "[100] dispatch to task 2.\n");
    const auto slower = run.Write(
        "y.log",
        "[0] task 1 becomes DORMANT.\n[1] task 1 becomes RUNNABLE.\n[1] dispatch to task 1.\n"
        "[2] enter to pol_sem semid=1.\n[3] leave from pol_sem ercd=-50.\n"
        "[16] enter to ext_tsk.\n[16] task 1 becomes DORMANT.\n[16] dispatch from task 1.\n"
        "[100] dispatch to task 3.\n");
    const auto compared = run.Json("compare", {slower});
    json task;
    for (const auto& context : compared["contexts"])
        if (context["context"] == "task 1") task = context;
    EXPECT_EQ(task["rt"]["max"], json({{"old", 10000.0}, {"new", 15000.0}, {"ratio", 1.5}}));
    EXPECT_EQ(compared["new_contexts"], json({"task 3"}));
    EXPECT_EQ(compared["missing_contexts"], json({"task 2"}));
    EXPECT_EQ(compared["new_findings"][0]["kind"], "call_errors");
    const auto status = [&](const char* condition) {
        return run.Run("compare", {slower, "--fail-if", condition});
    };
    EXPECT_EQ(status("rt.max > 1.4"), cli::kExitViolated);
    EXPECT_EQ(status("rt.max > 1.5"), cli::kExitDone);
    EXPECT_EQ(status("rt.max >= 1.5"), cli::kExitViolated);
    EXPECT_EQ(status("task 2:rt.max > 0"), cli::kExitDone);
    EXPECT_EQ(status("task 1:load > 1.2"), cli::kExitViolated);
    EXPECT_EQ(status("jobs != 1"), cli::kExitDone);
    for (const char* wrong :
         {"rt > 1", "rt.avg > 1", "rt.max", "rt.max > x", "load.max > 1", "rt.max => 1"})
        EXPECT_EQ(status(wrong), cli::kExitUsage) << wrong;
}

}  // namespace
}  // namespace kvx::test
