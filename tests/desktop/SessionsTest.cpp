// Whole sessions of the Workbench with the component that it ships with: workspaces.

#include <gtest/gtest.h>

#include "BoxAnswer.h"
#include "SessionsFixture.h"
#include "host/CommandIds.h"
#include "support/SystemViewWriter.h"

namespace kvx::desktop {
namespace {

using test::BoxAnswer;

TEST_F(Sessions, WorkspaceBringsBackADaysWork) {
    ASSERT_TRUE(workbench_->Open(log_));
    Open(ids::kOpenOSAnalyze);
    Command("OS Analyze", ids::kRdyToRun)->trigger();
    Docks().SetState(*Dock("OS Analyze"), kDockShow);
    Dock("OS Analyze")->setFloating(true);
    EXPECT_FALSE(IsModified()) << "there is no file yet";
    ASSERT_TRUE(workbench_->SaveWorkspace(file_));
    EXPECT_FALSE(IsModified());
    EXPECT_EQ(workbench_->Window().windowTitle(), "day.log — day.kvxw[*] — KVX Workbench");

    StartAnew();
    ASSERT_TRUE(workbench_->Open(file_)) << "recognised by its name";
    EXPECT_EQ(Shown(), QStringList({"OS Trace", "OS Analyze"}));
    EXPECT_EQ(workbench_->Trace().GetRecording()->Path(), log_.toStdString());
    EXPECT_TRUE(Dock("OS Analyze")->isFloating());
    EXPECT_FALSE(Dock("OS Trace")->isFloating());
    EXPECT_TRUE(Command("OS Analyze", ids::kRdyToRun)->isChecked());
    EXPECT_TRUE(Command("OS Trace", ids::kExpand)->isEnabled()) << "the trace is in the window";
    ASSERT_NE(Docks().Active(), nullptr) << "its menu is there, and keys reach it";
    EXPECT_FALSE(IsModified());
    EXPECT_EQ(workbench_->Window().Recent().List(), QStringList({file_, log_}));
}

// A recording with a file for each core is one recording: by its name, among the recent ones, when
// it is read anew, and in a workspace.
TEST_F(Sessions, RecordingOfSeveralFilesStaysWhole) {
    TraceFiles files(QStringList{folder_.filePath("0.SVDat"), folder_.filePath("1.SVDat")});
    for (const QString& path : files.Paths()) {
        test::SystemViewWriter writer(1000000);
        writer.System("O=FreeRTOS").Task(0x10, 5, "main").Run(0x10, 10).Idle();
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray::fromStdString(writer.Bytes()));
    }
    const auto processors = [this] { return workbench_->Trace().GetRecording()->Processors(); };
    ASSERT_TRUE(workbench_->Open(files));
    EXPECT_EQ(processors(), (std::vector<std::uint32_t>{0, 1}));
    EXPECT_TRUE(workbench_->Window().windowTitle().startsWith("0.SVDat and 1 more"));
    workbench_->Reload();
    EXPECT_EQ(processors().size(), 2u);
    ASSERT_TRUE(workbench_->SaveWorkspace(file_));

    StartAnew();
    ASSERT_TRUE(workbench_->OpenWorkspace(file_));
    EXPECT_EQ(processors().size(), 2u);
    const QString recent = workbench_->Window().Recent().List().at(1);
    ASSERT_TRUE(workbench_->Open(TraceFiles::FromText(recent)));
    EXPECT_EQ(processors().size(), 2u);
}

TEST_F(Sessions, WorkspaceBringsBackLinesMarkersAndTheDisplay) {
    ASSERT_TRUE(workbench_->Open(log_));
    const host::OSTracePosition wanted{1000, 2000, 50, 1100, 1510, 1700};
    ASSERT_EQ(Range()->SetPosition(&wanted), S_OK);
    workbench_->Trace().MoveContext(0, 2);
    workbench_->Trace().ArrangeLines({{kContextTask, 3, true},
                                      {kContextTask, 1, false},
                                      {kContextTask, 2, true},
                                      {kContextTask, 4, true}});
    const service::LineArrangement lines = workbench_->Trace().Lines();
    ASSERT_TRUE(workbench_->SaveWorkspace(file_));

    StartAnew();
    ASSERT_TRUE(workbench_->OpenWorkspace(file_));
    host::OSTracePosition position;
    ASSERT_EQ(Range()->GetPosition(&position), S_OK);
    EXPECT_EQ(position, wanted);
    EXPECT_EQ(workbench_->Trace().Lines(), lines);
    EXPECT_EQ(workbench_->Trace().LineName(0), "task 3");
    EXPECT_FALSE(IsModified());

    // Looking somewhere else is no change; another range is.
    host::OSTracePosition elsewhere = wanted;
    elsewhere.displayStart = 500;
    ASSERT_EQ(Range()->SetPosition(&elsewhere), S_OK);
    EXPECT_FALSE(IsModified());
    elsewhere.endMarker = 1900;
    ASSERT_EQ(Range()->SetPosition(&elsewhere), S_OK);
    EXPECT_TRUE(IsModified());
    ASSERT_TRUE(workbench_->SaveWorkspace(file_));
    workbench_->Trace().MoveContext(0, 2);
    EXPECT_TRUE(IsModified());
}

TEST_F(Sessions, AWindowThatWasClosedOpensWhereItStood) {
    ASSERT_TRUE(workbench_->Open(log_));
    const host::OSTracePosition wanted{1000, 2000, 50, 1100, 1510, 1700};
    ASSERT_EQ(Range()->SetPosition(&wanted), S_OK);
    Dock("OS Trace")->close();
    host::OSTracePosition position;
    EXPECT_EQ(Range()->GetPosition(&position), E_FAIL);
    workbench_->OpenTraceWindow();
    ASSERT_EQ(Range()->GetPosition(&position), S_OK);
    EXPECT_EQ(position, wanted);
    // Another recording is shown from its start.
    Dock("OS Trace")->close();
    ASSERT_TRUE(workbench_->Open(log_));
    ASSERT_EQ(Range()->GetPosition(&position), S_OK);
    EXPECT_NE(position.displayStart, wanted.displayStart);
}

TEST_F(Sessions, AllLinesAreShownWhereTheDisplayStands) {
    ASSERT_TRUE(workbench_->Open(log_));
    const host::OSTracePosition wanted{1000, 2000, 50, 1100, 1510, 1700};
    ASSERT_EQ(Range()->SetPosition(&wanted), S_OK);
    EXPECT_FALSE(workbench_->Window().isAnyLineHidden());
    workbench_->Trace().ArrangeLines({{kContextTask, 3, true},
                                      {kContextTask, 1, false},
                                      {kContextTask, 2, true},
                                      {kContextTask, 4, true}});
    EXPECT_TRUE(workbench_->Window().isAnyLineHidden());
    workbench_->Window().onShowAllLines();
    EXPECT_FALSE(workbench_->Window().isAnyLineHidden());
    EXPECT_EQ(workbench_->Trace().LineName(0), "task 3") << "the order stays";
    host::OSTracePosition position;
    ASSERT_EQ(Range()->GetPosition(&position), S_OK);
    EXPECT_EQ(position, wanted);
}

TEST_F(Sessions, FilesAreSavedBesideTheTrace) {
    const auto configuration = [this] {
        auto* project =
            host::Service<IQProjectInformation>(&workbench_->Host(), host::kProjectInformation);
        Bstr name, directory;
        project->GetConfigurationName(name.Receive());
        return Succeeded(project->GetConfigurationDirectory(name.Get(), name.Get(), name.Get(),
                                                            directory.Receive()))
                   ? name.Utf8() + " " + directory.Utf8()
                   : "none";
    };
    EXPECT_EQ(configuration(), "none");
    workbench_->Open(log_);
    EXPECT_EQ(configuration(), "day.log " + folder_.path().toStdString());
    workbench_->CloseRecording();
    EXPECT_EQ(configuration(), "none");
}

TEST_F(Sessions, LogThatWasWrittenAnewIsReadAnew) {
    ASSERT_TRUE(workbench_->Open(log_));
    const host::OSTracePosition wanted{1000, 2000, 50, 1100, 1510, 1700};
    ASSERT_EQ(Range()->SetPosition(&wanted), S_OK);
    workbench_->Trace().MoveContext(0, 2);
    const service::LineArrangement lines = workbench_->Trace().Lines();
    QFile log(log_);
    ASSERT_TRUE(log.open(QIODevice::Append));
    log.write("[9000] dispatch to task 9.\n");
    log.close();
    workbench_->Reload();
    EXPECT_EQ(workbench_->Trace().GetRecording()->LastTime(), 9000);
    host::OSTracePosition position;
    ASSERT_EQ(Range()->GetPosition(&position), S_OK);
    EXPECT_EQ(position, wanted);
    EXPECT_EQ(workbench_->Trace().Lines(), lines);

    ASSERT_TRUE(QFile::remove(log_));
    BoxAnswer box;
    workbench_->Reload();
    EXPECT_EQ(box.texts.size(), 1);
    EXPECT_EQ(workbench_->Trace().GetRecording()->LastTime(), 9000) << "what is open stays";
}

TEST_F(Sessions, ChangesAreNoticedAndAskedFor) {
    workbench_->Open(log_);
    Open(ids::kOpenOSAnalyze);
    ASSERT_TRUE(workbench_->SaveWorkspace(file_));
    const std::vector<std::function<void()>> changes = {
        [&] { Dock("OS Analyze")->setFloating(true); },
        [&] { Dock("OS Analyze")->close(); },
        [&] { workbench_->CloseRecording(); },
        [&] { Open(ids::kOpenOSAnalyze); },
    };
    for (const auto& change : changes) {
        EXPECT_FALSE(IsModified());
        change();
        EXPECT_TRUE(IsModified());
        ASSERT_TRUE(workbench_->SaveWorkspace(file_));
    }
    Dock("OS Analyze")->close();
    {
        BoxAnswer cancel(QMessageBox::Cancel);
        workbench_->Window().close();
        EXPECT_EQ(cancel.texts, QStringList("Save the changes to day.kvxw?"));
        EXPECT_TRUE(workbench_->Window().isVisible());
        EXPECT_FALSE(workbench_->OpenWorkspace(file_));
        workbench_->CloseWorkspace();
        EXPECT_EQ(workbench_->Workspace().Path(), file_);
    }
    {
        BoxAnswer save(QMessageBox::Save);
        workbench_->CloseWorkspace();
        EXPECT_EQ(save.texts.size(), 1);
        EXPECT_EQ(workbench_->Workspace().Path(), "");
    }
    EXPECT_FALSE(QFileInfo::exists(folder_.filePath("other")));
    workbench_->OpenWorkspace(file_);
    EXPECT_EQ(Dock("OS Analyze"), nullptr) << "as it was saved";
    Open(ids::kOpenOSAnalyze);
    BoxAnswer discard(QMessageBox::Discard);
    workbench_->OpenWorkspace(file_);
    EXPECT_EQ(discard.texts.size(), 1);
    EXPECT_EQ(Dock("OS Analyze"), nullptr);
}

TEST_F(Sessions, WithoutAWorkspaceTheNextRunFindsTheWindows) {
    workbench_->Open(log_);
    Open(ids::kOpenOSAnalyze);
    Command("OS Analyze", ids::kSystemCall)->trigger();
    workbench_->CloseRecording();
    Quit();
    EXPECT_EQ(Shown(), QStringList()) << "the start page is there until a trace is open";
    workbench_->Open(log_);
    EXPECT_EQ(Shown(), QStringList({"OS Trace", "OS Analyze"}));
    EXPECT_TRUE(Command("OS Analyze", ids::kSystemCall)->isChecked());

    // A workspace between them changes nothing of that.
    ASSERT_TRUE(workbench_->SaveWorkspace(file_));
    Dock("OS Analyze")->close();
    ASSERT_TRUE(workbench_->SaveWorkspace(file_));
    workbench_->CloseWorkspace();
    workbench_->Open(log_);
    EXPECT_EQ(Shown(), QStringList({"OS Trace", "OS Analyze"}));
}

TEST_F(Sessions, DamageCostsOnlyWhatIsDamagedWithOneMessage) {
    workbench_->Open(log_);
    Open(ids::kOpenOSAnalyze);
    ASSERT_TRUE(workbench_->SaveWorkspace(file_));
    QFile file(file_);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QByteArray text = file.readAll();
    file.close();
    text.replace("\"check\":", "\"check\":1");
    text.replace("day.log", "gone.log");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text + "\nnonsense");
    file.close();

    StartAnew();
    BoxAnswer box;
    ASSERT_TRUE(workbench_->OpenWorkspace(file_));
    ASSERT_EQ(box.texts.size(), 1);
    EXPECT_TRUE(box.texts[0].contains("gone.log"));
    EXPECT_EQ(box.texts[0].count("could not be read"), 2) << box.texts[0].toStdString();
    EXPECT_EQ(Shown(), QStringList());
    workbench_->Open(log_);
    EXPECT_EQ(Shown(), QStringList({"OS Trace", "OS Analyze"})) << "they waited for a trace";
}

TEST_F(Sessions, LayoutOfAnotherKindIsNamedAndNoLayoutIsNone) {
    workbench_->Open(log_);
    ASSERT_TRUE(workbench_->SaveWorkspace(file_));
    Workspace workspace = ReadWorkspace(file_)->workspace;
    workspace.layout = "no layout";
    ASSERT_EQ(WriteWorkspace(file_, workspace), "");
    {
        BoxAnswer box;
        ASSERT_TRUE(workbench_->OpenWorkspace(file_));
        ASSERT_EQ(box.texts.size(), 1);
        EXPECT_TRUE(box.texts[0].contains("Where the windows stand is not known."));
        EXPECT_EQ(Shown(), QStringList("OS Trace"));
    }
    workspace.layout.clear();
    ASSERT_EQ(WriteWorkspace(file_, workspace), "");
    BoxAnswer box;
    ASSERT_TRUE(workbench_->OpenWorkspace(file_));
    EXPECT_TRUE(box.texts.isEmpty());
    EXPECT_EQ(Shown(), QStringList("OS Trace"));
}

TEST_F(Sessions, WorkspaceThatCannotBeReadOrWrittenLosesNothing) {
    workbench_->Open(log_);
    ASSERT_TRUE(workbench_->SaveWorkspace(file_));
    Open(ids::kOpenOSAnalyze);
    {
        BoxAnswer box;
        EXPECT_FALSE(workbench_->SaveWorkspace("/nowhere/at/all.kvxw"));
        ASSERT_EQ(box.texts.size(), 1);
        EXPECT_TRUE(box.texts[0].contains("/nowhere/at/all.kvxw"));
        EXPECT_TRUE(IsModified()) << "it still is";
    }
    ASSERT_TRUE(workbench_->SaveWorkspace(file_));
    BoxAnswer box;
    EXPECT_FALSE(workbench_->OpenWorkspace(log_));
    ASSERT_EQ(box.texts.size(), 1);
    EXPECT_TRUE(box.texts[0].contains("this is not a workspace"));
    EXPECT_EQ(workbench_->Workspace().Path(), file_);
    EXPECT_EQ(Shown(), QStringList({"OS Trace", "OS Analyze"}));
}

TEST_F(Sessions, HelpIsThatOfTheActiveWindow) {
    EXPECT_EQ(workbench_->Docking().HelpKey(), "");
    workbench_->Open(log_);
    EXPECT_EQ(workbench_->Docking().HelpKey(), "OSTrace.chm>F1HelpWindow");
    Open(ids::kOpenOSAnalyze);
    EXPECT_EQ(workbench_->Docking().HelpKey(), "OSAnalyze.chm>F1HelpWindow");
    workbench_->CloseRecording();
    EXPECT_EQ(workbench_->Docking().HelpKey(), "");
}

}  // namespace
}  // namespace kvx::desktop
