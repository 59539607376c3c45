#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "analyze/model/CsvWriter.h"
#include "core/CoreFixture.h"
#include "support/Needs.h"

namespace kvx::test {

namespace {

class Csv : public testing::Test {
  protected:
    Csv() : core(Trace()) {
        path = std::filesystem::temp_directory_path() / ("kvx_csv_" + std::to_string(getpid()));
        core.SetRange(0, core.service.Decoded() - 1);
    }
    ~Csv() override { std::filesystem::remove(path); }

    static ScriptedTrace Trace() {
        ScriptedTrace trace;
        const auto handler = trace.AddHandler(9, "IRQ, fast", 0xBEEF);
        const auto task = trace.AddTask(1234567, std::string(" é") + std::string(300, 'x'));
        const auto idle = trace.AddIdle();
        trace.State(10, task, 1);
        trace.Dispatch(20, idle, task);
        trace.Call(25, task, 4, {"wai_sem", "semid=1, tmout=10", "ercd=0"});
        trace.Dispatch(30, task, handler);
        trace.Call(35, handler, 4, {"isig_sem", "\tsemid=1", ""});
        trace.Dispatch(40, handler, idle);
        trace.State(110, task, 3);
        return trace;
    }
    std::string Written(EAnalysis table) {
        EXPECT_EQ(CCsvWriter(core.data.Table(table)).Write(path.string()), 1);
        std::ifstream file(path, std::ios::binary);
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }

    Core core;
    std::filesystem::path path;
};

TEST_F(Csv, RunTimeAsShownAndSorted) {
    const std::string name = "é" + std::string(254, 'x');
    core.data.runTime.Sort(CRunTimeAnalysis::Num, 0);  // equal counts: the order stays
    EXPECT_EQ(Written(EAnalysis::RunTime),
              "VEC,table,ID,(name),Num,Max,Min,Avg,Total,Ratio %\r\n"
              "9,00BEEF,,IRQ, fast,1,10,10,10,10,10.00\r\n"
              ",,12345," +
                  name +
                  ",1,10,10,10,10,10.00\r\n"
                  ",,,Idle,1,70,70,70,70,70.00\r\n");
    core.data.runTime.Sort(CRunTimeAnalysis::Total, 0);
    core.data.runTime.Sort(CRunTimeAnalysis::Total, 0);
    const std::string sorted = Written(EAnalysis::RunTime);
    EXPECT_LT(sorted.find("Idle"), sorted.find("IRQ"));
    core.SetRange(5, 6);  // the idle context alone
    EXPECT_NE(Written(EAnalysis::RunTime).find(",Idle,1,70,70,70,70,100.0\r\n"), std::string::npos);
}

TEST_F(Csv, ReadyToRun) {
    core.service.timeText = true;
    EXPECT_EQ(Written(EAnalysis::RdyToRun),
              "Id,(name),Num,Max,Min,Avg\r\n12345,é" + std::string(254, 'x') +
                  ",1,00:00:00.000.010,00:00:00.000.010,00:00:00.000.010\r\n");
}

TEST_F(Csv, SysCalls) {
    EXPECT_EQ(Written(EAnalysis::SysCall),
              "No,System Call,Parameter,Return Parameter,TIME\r\n"
              "1,wai_sem,semid=1, tmout=10,ercd=0,25\r\n"
              "2,isig_sem,semid=1,,35\r\n");
}

TEST_F(Csv, SaysWhetherOpeningOrWritingFailed) {
    const CCsvWriter writer(core.data.runTime);
    CCsvWriter::Failure failure;
    EXPECT_EQ(writer.Write("/nowhere/at/all.csv", &failure), 0);
    EXPECT_FALSE(failure.opened);
    EXPECT_EQ(failure.reason, "No such file or directory");
    EXPECT_EQ(writer.Write("/nowhere/at/all.csv"), 0);
    if (!std::filesystem::exists("/dev/full")) KVX_SKIP("no /dev/full on this system");
    EXPECT_EQ(writer.Write("/dev/full", &failure), 0);
    EXPECT_TRUE(failure.opened);
    EXPECT_EQ(failure.reason, "No space left on device");
}

}  // namespace

}  // namespace kvx::test
