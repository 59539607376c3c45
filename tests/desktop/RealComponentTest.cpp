// The Workbench with the component that it ships with.

#include <gtest/gtest.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <future>
#include <thread>

#include "TestRecording.h"
#include "host/CommandIds.h"
#include "host/OSTraceRange.h"
#include "host/Services.h"
#include "workbench/desktop/Workbench.h"
#include "workbench/service/DecodedRecording.h"

namespace kvx::desktop {
namespace {

class RealComponent : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(workbench_.Start(QString::fromLocal8Bit(qgetenv("KVX_BIN_DIR"))), "");
        workbench_.Window().resize(900, 600);
        workbench_.Window().show();
        auto trace = std::make_unique<service::TraceService>();
        trace->SetRecording(std::make_unique<test::TestRecording>());
        ASSERT_TRUE(workbench_.Show(std::move(trace)));
        QApplication::processEvents();
    }
    DockingWindow& Dock() { return *workbench_.Docking().Windows().All().back(); }
    QAction* Command(std::uint32_t id) {
        for (QAction* action : Dock().Menu()->actions()) {
            if (action->data().toUInt() == id) return action;
        }
        return nullptr;
    }

    Settings settings_;
    Workbench workbench_{settings_};
};

// They close while the debugger is there.
TEST(RealComponentEnd, WindowsKeepTheirSettings) {
    Settings settings;
    {
        Workbench workbench(settings);
        ASSERT_EQ(workbench.Start(QString::fromLocal8Bit(qgetenv("KVX_BIN_DIR"))), "");
        auto trace = std::make_unique<service::TraceService>();
        trace->SetRecording(std::make_unique<test::TestRecording>());
        ASSERT_TRUE(workbench.Show(std::move(trace)));
        QApplication::processEvents();
        EXPECT_FALSE(settings.Get("View/OSTraceViewView").isValid());
    }
    EXPECT_EQ(settings.Get("View/OSTraceViewView").toString(), "5,8,5,12,0");
}

TEST_F(RealComponent, FillsItsDockingWindow) {
    EXPECT_EQ(workbench_.Docking().Windows().All().size(), 1U);
    const auto children = Dock().Area().findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
    ASSERT_EQ(children.size(), 1);
    EXPECT_EQ(children[0]->geometry(), Dock().Area().rect());
    EXPECT_GT(Dock().Area().height(), 350);
}

TEST_F(RealComponent, RightClickOpensTheWindowsMenu) {
    const QPoint centre = Dock().Area().rect().center();
    QWidget* under = Dock().Area().childAt(centre);
    ASSERT_NE(under, nullptr);
    QContextMenuEvent event(QContextMenuEvent::Mouse, under->mapFrom(&Dock().Area(), centre),
                            Dock().Area().mapToGlobal(centre));
    QApplication::sendEvent(under, &event);
    EXPECT_TRUE(Dock().Menu()->isVisible());
    Dock().Menu()->close();
}

TEST_F(RealComponent, CommandsKnowThatARecordingIsOpenAndNothingRuns) {
    workbench_.Docking().UpdateCommands();
    EXPECT_TRUE(Command(ids::kExpand)->isEnabled());
    EXPECT_FALSE(Command(ids::kTraceStop)->isEnabled());
    EXPECT_FALSE(Command(ids::kTraceRestart)->isEnabled());
    EXPECT_TRUE(Command(ids::kHide)->isEnabled());
    EXPECT_TRUE(Command(ids::kToolbarDisplay)->isChecked());
    workbench_.CloseRecording();
    EXPECT_FALSE(Command(ids::kExpand)->isEnabled());
}

TEST_F(RealComponent, ClosesAndOpensAgainWithTheTrace) {
    Dock().close();
    EXPECT_TRUE(workbench_.Docking().Windows().All().empty());
    workbench_.OpenTraceWindow();
    QApplication::processEvents();
    ASSERT_EQ(workbench_.Docking().Windows().All().size(), 1U);
    workbench_.Docking().UpdateCommands();
    EXPECT_TRUE(Command(ids::kExpand)->isEnabled()) << "it found the trace";
}

// What the status line tells of the recording is decoded, whoever shows it.
TEST_F(RealComponent, ClosingTheWindowLeavesTheCountOfNotes) {
    workbench_.Trace().Decoded()->WaitForAll();
    const auto told = [this] {
        workbench_.Docking().UpdateCommands();
        return workbench_.Window().findChild<QToolButton*>("losses")->text();
    };
    const QString before = told();
    EXPECT_TRUE(before.endsWith(" notes")) << before.toStdString();
    Dock().close();
    EXPECT_EQ(told(), before);
    workbench_.OpenTraceWindow();
    EXPECT_EQ(told(), before);
}

// The window that shows the trace has the keyboard from the start, without a click.
TEST_F(RealComponent, KeysReachTheChartOfAWindowThatOpened) {
    const auto displayed = [this] {
        auto* range = host::Service<host::IQOSTraceRange>(&workbench_.Host(), host::kOSTraceRange);
        host::OSTracePosition position;
        EXPECT_EQ(range->GetPosition(&position), S_OK);
        return position.displayEnd - position.displayStart;
    };
    for (const bool reopened : {false, true}) {
        if (reopened) {
            Dock().close();
            workbench_.OpenTraceWindow();
        }
        workbench_.Window().activateWindow();
        QApplication::processEvents();
        const double before = displayed();
        QWidget* focus = QApplication::focusWidget();
        ASSERT_NE(focus, nullptr);
        QTest::keyClicks(focus, "+");
        EXPECT_LT(displayed(), before) << reopened;
    }
}

// What takes long to read is shown from its beginning; the whole takes its place and leaves the
// display where the user has been meanwhile.
TEST_F(RealComponent, BeginningIsShownUntilTheWholeIsRead) {
    const auto position = [this] {
        auto* range = host::Service<host::IQOSTraceRange>(&workbench_.Host(), host::kOSTraceRange);
        host::OSTracePosition now;
        EXPECT_EQ(range->GetPosition(&now), S_OK);
        return now;
    };
    for (const bool looksAround : {false, true}) {
        std::promise<void> goOn;
        auto reading = std::make_unique<BackgroundRead>([&goOn](auto& progress) {
            progress.Beginning(std::make_unique<test::TestRecording>());
            goOn.get_future().wait();
            return OpenedRecording(std::make_unique<test::TestRecording>(std::vector{0u}, 5000));
        });
        ASSERT_TRUE(workbench_.Open(QString("/somewhere/made-up"), std::move(reading)));
        EXPECT_EQ(position().displayEnd, 190);
        EXPECT_TRUE(workbench_.Window().statusBar()->currentMessage().contains("beginning"));
        if (looksAround) Command(ids::kExpand)->trigger();
        const host::OSTracePosition before = position();
        goOn.set_value();
        while (workbench_.Window().statusBar()->currentMessage().contains("beginning"))
            QApplication::processEvents();
        EXPECT_EQ(workbench_.Trace().GetRecording()->LastTime(), 4990);
        if (looksAround)
            EXPECT_EQ(position(), before);
        else
            EXPECT_GT(position().displayEnd, 190);
        EXPECT_EQ(workbench_.Docking().Windows().All().size(), 1U);
    }
}

TEST_F(RealComponent, ReadingEndsWithWhatIsShownOfIt) {
    std::atomic<bool> stopped = false;
    auto reading = std::make_unique<BackgroundRead>([&stopped](auto& progress) {
        progress.Beginning(std::make_unique<test::TestRecording>());
        while (progress.Progress(1, 0)) std::this_thread::yield();
        stopped = true;
        return OpenedRecording(Error{"stopped", true});
    });
    ASSERT_TRUE(workbench_.Open(QString("/somewhere/made-up"), std::move(reading)));
    workbench_.CloseRecording();
    EXPECT_TRUE(stopped);
    EXPECT_EQ(workbench_.Window().statusBar()->currentMessage(), "");
}

TEST_F(RealComponent, FileDroppedOnTheChartOpens) {
    const QTemporaryDir folder;
    QFile log(folder.filePath("dropped.log"));
    ASSERT_TRUE(log.open(QIODevice::WriteOnly));
    log.write("[10] dispatch to task 1.\n[20] dispatch to task 2.\n");
    log.close();
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(log.fileName())});
    const QPoint centre = Dock().Area().rect().center();
    QWidget* under = Dock().Area().childAt(centre);
    const QPoint at = under->mapFrom(&Dock().Area(), centre);
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(under, &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(under, &drop);
    QApplication::processEvents();
    EXPECT_TRUE(workbench_.Window().windowTitle().startsWith("dropped.log"));
}

}  // namespace
}  // namespace kvx::desktop
