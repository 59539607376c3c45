// Numbers where the process has a locale with a decimal comma: what is shown, written and read back
// has points all the same.

#include <gtest/gtest.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <clocale>
#include <filesystem>
#include <fstream>
#include <locale>
#include <nlohmann/json.hpp>
#include <sstream>

#include "analyze/AnalyzeTrace.h"
#include "analyze/model/CsvWriter.h"
#include "display/DlgOSTraceValue.h"
#include "support/ResourceFixture.h"
#include "trace/HostTraceSource.h"
#include "trace/TraceData.h"
#include "traceview/StatusTexts.h"
#include "traceview/model/ChartViewport.h"
#include "utils/Profile.h"
#include "workbench/cli/SubCommands.h"
#include "workbench/desktop/QtText.h"
#include "workbench/desktop/sessions/WorkspaceFile.h"

namespace kvx::test {
namespace {

namespace fs = std::filesystem;

class CommaLocale : public ResourceFixture {
  protected:
    void SetUp() override {
        ResourceFixture::SetUp();
        ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr);
        ASSERT_STREQ(std::localeconv()->decimal_point, ",");
        std::locale::global(std::locale("de_DE.UTF-8"));
        service.Load(AnalyzeTrace(8));
        service.DecodeAll();
        ASSERT_EQ(data.engine.Open(nullptr), 1);
        data.contexts.Load();
        data.markers.SetMarker(nullptr, kMarkerStart, 0);
        data.markers.SetMarker(nullptr, kMarkerEnd, service.Decoded() - 1);
        data.markers.Rebuild(nullptr, true);
    }
    ~CommaLocale() override { std::locale::global(std::locale::classic()); }

    QTemporaryDir folder;
    std::string Path(const char* name) const {
        return folder.filePath(QString::fromLatin1(name)).toStdString();
    }
    static std::string Content(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }

    HostTraceSource source;
    COSTraceData data{source};
};

TEST_F(CommaLocale, ValueDialogReadsWhatItShows) {
    CDlgOSTraceValue dialog;
    dialog.mode = kTimeCycles;
    dialog.cycles = 1234567.0;
    dialog.expandRate = 1.5;
    dialog.reduceRate = 2.0;
    const auto answer = [&](const char* typed) {
        boxes.ExpectDialog([&](CDialog& shown) {
            EXPECT_EQ(shown.GetDlgItemText(4068), "1234567");
            EXPECT_EQ(shown.GetDlgItemText(4116), "1.500000");
            if (typed) shown.SetDlgItemText(4116, typed);
            Click(shown, IDOK);
        });
        return dialog.DoModal();
    };
    EXPECT_EQ(answer("1,7"), static_cast<int>(IDCANCEL)) << "no number here";
    EXPECT_EQ(answer(nullptr), static_cast<int>(IDOK));
    EXPECT_EQ(dialog.expandRate, 1.5);
    EXPECT_EQ(answer("1.7"), static_cast<int>(IDOK));
    EXPECT_EQ(dialog.expandRate, static_cast<double>(1.7f));
}

TEST_F(CommaLocale, StatusTexts) {
    ChartViewport viewport;
    viewport.Open(0.0, 1e9, 1e9);
    viewport.gridTime = 1000000.0;
    const auto scale = [&](double value) {
        viewport.Show({0.0, 1e9 / value, value});
        return ComposeStatusTexts(data.engine, data.markers, viewport)[2];
    };
    EXPECT_EQ(scale(1.5), "Scale: * 1.500000");
    EXPECT_EQ(scale(2500000.0), "Scale: * 2.500000e+06");
    EXPECT_EQ(ComposeStatusTexts(data.engine, data.markers, viewport)[3], "Grid: 1000000");
}

TEST_F(CommaLocale, SortedTableAndItsCsv) {
    data.runTime.Sort(CRunTimeAnalysis::Ratio, 0);
    const CCsvWriter writer(data.runTime);
    ASSERT_EQ(writer.Write(Path("a.csv")), 1);
    std::istringstream rows(Content(Path("a.csv")));
    double before = 0.0;
    int count = 0;
    std::string row;
    for (std::getline(rows, row); std::getline(rows, row); ++count) {
        EXPECT_EQ(std::ranges::count(row, ','), 9) << row;
        std::istringstream ratio(row.substr(row.rfind(',') + 1));
        ratio.imbue(std::locale::classic());
        double percent = -1.0;
        ratio >> percent;
        EXPECT_GE(percent, before) << row;
        before = percent;
    }
    EXPECT_GE(count, 4);
    EXPECT_GT(before, 20.0);
}

TEST_F(CommaLocale, CommandLine) {
    std::ofstream(Path("a.log")) << "[1000] task 1 becomes RUNNABLE.\n"
                                    "[2000] dispatch to task 1.\n"
                                    "[2500] dispatch from task 1.\n"
                                    "[2500] dispatch to task 2.\n"
                                    "[9000] applog str : ID 1 : end.\n";
    const auto run = [&](std::vector<const char*> arguments) {
        const std::string log = Path("a.log");
        arguments.insert(arguments.begin(), {"kvxostrace", "analyze", log.c_str()});
        std::ostringstream out;
        std::ostringstream error;
        out.imbue(std::locale::classic());
        EXPECT_EQ(
            cli::RunSubCommand(static_cast<int>(arguments.size()), arguments.data(), {out, error}),
            cli::kExitDone)
            << error.str();
        return out.str();
    };
    const auto json = nlohmann::json::parse(run({"--start", "1.5ms", "--json"}));
    double sum = 0.0;
    for (const auto& each : json["run_time"]) sum += each["ratio"].get<double>();
    EXPECT_NEAR(sum, 1.0, 1e-9);
    EXPECT_NE(run({"--table", "run-time"}).find("Mark: 00:00:00.001.000"), std::string::npos);
    EXPECT_EQ(run({"--table", "run-time"}).find(','), std::string::npos);
}

TEST_F(CommaLocale, WorkspaceAndSettings) {
    desktop::Workspace written;
    written.position = host::OSTracePosition{0.5, 1e15 + 2, 1234.25, 0, 1e15 + 1, 3};
    const QString path = folder.filePath("day.kvxw");
    ASSERT_EQ(desktop::WriteWorkspace(path, written), "");
    const auto read = desktop::ReadWorkspace(path);
    ASSERT_TRUE(read);
    EXPECT_TRUE(read->damage.isEmpty());
    EXPECT_EQ(read->workspace.position, written.position);
    EXPECT_NE(Content(path.toStdString()).find("0.5"), std::string::npos);
    ASSERT_TRUE(AfxWriteProfileInt(Path("a.ini"), "section", "number", 1234567));
    EXPECT_NE(Content(Path("a.ini")).find("number=1234567\n"), std::string::npos);
    EXPECT_EQ(desktop::CountText(1234567), "1,234,567");
}

}  // namespace
}  // namespace kvx::test
