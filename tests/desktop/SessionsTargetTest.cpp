// Sessions with the simulated target: it runs, is stopped, and goes with a workspace.

#include <gtest/gtest.h>

#include "BoxAnswer.h"
#include "SessionsFixture.h"
#include "host/CommandIds.h"

namespace kvx::desktop {
namespace {

using test::BoxAnswer;

TEST_F(Sessions, TargetRunsIsStoppedAndShown) {
    workbench_->Open(log_);
    Open(ids::kOpenOSAnalyze);
    workbench_->ConnectTarget();
    ASSERT_NE(workbench_->Target(), nullptr);
    EXPECT_EQ(workbench_->Trace().GetRecording(), nullptr);
    EXPECT_TRUE(Command("OS Trace", ids::kRangeFreeCommand)->isEnabled());
    EXPECT_FALSE(Command("OS Trace", ids::kTraceStop)->isEnabled()) << "nothing runs";

    workbench_->Target()->Go();
    EXPECT_FALSE(Command("OS Trace", ids::kRangeFreeCommand)->isEnabled());
    EXPECT_TRUE(Command("OS Trace", ids::kRangeFullCommand)->isChecked()) << "as it was";
    EXPECT_TRUE(Command("OS Trace", ids::kTraceStop)->isEnabled());
    EXPECT_FALSE(Command("OS Trace", ids::kTraceRestart)->isEnabled());
    BoxAnswer box;
    Dock("OS Trace")->close();
    EXPECT_EQ(box.texts.size(), 1);
    EXPECT_TRUE(box.texts.value(0).contains("while the target runs"));
    EXPECT_EQ(Shown(), QStringList({"OS Trace", "OS Analyze"})) << "not while it runs";
    workbench_->Target()->Advance(50'000);

    Command("OS Trace", ids::kTraceStop)->trigger();
    EXPECT_FALSE(Command("OS Trace", ids::kTraceStop)->isEnabled());
    EXPECT_TRUE(Command("OS Trace", ids::kTraceRestart)->isEnabled()) << "the trace is open";
    Command("OS Trace", ids::kTraceRestart)->trigger();
    EXPECT_EQ(workbench_->Trace().GetRecording(), nullptr);
    EXPECT_TRUE(Command("OS Trace", ids::kTraceStop)->isEnabled());
    workbench_->Target()->Advance(50'000);
    workbench_->Target()->Stop();
    EXPECT_GE(workbench_->Trace().GetRecording()->FirstTime(), 49'000);
    EXPECT_TRUE(Command("OS Trace", ids::kExpand)->isEnabled()) << "the recording is shown";
    EXPECT_TRUE(Command("OS Trace", ids::kRangeFreeCommand)->isEnabled());
    Dock("OS Trace")->close();
    EXPECT_EQ(Shown(), QStringList("OS Analyze"));

    const QString copy = folder_.filePath("kept.log");
    ASSERT_TRUE(workbench_->SaveRecording(copy));
    const std::uint32_t records = workbench_->Trace().GetRecording()->RecordCount();
    workbench_->Open(copy);
    EXPECT_EQ(workbench_->Target(), nullptr) << "a file ends the connection";
    EXPECT_EQ(workbench_->Trace().GetRecording()->RecordCount(), records);
    EXPECT_TRUE(workbench_->Trace().GetRecording()->Warnings().empty());
    EXPECT_TRUE(QFileInfo::exists(folder_.filePath("kept.res")));
}

TEST_F(Sessions, WorkspaceEndsTheConnectionAlsoWhileTheTargetRuns) {
    workbench_->Open(log_);
    ASSERT_TRUE(workbench_->SaveWorkspace(file_));
    workbench_->ConnectTarget();
    Open(ids::kOpenOSAnalyze);
    workbench_->Target()->Go();
    workbench_->Target()->Advance(10'000);
    BoxAnswer discard(QMessageBox::Discard);
    ASSERT_TRUE(workbench_->OpenWorkspace(file_));
    EXPECT_EQ(workbench_->Target(), nullptr);
    EXPECT_EQ(Shown(), QStringList("OS Trace"));
    EXPECT_EQ(workbench_->Trace().GetRecording()->Path(), log_.toStdString());
}

TEST_F(Sessions, RecordingOfTheTargetIsNoDemonstration) {
    ASSERT_TRUE(workbench_->OpenDemonstration());
    workbench_->ConnectTarget();
    workbench_->Target()->Go();
    workbench_->Target()->Advance(10'000);
    workbench_->Target()->Stop();
    ASSERT_TRUE(workbench_->SaveWorkspace(file_));
    EXPECT_FALSE(ReadWorkspace(file_)->workspace.trace) << "it is in no file";
    ASSERT_TRUE(workbench_->SaveRecording(folder_.filePath("kept.log")));
    ASSERT_TRUE(workbench_->SaveWorkspace(file_));
    EXPECT_EQ(ReadWorkspace(file_)->workspace.trace->files, folder_.filePath("kept.log"));
}

TEST_F(Sessions, EndsWhileTheTargetRuns) {
    workbench_->ConnectTarget();
    workbench_->Target()->Go();
    workbench_->Target()->Advance(10'000);
    Quit();
    EXPECT_EQ(workbench_->Target(), nullptr);
}

}  // namespace
}  // namespace kvx::desktop
