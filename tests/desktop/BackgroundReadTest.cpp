#include "workbench/desktop/BackgroundRead.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <atomic>
#include <chrono>
#include <future>
#include <thread>

#include "TestRecording.h"

namespace kvx::desktop {
namespace {

constexpr std::chrono::seconds kPatience(60);  // a busy machine is slow

OpenedRecording Opened() {
    return std::unique_ptr<service::Recording>(new test::TestRecording);
}

// Reads on and on until it is told to stop.
OpenedRecording ReadEndlessly(formats::IOpenProgress& progress) {
    while (progress.Progress(1, 1000)) std::this_thread::yield();
    return Error{"stopped", true};
}

// Looks at the dialog again and again while the reading goes on.
class Watch {
  public:
    explicit Watch(std::function<void(QWidget& dialog)> look) {
        QObject::connect(&timer_, &QTimer::timeout, [look] {
            if (QWidget* dialog = QApplication::activeModalWidget()) look(*dialog);
        });
        timer_.start(10);
    }

  private:
    QTimer timer_;
};

OpenedRecording Finish(const QString& name, ReadRecording read) {
    return BackgroundRead(std::move(read)).Finish(name, nullptr);
}

TEST(BackgroundRead, ShortReadsShowNothing) {
    std::promise<void> ended;
    bool shown = false;
    const Watch watch([&](QWidget&) { shown = true; });
    BackgroundRead reading([&ended](auto&) {
        ended.set_value_at_thread_exit();
        return Opened();
    });
    ended.get_future().wait();
    EXPECT_TRUE(reading.Finish("small.log", nullptr));
    EXPECT_FALSE(shown);
}

TEST(BackgroundRead, LongReadsShowHowFarTheyAreAndTheWindowLives) {
    std::promise<void> seen;
    QString label;
    const Watch watch([&](QWidget& dialog) {
        if (dialog.findChild<QProgressBar*>()->value() != 600 || !label.isEmpty()) return;
        label = dialog.findChild<QLabel*>()->text();
        seen.set_value();
    });
    const OpenedRecording opened = Finish("long.log", [&seen](auto& progress) {
        EXPECT_TRUE(progress.Progress(3, 5));
        EXPECT_EQ(seen.get_future().wait_for(kPatience), std::future_status::ready);
        return Opened();
    });
    EXPECT_TRUE(opened);
    EXPECT_TRUE(label.contains("long.log")) << label.toStdString();
}

TEST(BackgroundRead, FirstLookTakesTheBeginningAndReadingGoesOn) {
    std::promise<void> looked;
    BackgroundRead reading([&looked](auto& progress) {
        EXPECT_TRUE(progress.WantsBeginning());
        progress.Beginning(std::make_unique<test::TestRecording>());
        EXPECT_EQ(looked.get_future().wait_for(kPatience), std::future_status::ready);
        progress.Progress(7, 0);
        return OpenedRecording(std::make_unique<test::TestRecording>(std::vector{0u}, 5000));
    });
    const OpenedRecording first = reading.FirstLook("long", nullptr);
    ASSERT_TRUE(first);
    EXPECT_EQ((*first)->LastTime(), 190);
    EXPECT_TRUE(reading.IsReading());
    EXPECT_FALSE(reading.IsReady());
    looked.set_value();
    const OpenedRecording whole = reading.Finish("long", nullptr);
    ASSERT_TRUE(whole);
    EXPECT_EQ((*whole)->LastTime(), 4990);
    EXPECT_EQ(reading.Done(), 7u);
    EXPECT_FALSE(reading.IsReading());
}

TEST(BackgroundRead, FirstLookOfAShortRecordingIsAllOfIt) {
    BackgroundRead reading([](auto&) { return Opened(); });
    EXPECT_TRUE(reading.FirstLook("short", nullptr));
    EXPECT_FALSE(reading.IsReading());
}

TEST(BackgroundRead, CancelStopsTheReading) {
    const Watch watch([](QWidget& dialog) { dialog.findChild<QPushButton*>()->click(); });
    const OpenedRecording opened = Finish("endless.log", ReadEndlessly);
    ASSERT_FALSE(opened);
    EXPECT_TRUE(opened.GetError().cancelled);
}

TEST(BackgroundRead, StopsWhenNobodyWaitsForIt) {
    std::atomic<bool> stopped = false;
    BackgroundRead([&stopped](auto& progress) {
        OpenedRecording opened = ReadEndlessly(progress);
        stopped = true;
        return opened;
    });
    EXPECT_TRUE(stopped);
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
