#include "workbench/desktop/BackgroundRead.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <thread>

#include "TestRecording.h"

namespace kvx::desktop {
namespace {

using namespace std::chrono_literals;

// Reads in steps until it is told to stop.
OpenedRecording ReadSlowly(formats::IOpenProgress& progress, std::uint64_t steps) {
    for (std::uint64_t i = 0; i < steps; ++i) {
        std::this_thread::sleep_for(5ms);
        if (!progress.Progress(i, steps)) return Error{"stopped", true};
    }
    return std::unique_ptr<service::Recording>(new test::TestRecording);
}

// Looks at the windows again and again while the reading goes on.
class Watch {
  public:
    explicit Watch(std::function<void(QWidget& dialog)> look) {
        QObject::connect(&timer_, &QTimer::timeout, [this, look] {
            ++turns;
            if (QWidget* dialog = QApplication::activeModalWidget()) look(*dialog);
        });
        timer_.start(10);
    }
    int turns = 0;

  private:
    QTimer timer_;
};

OpenedRecording Finish(const QString& name, ReadRecording read) {
    return BackgroundRead(std::move(read)).Finish(name, nullptr);
}

TEST(BackgroundRead, ShortReadsShowNothing) {
    bool shown = false;
    const Watch watch([&](QWidget&) { shown = true; });
    const OpenedRecording opened =
        Finish("small.log", [](auto& progress) { return ReadSlowly(progress, 3); });
    EXPECT_TRUE(opened);
    EXPECT_FALSE(shown);
}

TEST(BackgroundRead, LongReadsShowHowFarTheyAreAndTheWindowLives) {
    int highest = -1;
    QString label;
    Watch watch([&](QWidget& dialog) {
        highest = std::max(highest, dialog.findChild<QProgressBar*>()->value());
        label = dialog.findChild<QLabel*>()->text();
    });
    const OpenedRecording opened =
        Finish("long.log", [](auto& progress) { return ReadSlowly(progress, 120); });
    EXPECT_TRUE(opened);
    EXPECT_GT(highest, 500) << "of 1000";
    EXPECT_TRUE(label.contains("long.log"));
    EXPECT_GT(watch.turns, 10) << "events were served meanwhile";
}

TEST(BackgroundRead, CancelStopsTheReading) {
    const Watch watch([](QWidget& dialog) { dialog.findChild<QPushButton*>()->click(); });
    QElapsedTimer timer;
    timer.start();
    const OpenedRecording opened =
        Finish("endless.log", [](auto& progress) { return ReadSlowly(progress, 100'000); });
    ASSERT_FALSE(opened);
    EXPECT_TRUE(opened.GetError().cancelled);
    EXPECT_LT(timer.elapsed(), 20'000);
}

TEST(BackgroundRead, StopsWhenNobodyWaitsForIt) {
    QElapsedTimer timer;
    timer.start();
    BackgroundRead([](auto& progress) { return ReadSlowly(progress, 100'000); });
    EXPECT_LT(timer.elapsed(), 20'000);
}

TEST(BackgroundRead, ThrownFailuresBecomeErrors) {
    const OpenedRecording opened =
        Finish("broken.log", [](auto&) -> OpenedRecording { throw std::runtime_error("broken"); });
    ASSERT_FALSE(opened);
    EXPECT_EQ(opened.GetError().message, "broken");
    EXPECT_FALSE(opened.GetError().cancelled);
}

}  // namespace
}  // namespace kvx::desktop
