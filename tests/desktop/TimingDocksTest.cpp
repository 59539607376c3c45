// The docks of findings and figures: over an analysis made of what a test says, and over the
// demonstration.

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <chrono>

#include "TestRecording.h"
#include "host/OSTraceRange.h"
#include "host/Services.h"
#include "workbench/desktop/QtText.h"
#include "workbench/desktop/Workbench.h"

namespace kvx::desktop {
namespace {

constexpr AnalysisColumn kColumns[] = {{"name", "Name", 10},
                                       {"size", "Size", 8, ValueKind::Number}};
constexpr AnalysisForm kForm = {"things", "things", "Things", kColumns};

// Row n is called "thing n" and is n * 7919 % count large.
class Things final : public Analysis {
  public:
    explicit Things(int count, CString name = "thing ") : count_(count), name_(std::move(name)) {}
    const AnalysisForm& Form() const override { return kForm; }
    int RowCount() const override { return count_; }
    CString Cell(int row, int column) const override {
        return column == 0 ? name_ + std::to_string(row) : std::to_string(Size(row));
    }
    std::int64_t SortNumber(int row, int) const override { return Size(row); }
    Members Values(int) const override { return {}; }
    std::uint64_t Revision() const override { return 0; }

  private:
    std::int64_t Size(int row) const { return std::int64_t{row} * 7919 % count_; }
    int count_;
    CString name_;
};

TEST(RowPicker, SortsAndFiltersInPieces) {
    const Things things(20000);
    RowPicker rows;
    rows.SetAnalysis(&things);
    while (!rows.Continue(std::chrono::milliseconds(5))) {
    }
    ASSERT_EQ(rows.Rows().size(), 20000u);
    EXPECT_EQ(rows.Rows()[7], 7);
    rows.SortBy(1, false);
    rows.Filter("THING 77");
    int pieces = 0;
    for (; !rows.Continue(std::chrono::milliseconds(0)) && pieces < 1000000; ++pieces) {
        EXPECT_EQ(rows.Rows().size(), 20000u) << "what is not finished is not shown";
        rows.Continue(std::chrono::milliseconds(1));
    }
    EXPECT_GT(pieces, 0);
    std::size_t expected = 0;
    for (int row = 0; row < things.RowCount(); ++row)
        expected += (things.Cell(row, 0) + "\n" + things.Cell(row, 1)).find("77") != CString::npos;
    ASSERT_EQ(rows.Rows().size(), expected);
    for (std::size_t i = 1; i < rows.Rows().size(); ++i)
        EXPECT_GE(things.SortNumber(rows.Rows()[i - 1], 1), things.SortNumber(rows.Rows()[i], 1));
    rows.Filter("thing 5 nothing");
    while (!rows.Continue(std::chrono::milliseconds(5))) {
    }
    EXPECT_TRUE(rows.Rows().empty()) << "every word must occur";
}

TEST(TableDock, FiltersCopiesAndTellsWhatIsSelected) {
    TableDock dock("Things", kForm, nullptr);
    std::vector<std::pair<int, int>> selected;
    dock.onSelected = [&](int row, int column) { selected.emplace_back(row, column); };
    dock.Say("Not yet.");
    EXPECT_FALSE(dock.View().isVisibleTo(&dock));
    dock.Show(std::make_shared<Things>(10));
    dock.show();
    EXPECT_TRUE(dock.View().isVisibleTo(&dock));
    dock.SetFilter("thing 3");
    ASSERT_EQ(dock.View().model()->rowCount(), 2) << "thing 3, and thing 7, which is 3 large";
    dock.Select(3);
    ASSERT_FALSE(selected.empty());
    EXPECT_EQ(selected.back().first, 3);
    dock.View().setFocus();
    QTest::keySequence(&dock.View(), QKeySequence::Copy);
    EXPECT_EQ(QApplication::clipboard()->text(), "Name\tSize\nthing 3\t7\n");
    dock.Select(4);
    EXPECT_EQ(selected.back().first, 3) << "it is filtered out";
    dock.SetFilter("");
    dock.View().sortByColumn(1, Qt::DescendingOrder);
    EXPECT_EQ(dock.View().model()->index(0, 1).data().toString(), "9");
}

// Nothing that stands in the first rows is cut off; what the user has set stays.
TEST(TableDock, ColumnsAreWideEnoughUntilTheUserSetsThem) {
    TableDock dock("Things", kForm, nullptr);
    QTableView& view = dock.View();
    dock.resize(900, 400);
    dock.show();
    const CString longName = "a thing with a name of some length ";
    dock.Show(std::make_shared<Things>(10, longName));
    EXPECT_GE(view.columnWidth(0), view.fontMetrics().horizontalAdvance(FromUtf8(longName + "9")));
    const int wide = view.columnWidth(0);
    dock.Say("Another recording.");
    dock.Show(std::make_shared<Things>(10));
    EXPECT_LT(view.columnWidth(0), wide);
    view.setColumnWidth(0, 33);
    dock.Say("Another recording.");
    dock.Show(std::make_shared<Things>(10));
    EXPECT_EQ(view.columnWidth(0), 33);
}

class Demonstration : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(workbench_.Start(QString::fromLocal8Bit(qgetenv("KVX_BIN_DIR"))), "");
        workbench_.Window().resize(1200, 800);
        workbench_.Window().show();
        ASSERT_TRUE(workbench_.OpenDemonstration());
        WaitForFacts();
    }
    void WaitForFacts() {
        for (int i = 0; i < 3000 && !workbench_.Timing().Facts(); ++i) QTest::qWait(10);
        ASSERT_NE(workbench_.Timing().Facts(), nullptr);
    }
    host::OSTracePosition Position() {
        auto* range = host::Service<host::IQOSTraceRange>(&workbench_.Host(), host::kOSTraceRange);
        host::OSTracePosition position;
        EXPECT_EQ(range->GetPosition(&position), S_OK);
        return position;
    }

    Settings settings_;
    Workbench workbench_{settings_};
};

TEST_F(Demonstration, OpensWithItsInversionExplained) {
    TimingDocks& docks = workbench_.Timing();
    EXPECT_TRUE(docks.Findings().isVisible());
    EXPECT_TRUE(docks.Explanation().isVisible());
    EXPECT_TRUE(docks.Explanation().Text().contains("priority inversion"))
        << docks.Explanation().Text().toStdString();
    const timing::Finding& first =
        static_cast<const FindingsTable*>(docks.Findings().Shown())->FindingOf(0);
    const host::OSTracePosition shown = Position();
    EXPECT_EQ(shown.startMarker, static_cast<double>(first.start));
    EXPECT_NEAR(shown.endMarker, static_cast<double>(first.end), 2000) << "it stands on an event";
    EXPECT_LT(shown.displayStart, shown.startMarker);
    EXPECT_GT(shown.displayEnd, shown.endMarker);
}

TEST_F(Demonstration, RowsOfTablesGoToTheirJobs) {
    TimingDocks& docks = workbench_.Timing();
    for (const char* name : {"timing", "jobs", "waits"}) {
        TableDock& table = docks.Table(name);
        ASSERT_GT(table.Shown()->RowCount(), 3) << name;
        table.show();
        const host::OSTracePosition before = Position();
        table.Select(2);
        EXPECT_TRUE(docks.Explanation().Text().contains(" took ") ||
                    docks.Explanation().Text().contains("job"))
            << name << docks.Explanation().Text().toStdString();
        EXPECT_FALSE(Position() == before) << name;
    }
}

TEST_F(Demonstration, OverviewShowsAndMovesWhatTheChartShows) {
    Overview& strip = workbench_.Timing().Strip();
    std::optional<std::pair<double, double>> wanted;
    const auto show = std::exchange(strip.onShow, [&](double start, double end) {
        wanted = {start, end};
    });
    QTest::qWait(50);  // the frame follows the chart's paint
    const host::OSTracePosition before = Position();
    QTest::keyClick(&strip, Qt::Key_Down);
    ASSERT_TRUE(wanted);
    EXPECT_NEAR(wanted->second - wanted->first, 2 * (before.displayEnd - before.displayStart), 2);
    strip.onShow = show;
    QTest::keyClick(&strip, Qt::Key_Up);
    const host::OSTracePosition narrow = Position();
    EXPECT_NEAR(narrow.displayEnd - narrow.displayStart,
                (before.displayEnd - before.displayStart) / 2, 2);
    EXPECT_EQ(narrow.startMarker, before.startMarker) << "markers stay";
    // A press far left brings the frame there.
    QTest::qWait(50);
    QTest::mouseClick(&strip, Qt::LeftButton, {}, {5, 20});
    EXPECT_LT(Position().displayStart, before.displayStart / 4);
}

// It is there from the first recording on, small, under the chart; hidden once it stays hidden.
TEST(OverviewDock, IsUnderTheChartUntilItIsHidden) {
    Settings settings;
    Workbench workbench{settings};
    ASSERT_EQ(workbench.Start(QString::fromLocal8Bit(qgetenv("KVX_BIN_DIR"))), "");
    QMainWindow& window = workbench.Window();
    window.resize(1000, 700);
    window.show();
    QTest::qWait(20);
    auto& dock = *static_cast<QDockWidget*>(workbench.Timing().Strip().parentWidget());
    EXPECT_FALSE(dock.isVisible()) << "without a recording";
    auto trace = std::make_unique<service::TraceService>();
    trace->SetRecording(std::make_unique<test::TestRecording>());
    ASSERT_TRUE(workbench.Show(std::move(trace)));
    QTest::qWait(20);
    EXPECT_TRUE(dock.isVisible());
    EXPECT_LT(dock.height(), window.height() / 5);
    EXPECT_GT(dock.y(), window.height() / 2);
    dock.toggleViewAction()->trigger();
    workbench.CloseRecording();
    ASSERT_TRUE(workbench.OpenDemonstration());
    for (int i = 0; i < 3000 && !workbench.Timing().Facts(); ++i) QTest::qWait(10);
    EXPECT_TRUE(workbench.Timing().Findings().isVisible());
    EXPECT_FALSE(dock.isVisible());
}

TEST(OverviewLoad, AddsUpWhatRanInEachSlice) {
    auto decoded = std::make_shared<service::DecodedRecording>(
        std::make_unique<test::TestRecording>(std::vector{0u}, 40100));
    decoded->WaitForAll();
    OverviewLoad load;
    load.SetRecording(decoded, 0);
    EXPECT_TRUE(load.Advance());
    EXPECT_FALSE(load.Advance()) << "there is no more";
    // Of three contexts that take turns every 10 counts one is the idle state.
    ASSERT_EQ(load.Shares().size(), 2u);
    double sum = 0;
    for (const auto& context : load.Shares())
        for (const float share : context) {
            EXPECT_GE(share, 0.0f);
            EXPECT_LE(share, 1.0001f);
            sum += static_cast<double>(share);
        }
    EXPECT_NEAR(sum, OverviewLoad::kSlices * 2.0 / 3.0, 2.0);
}

TEST_F(Demonstration, RulesPutWhatViolatesThemFirst) {
    TimingDocks& docks = workbench_.Timing();
    docks.SetRules("[task.MOTOR_CTRL]\ndeadline = \"2ms\"\n", "drive.toml");
    EXPECT_EQ(docks.Facts(), nullptr);
    WaitForFacts();
    EXPECT_GT(docks.Facts()->found.violations.size(), 0u);
    EXPECT_EQ(static_cast<const FindingsTable*>(docks.Findings().Shown())->FindingOf(0).rule,
              "task.MOTOR_CTRL.deadline");
    QString fault;
    docks.onRulesFault = [&fault](const QString& message) { fault = message; };
    docks.SetRules("[task.NOBODY]\ndeadline = \"2ms\"\n", "drive.toml");
    WaitForFacts();
    EXPECT_TRUE(fault.contains("drive.toml")) << fault.toStdString();
}

// The rest of the facts stays; the markers may go elsewhere afterwards.
TEST_F(Demonstration, TablesCanBeLimitedToWhatIsMarked) {
    TimingDocks& docks = workbench_.Timing();
    const auto model = docks.Facts()->model;
    const int allJobs = docks.Table("jobs").Shown()->RowCount();
    const auto action = [this] {
        for (QAction* each : workbench_.Window().ViewMenu().actions())
            if (each->text() == "Tables &Between Markers") return each;
        return static_cast<QAction*>(nullptr);
    }();
    ASSERT_NE(action, nullptr);
    const host::OSTracePosition marked = Position();
    action->trigger();
    for (int i = 0; i < 3000 && !docks.Facts()->range; ++i) QTest::qWait(10);
    ASSERT_TRUE(docks.Facts()->range);
    EXPECT_EQ(static_cast<double>(docks.Facts()->range->start), marked.startMarker);
    EXPECT_EQ(docks.Facts()->model, model);
    EXPECT_TRUE(docks.Findings().View().selectionModel()->hasSelection())
        << "findings are of the whole";
    const int someJobs = docks.Table("jobs").Shown()->RowCount();
    EXPECT_GT(someJobs, 0);
    EXPECT_LT(someJobs, allJobs);
    docks.Table("jobs").Select(0);
    EXPECT_EQ(docks.Table("jobs").Shown()->RowCount(), someJobs) << "the markers went with the row";
    action->trigger();
    for (int i = 0; i < 3000 && docks.Facts()->range; ++i) QTest::qWait(10);
    EXPECT_EQ(docks.Table("jobs").Shown()->RowCount(), allJobs);
}

TEST_F(Demonstration, DeadlineThatIsTypedBecomesARule) {
    TimingDocks& docks = workbench_.Timing();
    docks.SetRules("# mine\n[task.LOGGER]\ndeadline = \"1s\"\n", "mine.toml");
    WaitForFacts();
    TableDock& table = docks.Table("timing");
    table.show();
    table.SetFilter("MOTOR_CTRL");
    ASSERT_EQ(table.View().model()->rowCount(), 1);
    table.View().selectRow(0);
    auto* typed = table.findChildren<QLineEdit*>().back();
    ASSERT_TRUE(typed->isEnabled());
    QString fault;
    docks.onRulesFault = [&fault](const QString& message) { fault = message; };
    typed->setText("soon");
    QTest::keyClick(typed, Qt::Key_Return);
    EXPECT_TRUE(fault.contains("soon"));
    typed->setText("10ms");
    QTest::keyClick(typed, Qt::Key_Return);
    WaitForFacts();
    EXPECT_EQ(
        docks.RulesText(),
        "# mine\n[task.LOGGER]\ndeadline = \"1s\"\n\n[task.MOTOR_CTRL]\ndeadline = \"10ms\"\n");
    EXPECT_EQ(docks.Facts()->found.violations.size(), 1u);
    EXPECT_TRUE(docks.Explanation().Text().contains("deadline 10 ms"))
        << docks.Explanation().Text().toStdString();
    typed->setText("20ms");
    QTest::keyClick(typed, Qt::Key_Return);
    WaitForFacts();
    EXPECT_TRUE(docks.Facts()->found.violations.empty());
    EXPECT_EQ(QString::fromStdString(docks.RulesText()).count("deadline"), 2);
}

TEST_F(Demonstration, DocksGoWithTheRecordingAndComeBack) {
    TimingDocks& docks = workbench_.Timing();
    workbench_.CloseRecording();
    EXPECT_FALSE(docks.Findings().isVisible());
    EXPECT_EQ(docks.Facts(), nullptr);
    auto trace = std::make_unique<service::TraceService>();
    trace->SetRecording(std::make_unique<test::TestRecording>());
    ASSERT_TRUE(workbench_.Show(std::move(trace)));
    EXPECT_TRUE(docks.Findings().isVisible());
    WaitForFacts();
    // It tells of no waits: an empty table would say that there were none.
    EXPECT_EQ(docks.Table("waits").Shown(), nullptr);
    QStringList words;
    for (const QLabel* label : docks.Table("waits").findChildren<QLabel*>()) words << label->text();
    EXPECT_TRUE(words.join(' ').contains("show no wait that ends a job"))
        << words.join(' ').toStdString();
}

TEST(Histogram, CountsValuesIntoBarsOfEqualRatio) {
    Histogram histogram;
    const service::TraceClock clock(service::TimeUnit::Microseconds);
    std::vector<std::int64_t> values;
    for (std::int64_t i = 1; i <= 1000; ++i) values.push_back(i * 10);
    histogram.Show(values, 12000, clock, "all");
    int sum = 0;
    for (const int count : histogram.Bins()) sum += count;
    EXPECT_EQ(sum, 1000);
    EXPECT_GT(histogram.Bins()[20], histogram.Bins()[5]) << "the axis is logarithmic";
    histogram.resize(400, 200);
    std::pair<std::int64_t, std::int64_t> bin{-1, -1};
    histogram.onBin = [&bin](std::int64_t from, std::int64_t to) { bin = {from, to}; };
    QTest::mouseClick(&histogram, Qt::LeftButton, {}, {300, 150});
    EXPECT_GT(bin.first, 10);
    EXPECT_LT(bin.first, bin.second);
    histogram.Show({}, std::nullopt, clock, "none");
    bin = {-1, -1};
    QTest::mouseClick(&histogram, Qt::LeftButton, {}, {300, 150});
    EXPECT_EQ(bin.first, -1);
}

}  // namespace
}  // namespace kvx::desktop
