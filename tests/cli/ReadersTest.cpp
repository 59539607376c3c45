// The real service read by its plain operations and by its columns.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "core/ChartRaster.h"
#include "trace/EventReader.h"
#include "trace/TraceData.h"
#include "traceview/model/ChartSource.h"
#include "workbench/cli/RecordingSource.h"
#include "workbench/formats/OpenRecording.h"
#include "workbench/simulation/Generate.h"

namespace kvx::cli {

namespace {

class Readers : public testing::Test {
  protected:
    Readers() {
        std::filesystem::create_directories(folder);
        const std::string log = (folder / "generated.log").string();
        EXPECT_EQ(simulation::GenerateFiles({30000, 7}, log), "");
        auto recording = formats::OpenRecording(log);
        if (recording) service.SetRecording(std::move(*recording));
    }
    ~Readers() override { std::filesystem::remove_all(folder); }

    void Open() {
        int advanced = 0;
        ASSERT_EQ(data.engine.Open(nullptr), 1);
        data.engine.AnalyzeUpTo(nullptr, 1e18, &advanced);
        data.contexts.Load();
        ASSERT_GT(data.contexts.GetCount(), 5);
    }

    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("kvx_readers_" + std::to_string(getpid()));
    service::TraceService service;
    RecordingSource source{service};
    COSTraceData data{source};
};

TEST_F(Readers, SeeTheSameEvents) {
    Open();
    service.MoveContext(0, 3);
    host::OSTraceColumns columns;
    ASSERT_GE(service.GetColumns(&columns), 0);
    const PlainEvents plain(service);
    const ColumnEvents fast(columns);
    ASSERT_EQ(plain.Count(), fast.Count());
    ASSERT_GT(plain.Count(), 10000u);
    for (std::uint32_t e = 0; e < plain.Count(); ++e) {
        ASSERT_EQ(plain.Kind(e), fast.Kind(e)) << e;
        EXPECT_EQ(plain.Time(e), fast.Time(e)) << e;
        EXPECT_EQ(plain.Context(e), fast.Context(e)) << e;
        if (plain.Kind(e) == kEventSysCall) continue;
        EXPECT_EQ(plain.EndTime(e), fast.EndTime(e)) << e;
        if (plain.Kind(e) == kEventDispatch) {
            EXPECT_EQ(plain.Next(e), fast.Next(e)) << e;
            continue;
        }
        EXPECT_EQ(plain.State(e), fast.State(e)) << e;
        EXPECT_EQ(plain.StateContext(e), fast.StateContext(e)) << e;
    }
}

TEST_F(Readers, OfTwoRecordingsInOneProcess) {
    Open();
    const std::string log = (folder / "second.log").string();
    ASSERT_EQ(simulation::GenerateFiles({400, 8}, log), "");
    auto recording = formats::OpenRecording(log);
    ASSERT_TRUE(recording);
    service::TraceService second;
    second.SetRecording(std::move(*recording));
    RecordingSource from{second};
    COSTraceData other{from};
    ASSERT_EQ(other.engine.Open(nullptr), 1);
    other.contexts.Load();
    for (COSTraceData* const each : {&data, &other}) {
        each->markers.MoveStartIntoDisplay(nullptr, 0);
        each->markers.MoveEndIntoDisplay(nullptr, 1e18);
    }
    EXPECT_GT(data.sysCalls.EntryCount(), 20 * other.sysCalls.EntryCount());
    EXPECT_GT(other.sysCalls.EntryCount(), 10);
}

TEST_F(Readers, DrawTheSameChart) {
    Open();
    double start = 0, end = 0, analysed = 0;
    data.engine.GetTimes(&start, &end, &analysed);
    host::OSTraceColumns columns;
    ASSERT_GE(service.GetColumns(&columns), 0);
    for (const double scale : {1.0, 2.5, 40.0, 900.0}) {
        ChartGeometry g;
        g.left = 200;
        g.right = 900;
        g.traceStart = start;
        g.traceEnd = end;
        g.scale = scale;
        g.displayStart = start + (end - start) * (scale > 1 ? 0.37 : 0.0);
        g.displayEnd = g.displayStart + (end - start) / scale;
        g.lineHeight = 16;
        g.charWidth = 8;
        g.lineCount = data.contexts.GetCount();
        g.firstLine = 1;
        g.visibleLines = g.lineCount - 3;
        g.clientHeight = 600;
        ChartItems walked;
        ChartItems searched;
        WalkChart(service, g, data.engine, data.contexts, walked);
        SearchChart(columns, g, data.engine, data.contexts, searched);
        EXPECT_FALSE(walked.empty());
        test::ChartRaster plain(g, false);
        test::ChartRaster fast(g, false);
        plain.Draw(walked);
        fast.Draw(searched);
        EXPECT_TRUE(plain == fast) << scale;
    }
}

}  // namespace

}  // namespace kvx::cli
