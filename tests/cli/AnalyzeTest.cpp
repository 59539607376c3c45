#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "support/Needs.h"
#include "workbench/cli/SubCommands.h"

namespace kvx::cli {

namespace {

class Analyze : public testing::Test {
  protected:
    Analyze() {
        std::filesystem::create_directories(folder);
        std::ofstream(log) << "[10] task 1 becomes RUNNABLE.\n"
                              "[20] dispatch to task 1.\n"
                              "[22] enter to sig_sem semid=1.\n"
                              "[25] leave from sig_sem ercd=0.\n"
                              "[30] enter to int handler 5.\n"
                              "[40] leave from int handler 5.\n"
                              "[45] enter to wai_sem semid=2.\n"
                              "[50] task 1 becomes WAITING.\n"
                              "[50] dispatch from task 1.\n"
                              "[70] dispatch to task 2.\n"
                              "[110] applog str : ID 1 : end.\n"
                              "[110] dispatch from task 2.\n";
    }
    ~Analyze() override { std::filesystem::remove_all(folder); }

    int Run(std::vector<std::string> arguments) {
        out.str("");
        error.str("");
        std::vector<const char*> all = {"kvxostrace", "analyze"};
        for (const std::string& argument : arguments) all.push_back(argument.c_str());
        return RunSubCommand(static_cast<int>(all.size()), all.data(), {out, error});
    }
    nlohmann::json Json(std::vector<std::string> arguments) {
        arguments.push_back("--json");
        EXPECT_EQ(Run(arguments), kExitDone) << error.str();
        return nlohmann::json::parse(out.str());
    }

    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("kvx_analyze_" + std::to_string(getpid()));
    const std::string log = (folder / "small.log").string();
    std::ostringstream out;
    std::ostringstream error;
};

TEST_F(Analyze, WritesAlignedTables) {
    EXPECT_EQ(Run({log, "--table", "rdy-run"}), kExitDone);
    EXPECT_EQ(out.str(),
              "Mark: 00:00:00.000.010 - 00:00:00.000.110 = 00:00:00.000.100\n"
              "\n"
              "Rdy->Run\n"
              "ID  (name)  Num               Max               Min               Avg\n"
              " 1  task 1    2  00:00:00.000.010  00:00:00.000.010  00:00:00.000.010\n"
              " 2  task 2    1  00:00:00.000.000  00:00:00.000.000  00:00:00.000.000\n");
    EXPECT_EQ(Run({log, "--table", "syscalls", "--sort", "name:desc"}), kExitDone);
    EXPECT_NE(out.str().find("\nNo  System Call  Parameter  Return Parameter              TIME\n"
                             " 2  wai_sem      semid=2                      00:00:00.000.045\n"
                             " 1  sig_sem      semid=1    ercd=0            00:00:00.000.022\n"),
              std::string::npos)
        << out.str();
}

TEST_F(Analyze, GivesCountsAsJson) {
    const auto all = Json({log});
    EXPECT_EQ(all["range"], (nlohmann::json{{"start", 10}, {"end", 110}}));
    double covered = 0;
    std::map<int, int> totals;
    for (const auto& row : all["run_time"]) {
        covered += row["ratio"].get<double>();
        if (row["type"] == 2) totals[row["number"]] = row["total"];
    }
    EXPECT_EQ(totals, (std::map<int, int>{{0, 20}, {1, 20}, {2, 40}}));
    EXPECT_NEAR(covered, 0.9, 1e-12);  // nobody is known to run from 10 to 20
    EXPECT_EQ(all["rdy_run"][0], (nlohmann::json{{"number", 1},
                                                 {"name", "task 1"},
                                                 {"num", 2},
                                                 {"measured", 2},
                                                 {"max", 10},
                                                 {"min", 10},
                                                 {"avg", 10.0},
                                                 {"total", 20}}));
    EXPECT_EQ(all["system_calls"][1], (nlohmann::json{{"no", 2},
                                                      {"name", "wai_sem"},
                                                      {"parameters", "semid=2"},
                                                      {"return", ""},
                                                      {"time", 45}}));
    EXPECT_EQ(Json({log, "--table", "syscalls"}).size(), 2u);
}

TEST_F(Analyze, MeasuresTheRangeItIsGiven) {
    const auto late = Json({log, "--start", "40", "--end", "80us"});
    EXPECT_EQ(late["range"], (nlohmann::json{{"start", 40}, {"end", 70}}));  // on events
    EXPECT_EQ(late["system_calls"].size(), 1u);
    EXPECT_EQ(Run({log, "--start", "60", "--end", "50"}), kExitUsage);
    EXPECT_EQ(Run({log, "--start", "51", "--end", "69"}), kExitUsage);
    EXPECT_EQ(error.str(), "kvxostrace: there is no event in the range\n");
    EXPECT_EQ(Run({log, "--end", "5"}), kExitUsage);
    EXPECT_EQ(Run({log, "--start", "1 parsec"}), kExitUsage);
}

// An end at time 0 is not taken for one that is still to come.
// The recording goes on after its last event.
TEST_F(Analyze, TheWholeRangeEndsWithTheRecording) {
    std::ofstream(log, std::ios::app) << "[300] applog str : ID 1 : nothing more.\n"
                                         "[310] task 2 becomes RUNNABLE.\n"
                                         "[320] dispatch to task 2.\n"
                                         "[400] applog str : ID 1 : still running.\n";
    const auto all = Json({log});
    EXPECT_EQ(all["range"], (nlohmann::json{{"start", 10}, {"end", 400}}));
    std::int64_t total = 0;
    for (const auto& row : all["run_time"])
        if (row["number"] == 2) total = row["total"];
    EXPECT_EQ(total, 40 + 80) << "the run that is open at the end counts to the end";
    int dispatches = 0;
    for (const auto& row : all["rdy_run"])
        if (row["number"] == 2) dispatches = row["num"];
    EXPECT_EQ(dispatches, 2) << "the last dispatch counts";
    EXPECT_EQ(Json({log, "--end", "320"})["range"], (nlohmann::json{{"start", 10}, {"end", 320}}));
}

// What the recording shows as a wait, a suspension or nothing at all is no ready time.
TEST_F(Analyze, MeasuresNoWaitForTheProcessorThatTheRecordingDoesNotTell) {
    const auto longest = [&](const char* text) {
        std::ofstream(log, std::ios::trunc) << text;
        const auto all = Json({log});
        for (const auto& row : all["rdy_run"])
            if (row["number"] == 1) return row["max"].get<std::int64_t>();
        return std::int64_t{-1};
    };
    EXPECT_EQ(longest("[1] dispatch to task 1.\n[5] enter to wai_sem semid=1.\n"
                      "[10] task 1 becomes WAITING.\n[10] dispatch from task 1.\n"
                      "[500] dispatch to task 1.\n[510] leave from wai_sem ercd=0.\n"),
              0)
        << "woken without a word";
    EXPECT_EQ(longest("[1] dispatch to task 1.\n[10] dispatch from task 1.\n"
                      "[20] task 1 becomes SUSPENDED.\n[500] dispatch to task 1.\n"
                      "[510] dispatch from task 1.\n"),
              0)
        << "suspended after it lost the processor";
    EXPECT_EQ(longest("[1] dispatch to task 1.\n[10] dispatch from task 1.\n"
                      "[30] dispatch to task 1.\n[40] dispatch from task 1.\n"),
              20);
}

TEST_F(Analyze, ShowsEveryProcessorWhereAllAreAskedFor) {
    std::ofstream(log, std::ios::trunc) << "[10]:[1]: dispatch to task 1.\n"
                                           "[20]:[2]: dispatch to task 2.\n"
                                           "[40]:[1]: dispatch from task 1.\n"
                                           "[90]:[2]: dispatch from task 2.\n";
    const auto all = Json({log, "--cpu", "all"})["processors"];
    ASSERT_EQ(all.size(), 2u);
    for (const int processor : {1, 2}) {
        auto one = Json({log, "--cpu", std::to_string(processor)});
        EXPECT_EQ(all[static_cast<std::size_t>(processor - 1)]["processor"], processor);
        one["processor"] = processor;
        EXPECT_EQ(all[static_cast<std::size_t>(processor - 1)], one);
    }
    EXPECT_EQ(Json({log, "--cpu", "all", "--start", "50"})["processors"].size(), 1u)
        << "processor 1 has no event then";
    EXPECT_NE(error.str().find("processor 1: there is no event in the range"), std::string::npos);
    EXPECT_EQ(Run({log, "--cpu", "all", "--table", "run-time", "--csv", "-"}), kExitUsage);
    EXPECT_EQ(Run({log, "--cpu", "both"}), kExitUsage);
}

TEST_F(Analyze, CountsRunsThatEndAtTimeZeroOnce) {
    std::ofstream(log)
        << "[0] dispatch to task 1.\n[0] dispatch to task 2.\n"
           "[0] dispatch to task 3.\n[60] dispatch to task 2.\n[80] dispatch to task 3.\n";
    std::map<int, double> ratios;
    const auto all = Json({log});
    for (const auto& row : all["run_time"])
        if (row["num"] > 0) ratios[row["number"]] = row["ratio"];
    EXPECT_EQ(ratios, (std::map<int, double>{{2, 0.25}, {3, 0.75}}));
}

TEST_F(Analyze, WritesCsvToAFileAsToTheStream) {
    EXPECT_EQ(Run({log, "--table", "run-time", "--sort", "total:desc", "--csv", "-"}), kExitDone);
    const std::string streamed = out.str();
    EXPECT_TRUE(
        streamed.starts_with("VEC,table,ID,(name),Num,Max,Min,Avg,Total,Ratio %\r\n"
                             ",,2,task 2,1,00:00:00.000.040,"))
        << streamed;
    const std::string path = (folder / "table.csv").string();
    EXPECT_EQ(Run({log, "--table", "run-time", "--sort", "total:desc", "--csv", path}), kExitDone);
    EXPECT_EQ(out.str(), "");
    std::ostringstream written;
    written << std::ifstream(path, std::ios::binary).rdbuf();
    EXPECT_EQ(written.str(), streamed);

    EXPECT_EQ(Run({log, "--csv", path}), kExitUsage);  // which table?
    EXPECT_EQ(Run({log, "--table", "run-time", "--csv", path, "--json"}), kExitUsage);
    EXPECT_EQ(Run({log, "--table", "run-time", "--csv", "/nowhere/x.csv"}), kExitFailed);
    EXPECT_EQ(error.str(),
              "kvxostrace: /nowhere/x.csv: cannot be opened: No such file or directory\n");
    if (!std::filesystem::exists("/dev/full")) KVX_SKIP("no /dev/full on this system");
    EXPECT_EQ(Run({log, "--table", "run-time", "--csv", "/dev/full"}), kExitFailed);
    EXPECT_EQ(error.str(), "kvxostrace: /dev/full: cannot be written: No space left on device\n");
}

TEST_F(Analyze, SaysWhatIsWrong) {
    EXPECT_EQ(Run({log, "--sort", "weight"}), kExitUsage);
    EXPECT_NE(error.str().find("there is no column 'weight'; there are vec table"),
              std::string::npos);
    EXPECT_EQ(Run({log, "--sort", "total:down"}), kExitUsage);
    EXPECT_EQ(Run({log, "--table", "chairs"}), kExitUsage);
    EXPECT_EQ(Run({(folder / "none.log").string()}), kExitUnreadable);
    std::ofstream(log, std::ios::app)
        << "[120] enter to int handler 5.\n[121] dispatch to task 1.\n";
    EXPECT_EQ(Run({log}), kExitDone);
    EXPECT_EQ(Run({log, "--strict"}), kExitLosses);
}

}  // namespace

}  // namespace kvx::cli
