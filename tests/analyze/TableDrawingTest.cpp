// The three tables as recorded drawing, without a window.

#include "analyze/AnalyzeColumns.h"
#include "analyze/AnalyzeTrace.h"
#include "analyze/TablePainter.h"
#include "core/CoreFixture.h"
#include "platform/Backend.h"
#include "platform/base/SystemInfo.h"
#include "support/GoldenText.h"
#include "support/RecordingGraphics.h"

namespace kvx::test {
namespace {

// Without a back-end system colours are the classic ones.
class TableDrawing : public testing::Test {
  protected:
    TableDrawing() : previous_(InstalledBackend()), core_(AnalyzeTrace(3)) {
        SetBackend(nullptr);
        core_.data.engine.Open(&core_.view);
        core_.SetRange(0, core_.service.Decoded() - 1);
        columns_.SetCharWidth(kCharWidth);
        columns_.LayOut();
        geometry_.rowHeight = kCharHeight;
        geometry_.charWidth = kCharWidth;
        geometry_.visibleRows = 2;
    }
    ~TableDrawing() override { SetBackend(previous_); }

    // From the given row on.
    std::string Drawn(EAnalysis table, int first = 0) {
        RecordingGraphics graphics;
        CDC dc(&graphics);
        dc.SetTextColor(GetSysColor(COLOR_WINDOWTEXT));
        dc.SetBkColor(GetSysColor(COLOR_WINDOW));
        CHeaderCellPainter painter;
        geometry_.firstRow = first;
        const SharedAnalysis& analysis = core_.data.Table(table);
        const bool shown = core_.data.engine.IsValid() && analysis.IsReadable();
        table::DrawTable(dc, painter, geometry_, columns_[table], shown ? &analysis : nullptr,
                         core_.data.colors[EColor::Run]);
        return graphics.Text();
    }
    static int Count(const std::string& text, const std::string& part) {
        int count = 0;
        for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
            ++count;
        }
        return count;
    }

  private:
    IBackend* previous_;

  protected:
    Core core_;
    AnalyzeColumns columns_;
    table::Geometry geometry_;
};

TEST_F(TableDrawing, RunTimeFromTheTop) {
    // On the event of the control task's longest and shortest run, which are the same.
    core_.data.markers.SetMarker(nullptr, kMarkerIndicator, 3);
    ExpectGolden("analyze/run-time.txt", Drawn(EAnalysis::RunTime));
}

// The hatched bar of idle, the unknown context, and a row below the last.
TEST_F(TableDrawing, RunTimeScrolled) {
    ExpectGolden("analyze/run-time-scrolled.txt", Drawn(EAnalysis::RunTime, 3));
}

TEST_F(TableDrawing, ReadyToRun) {
    core_.data.rdyToRun.Sort(CRdyToRunAnalysis::Max, 0);
    core_.data.rdyToRun.Sort(CRdyToRunAnalysis::Max, 0);
    ExpectGolden("analyze/rdy-run.txt", Drawn(EAnalysis::RdyToRun));
}

TEST_F(TableDrawing, SystemCallWithTheIndicatorOnOne) {
    core_.data.markers.SetMarker(nullptr, kMarkerIndicator, kEventsPerPeriod + kCallOfPeriod);
    ExpectGolden("analyze/system-call.txt", Drawn(EAnalysis::SysCall));
}

TEST_F(TableDrawing, TitlesAloneWithoutATraceOrItsService) {
    // A title is five rectangles and a text twice; the bars' has no text. The font comes once.
    const auto isTitles = [&](EAnalysis table, int titles, int empty) {
        return Count(Drawn(table), "\n") == 1 + 7 * titles + 5 * empty;
    };
    EXPECT_FALSE(isTitles(EAnalysis::SysCall, 5, 0));
    core_.host.services.clear();
    EXPECT_TRUE(isTitles(EAnalysis::SysCall, 5, 0));
    core_.host.Offer(core_.service);
    core_.data.engine.Clear(&core_.view, 0);
    EXPECT_TRUE(isTitles(EAnalysis::RunTime, 10, 1));
    EXPECT_TRUE(isTitles(EAnalysis::RdyToRun, 6, 0));
    EXPECT_TRUE(isTitles(EAnalysis::SysCall, 5, 0));
}

TEST_F(TableDrawing, RatioFromNothingToTheWholeColumn) {
    CRunTime* const control = core_.data.runTime.Find(kControlLine);
    const auto bar = [&](double ratio) {
        control->Ratio = ratio;
        const std::string drawn = Drawn(EAnalysis::RunTime);
        const auto& column = columns_[EAnalysis::RunTime][CRunTimeAnalysis::Bar];
        // Row 1: from 36 to 44, in black.
        const auto at = drawn.find(FormatText("fill %d 36 ", column.left));
        if (at == std::string::npos) return std::string();
        return drawn.substr(at, drawn.find('\n', at) - at);
    };
    const auto& column = columns_[EAnalysis::RunTime][CRunTimeAnalysis::Bar];
    EXPECT_EQ(bar(1.0), FormatText("fill %d 36 %d 44 #000000", column.left, column.right));
    EXPECT_EQ(bar(0.0), "");
    const int width = column.right - column.left;
    EXPECT_EQ(bar(0.999), FormatText("fill %d 36 %d 44 #000000", column.left,
                                     column.left + static_cast<int>(width * 0.999)));
}

// One row more than those that fit, whatever the size; and nothing is asked about any other.
TEST_F(TableDrawing, AsksForTheRowsShownAlone) {
    core_.service.Load(AnalyzeTrace(1000));
    core_.service.DecodeAll();
    core_.data.engine.Open(&core_.view);
    core_.SetRange(0, core_.service.Decoded() - 1);
    ASSERT_EQ(core_.data.sysCalls.RowCount(), 1000);
    for (const int visible : {0, 2, 30}) {
        geometry_.visibleRows = visible;
        core_.service.reads = 0;
        const std::string drawn = Drawn(EAnalysis::SysCall, 500);
        // Number, name, two parameter texts and time of each; and once the indicator's entry.
        EXPECT_EQ(core_.service.reads, 5u * (static_cast<unsigned>(visible) + 1u) + 1u) << visible;
        EXPECT_EQ(Count(drawn, "\"ercd=0\" #000000"), visible + 1);
    }
}

}  // namespace
}  // namespace kvx::test
