// The whole host with a small component loaded through its entry points.

#include "workbench/desktop/Workbench.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDropEvent>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "BoxAnswer.h"
#include "TestRecording.h"
#include "fakecomponent/FakeComponent.h"
#include "host/CommandIds.h"
#include "platform/base/Module.h"
#include "workbench/desktop/QtText.h"

namespace kvx::desktop {
namespace {

using test::BoxAnswer;
using test::TestRecording;

constexpr char kFake[] = "KvxFakeComponent";

QString BinDirectory() {
    return QString::fromLocal8Bit(qgetenv("KVX_BIN_DIR"));
}

class WorkbenchTest : public testing::Test {
  protected:
    void SetUp() override {
        const HMODULE module = LoadLibrary(BinDirectory().toStdString() + "/" + kFake + ".dll");
        ASSERT_NE(module, nullptr);
        takeLog_ = GetProcAddress<test::FakeTakeLogFn>(module, "FakeTakeLog");
        set_ = GetProcAddress<test::FakeSetFn>(module, "FakeSet");
        takeLog_();
        workbench_ = std::make_unique<Workbench>(settings_);
    }
    void TearDown() override {
        workbench_.reset();
        set_(test::kRefuseClose, 0);
        set_(test::kFailInitialize, 0);
    }

    void Start() {
        ASSERT_EQ(workbench_->Start(BinDirectory(), kFake), "");
        takeLog_();
    }
    bool Show(std::vector<std::uint32_t> processors = {0}) {
        return Show(std::make_unique<TestRecording>(std::move(processors)));
    }
    bool Show(std::unique_ptr<TestRecording> recording) {
        auto trace = std::make_unique<service::TraceService>();
        trace->SetRecording(std::move(recording));
        return workbench_->Show(std::move(trace));
    }
    void ShowBothWindows() {
        Start();
        Window().resize(900, 700);
        Window().show();
        Show();
        FindAction("View/RTOS/OS Analyze")->trigger();
        QApplication::processEvents();
    }
    MainWindow& Window() { return workbench_->Window(); }
    DockingWindows& Docks() { return workbench_->Docking().Windows(); }
    bool IsStartPageShown() { return !Window().centralWidget()->isHidden(); }
    QAction* FindAction(const QString& path) {
        QAction* found = nullptr;
        const QWidget* container = Window().menuBar();
        for (const QString& part : path.split('/')) {
            found = nullptr;
            for (QAction* action : container->actions()) {
                if (action->text().remove('&') == part) found = action;
            }
            if (!found || !found->menu()) break;
            container = found->menu();
        }
        return found;
    }

    Settings settings_;
    std::unique_ptr<Workbench> workbench_;
    test::FakeTakeLogFn takeLog_ = nullptr;
    test::FakeSetFn set_ = nullptr;
};

TEST_F(WorkbenchTest, StartsAndEndsTheComponentInOrder) {
    EXPECT_EQ(workbench_->Start(BinDirectory(), kFake), "");
    EXPECT_STREQ(takeLog_(), "create\ninitialize 1\ndebugger connected\n");
    EXPECT_TRUE(IsStartPageShown());
    for (const char* needsRecording : {"File/Save Recording As…", "File/Reload", "File/Close"})
        EXPECT_FALSE(FindAction(needsRecording)->isEnabled()) << needsRecording;
    workbench_.reset();
    EXPECT_STREQ(takeLog_(), "terminate 1\ndebugger disconnected\ndestroy\n");
}

TEST_F(WorkbenchTest, ComponentThatCannotStartIsDestroyedAndNamed) {
    set_(test::kFailInitialize, 1);
    EXPECT_NE(workbench_->Start(BinDirectory(), kFake), "");
    EXPECT_STREQ(takeLog_(), "create\ninitialize 1\ndestroy\n");
    BoxAnswer box;
    EXPECT_FALSE(Show());
    EXPECT_EQ(box.texts.size(), 1);
    EXPECT_NE(workbench_->Start(BinDirectory(), "NoSuchModule"), "");
    EXPECT_NE(workbench_->Start(BinDirectory(), "KvxDebugger"), "") << "no entry points";
}

TEST_F(WorkbenchTest, RecordingIsShownInAWindowOfItsOwn) {
    Start();
    Window().resize(900, 600);
    Window().show();
    ASSERT_TRUE(Show());
    EXPECT_STREQ(takeLog_(),
                 "created {WK_00000001_OSTRACE}\n"
                 "target connected, trace there\ntrace ready, trace there\n");
    ASSERT_EQ(Docks().All().size(), 1U);
    QApplication::processEvents();
    DockingWindow& dock = *Docks().All().front();
    EXPECT_TRUE(dock.isVisible());
    EXPECT_FALSE(IsStartPageShown());
    EXPECT_GT(dock.height(), 400) << "the chart fills the window, but for a strip";
    ASSERT_EQ(dock.Area().children().size(), 1);
    EXPECT_EQ(dock.Area().findChild<QWidget*>()->size(), dock.Area().size());
    EXPECT_TRUE(Window().windowTitle().startsWith("made-up.log"));
    EXPECT_NE(FindAction("OS Trace/Trace Range/Full"), nullptr) << "the window's own menu";
    EXPECT_NE(FindAction("View/RTOS/OS Analyze"), nullptr);
    EXPECT_EQ(workbench_->Docking().Toolbar("{WK_TB00000023_RTOS}")->windowTitle(), "RTOS");
}

TEST_F(WorkbenchTest, AnotherRecordingTakesThePlaceOfTheFirst) {
    Start();
    Show();
    takeLog_();
    Show();
    EXPECT_STREQ(takeLog_(),
                 "trace cleared, trace there\ntarget disconnected, trace there\n"
                 "target connected, trace there\ntrace ready, trace there\n");
    EXPECT_EQ(Docks().All().size(), 1U);

    workbench_->CloseRecording();
    EXPECT_STREQ(takeLog_(), "trace cleared, trace there\ntarget disconnected, trace there\n");
    EXPECT_TRUE(IsStartPageShown());
    EXPECT_FALSE(FindAction("File/Close")->isEnabled());
    workbench_->CloseRecording();
    EXPECT_STREQ(takeLog_(), "");

    Show();
    EXPECT_EQ(Docks().All().size(), 1U) << "the window was put away, not closed";
    EXPECT_FALSE(IsStartPageShown());
}

TEST_F(WorkbenchTest, AnyProcessorCanBeChosen) {
    Start();
    Show(std::vector<std::uint32_t>{1, 2, 5});
    takeLog_();
    QAction* menu = FindAction("Trace");
    ASSERT_TRUE(menu->isVisible());
    FindAction("Trace/Processor/Processor 5")->trigger();
    EXPECT_EQ(workbench_->Trace().ShownProcessor(), 5U);
    EXPECT_STREQ(takeLog_(), "trace cleared, trace there\ntrace ready, trace there\n");
    EXPECT_TRUE(FindAction("Trace/Processor/Processor 5")->isChecked());
    FindAction("Trace/Processor/Processor 5")->trigger();
    EXPECT_STREQ(takeLog_(), "") << "it is shown already";
    Show();
    EXPECT_FALSE(menu->isVisible()) << "there is nothing to choose";
}

// Commands are asked for their state after what may have changed it, and not while nothing happens.
TEST_F(WorkbenchTest, IdleAsksNoCommand) {
    Start();
    Show();
    int updates = 0;
    workbench_->Docking().onCommandsUpdated = [&] { ++updates; };
    QTest::qWait(200);
    updates = 0;
    QTest::qWait(700);
    EXPECT_EQ(updates, 0);
    QTest::mouseClick(&Window(), Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return updates == 1; }));
    workbench_->Host().Broadcast(host::kEventDisplayChanged);
    EXPECT_TRUE(QTest::qWaitFor([&] { return updates == 2; }));
    workbench_->Docking().onCommandsUpdated = nullptr;  // the Workbench outlives the count
}

TEST_F(WorkbenchTest, ClosedWindowOpensAgain) {
    Start();
    Show();
    DockingWindow* dock = Docks().All().front();
    set_(test::kRefuseClose, 1);
    takeLog_();
    BoxAnswer box;
    dock->close();
    EXPECT_STREQ(takeLog_(), "close request OS Trace\n");
    EXPECT_EQ(Docks().All().size(), 1U);
    EXPECT_EQ(box.texts, QStringList("OS Trace cannot be closed now.")) << "it says why";
    set_(test::kRefuseClose, 0);
    dock->close();
    EXPECT_TRUE(Docks().All().empty());
    EXPECT_EQ(FindAction("OS Trace"), nullptr) << "its menu went with it";
    EXPECT_TRUE(IsStartPageShown());
    takeLog_();

    FindAction("View/RTOS/OS Analyze")->trigger();
    EXPECT_STREQ(takeLog_(), "created {WK_00000001_OSANALYZE}\n");
    FindAction("View/RTOS/OSTrace")->trigger();
    EXPECT_STREQ(takeLog_(), "created {WK_00000001_OSTRACE}\n");
    FindAction("View/RTOS/OSTrace")->trigger();
    EXPECT_STREQ(takeLog_(), "") << "open already";
}

TEST_F(WorkbenchTest, DockingStatesAreTheOnesThatComponentsRead) {
    Start();
    Show();
    DockingWindow& dock = *Docks().All().front();
    EXPECT_EQ(dock.State(), kDockShow | kDockMayDock);
    FindAction("OS Trace/Allow Docking")->trigger();
    EXPECT_EQ(dock.State(), kDockShow | kDockFloating);
    EXPECT_FALSE(FindAction("OS Trace/Allow Docking")->isChecked());
    FindAction("OS Trace/Allow Docking")->trigger();
    EXPECT_EQ(dock.State(), kDockShow | kDockMayDock);
    EXPECT_TRUE(FindAction("OS Trace/Allow Docking")->isChecked());
    FindAction("OS Trace/Hide")->trigger();
    EXPECT_EQ(dock.State(), kDockHide | kDockMayDock);
    EXPECT_TRUE(IsStartPageShown());
    FindAction("View/RTOS/OSTrace")->trigger();
    EXPECT_EQ(dock.State(), kDockShow | kDockMayDock);
}

TEST_F(WorkbenchTest, DockingWindowThatNobodyFillsGoesWhenItIsHidden) {
    Start();
    IQDockingHost& docking = workbench_->Docking();
    HWND window = nullptr;
    Bstr given;
    ASSERT_EQ(docking.CreateDockingWindow(Bstr("{X}").Get(), Bstr("X").Get(), 0x1804, 59422,
                                          &window, given.Receive()),
              S_OK);
    EXPECT_EQ(docking.SetWindowState(window, kDockShow), S_OK);
    EXPECT_EQ(docking.SetWindowState(window, kDockHide), S_OK);
    EXPECT_TRUE(Docks().All().empty());
    HWND found = nullptr;
    EXPECT_TRUE(
        Failed(docking.FindDockingWindow(given.Get(), Bstr("X").Get(), 0x10, 59422, &found)));
    EXPECT_TRUE(Failed(docking.SetWindowState(window, kDockShow)));
}

TEST_F(WorkbenchTest, ToolbarOfAWindowIsShownHiddenAndRemembered) {
    Start();
    Show();
    const auto isShown = [this] {
        return !workbench_->Docking().Toolbar("{WK_00000001_OSTRACE}/toolbar")->isHidden();
    };
    EXPECT_TRUE(isShown());
    FindAction("OS Trace/Toolbar display")->trigger();
    EXPECT_FALSE(isShown());
    EXPECT_FALSE(FindAction("OS Trace/Customize toolbar...")->isEnabled());
    Docks().All().front()->close();
    FindAction("View/RTOS/OSTrace")->trigger();
    EXPECT_FALSE(isShown());
}

TEST_F(WorkbenchTest, MenuFollowsTheActiveWindow) {
    Start();
    Window().show();
    Show();
    FindAction("View/RTOS/OS Analyze")->trigger();
    EXPECT_NE(FindAction("OS Analyze"), nullptr);
    EXPECT_EQ(FindAction("OS Trace"), nullptr);
    Docks().Activate(Docks().All().front());
    EXPECT_NE(FindAction("OS Trace"), nullptr);
    EXPECT_EQ(FindAction("OS Analyze"), nullptr);
    EXPECT_EQ(Window().menuBar()->actions().last()->text(), "&Help") << "before Help";
    workbench_->Docking().Toolbar("{WK_00000001_OSANALYZE}/toolbar")->Find(47100)->trigger();
    EXPECT_NE(FindAction("OS Analyze"), nullptr) << "its toolbar was used";
}

TEST_F(WorkbenchTest, TwoWindowsShareTheHeightNotTheWidth) {
    ShowBothWindows();
    const DockingWindow& trace = *Docks().All()[0];
    const DockingWindow& analyze = *Docks().All()[1];
    EXPECT_EQ(trace.width(), analyze.width());
    EXPECT_LT(trace.geometry().bottom(), analyze.geometry().top());
}

TEST_F(WorkbenchTest, LayoutComesBackInTheNextRun) {
    ShowBothWindows();
    Window().resizeDocks({Docks().All()[0], Docks().All()[1]}, {150, 450}, Qt::Vertical);
    QApplication::processEvents();
    const QRect trace = Docks().All()[0]->geometry();
    const QRect analyze = Docks().All()[1]->geometry();
    ASSERT_LT(trace.height(), analyze.height());
    Window().close();
    workbench_ = std::make_unique<Workbench>(settings_);
    Start();
    Window().show();
    EXPECT_EQ(Window().size(), QSize(900, 700));
    Show();
    FindAction("View/RTOS/OS Analyze")->trigger();
    QApplication::processEvents();
    EXPECT_EQ(Docks().All()[0]->geometry(), trace);
    EXPECT_EQ(Docks().All()[1]->geometry(), analyze);
}

TEST_F(WorkbenchTest, WhatCannotBeReadLeavesWhatIsOpen) {
    Start();
    Show();
    takeLog_();
    const QTemporaryDir folder;
    QFile empty(folder.filePath("empty.log"));
    ASSERT_TRUE(empty.open(QIODevice::WriteOnly));
    empty.close();
    for (const QString& path : {QString("/nowhere/at/all.log"), empty.fileName(), folder.path()}) {
        BoxAnswer box;
        EXPECT_FALSE(workbench_->Open(path));
        ASSERT_EQ(box.texts.size(), 1) << path.toStdString();
        EXPECT_TRUE(box.texts[0].contains(QFileInfo(path).fileName()))
            << box.texts[0].toStdString();
    }
    EXPECT_STREQ(takeLog_(), "");
    EXPECT_TRUE(Window().windowTitle().startsWith("made-up.log"));
    EXPECT_TRUE(Window().Recent().List().isEmpty());
}

// File dialogs begin where the last file was, and never where there is nothing.
TEST_F(WorkbenchTest, AFolderThatIsNotThereIsNotRemembered) {
    Start();
    const QTemporaryDir folder;
    Window().RememberFolderOf(folder.filePath("day.kvxw"));
    Window().RememberFolderOf("/nowhere/at/all.log");
    EXPECT_EQ(Window().LastFolder(), folder.path());
    ASSERT_TRUE(workbench_->OpenDemonstration());
    BoxAnswer box;
    EXPECT_FALSE(workbench_->SaveRecording("/nowhere/at/all.log"));
    ASSERT_EQ(box.texts.size(), 1);
    EXPECT_TRUE(box.texts[0].contains("/nowhere/at/all.log")) << box.texts[0].toStdString();
}

TEST_F(WorkbenchTest, LogOpensByDropAndIsRemembered) {
    Start();
    const QTemporaryDir folder;
    QFile log(folder.filePath("small.log"));
    ASSERT_TRUE(log.open(QIODevice::WriteOnly));
    log.write("[10] dispatch to task 1.\n[20] dispatch from task 1.\n[30] dispatch to task 2.\n");
    log.close();
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(log.fileName())});
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Window(), &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Window(), &drop);
    QApplication::processEvents();
    ASSERT_NE(workbench_->Trace().GetRecording(), nullptr);
    EXPECT_EQ(workbench_->Trace().GetRecording()->RecordCount(), 3U);
    EXPECT_TRUE(Window().windowTitle().startsWith("small.log"));
    EXPECT_EQ(Window().Recent().List(), QStringList(log.fileName()));
    EXPECT_NE(FindAction("File/Open Recent"), nullptr);
}

TEST_F(WorkbenchTest, LossesStandInTheStatusLineWithTheirMeaning) {
    Start();
    auto* indicator = Window().findChild<QToolButton*>("losses");
    ASSERT_NE(indicator, nullptr);
    Show();
    EXPECT_TRUE(indicator->isHidden());
    auto recording = std::make_unique<TestRecording>();
    recording->Lose(service::Loss::CutRecord, 1);
    recording->Lose(service::Loss::UnreadableRecords, 1233);
    recording->Warn("a < b");
    Show(std::move(recording));
    EXPECT_FALSE(indicator->isHidden());
    EXPECT_TRUE(indicator->text().remove(',').startsWith("1234 losses"))
        << indicator->text().toStdString();
    BoxAnswer box;
    indicator->click();
    ASSERT_EQ(box.texts.size(), 1);
    const auto help = service::GetLossInfo(service::Loss::CutRecord).help;
    EXPECT_TRUE(box.texts[0].contains(FromUtf8(help).toHtmlEscaped()));
    EXPECT_TRUE(box.texts[0].contains("a &lt; b")) << "texts of a file are no markup";
    workbench_->CloseRecording();
    EXPECT_TRUE(indicator->isHidden());
}

TEST_F(WorkbenchTest, KeysReachTheWindowThatHasTheFocus) {
    Start();
    Window().show();
    Show();
    QApplication::setActiveWindow(&Window());
    QWidget* control = Docks().All().front()->Area().findChild<QWidget*>();
    control->setFocus();
    takeLog_();
    QTest::keyClick(control, Qt::Key_M);
    EXPECT_STREQ(takeLog_(), "command 47100\n");
    EXPECT_TRUE(FindAction("OS Trace/Start Marker")->isChecked());

    // The same key in the other window is that window's command.
    FindAction("View/RTOS/OS Analyze")->trigger();
    Docks().All().back()->Area().findChild<QWidget*>()->setFocus();
    takeLog_();
    QTest::keyClick(&Window(), Qt::Key_M);
    EXPECT_STREQ(takeLog_(), "command 47100\n");
    EXPECT_TRUE(FindAction("OS Analyze/Start Marker")->isChecked());
    EXPECT_TRUE(Docks().All().front()->Menu()->actions().front()->isChecked()) << "as it was";
}

}  // namespace
}  // namespace kvx::desktop
