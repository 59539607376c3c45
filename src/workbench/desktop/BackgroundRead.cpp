#include "workbench/desktop/BackgroundRead.h"

#include <QEventLoop>
#include <QProgressDialog>
#include <QTimer>
#include <atomic>
#include <chrono>
#include <future>

namespace kvx::desktop {
namespace {

constexpr auto kUnnoticed = std::chrono::milliseconds(250);
constexpr int kPollMilliseconds = 50;
constexpr int kPerMille = 1000;

// Written by the reading thread, read by the window.
class SharedProgress final : public formats::IOpenProgress {
  public:
    bool Progress(std::uint64_t done, std::uint64_t total) override {
        if (total > 0) {
            perMille_ = static_cast<int>(static_cast<double>(done) / static_cast<double>(total) *
                                         kPerMille);
        }
        return !cancelled_;
    }
    void Cancel() { cancelled_ = true; }
    // Negative: not known.
    int PerMille() const { return perMille_; }

  private:
    std::atomic<int> perMille_{-1};
    std::atomic<bool> cancelled_{false};
};

OpenedRecording Guard(const ReadRecording& read, SharedProgress& progress) {
    try {
        return read(progress);
    } catch (const std::exception& failure) {
        return Error{failure.what()};
    }
}

bool IsReady(const std::future<OpenedRecording>& opened) {
    return opened.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

// Until the reading thread has ended, which it also does soon after a cancel.
void WaitWithDialog(const QString& name, QWidget* parent,
                    const std::future<OpenedRecording>& opened, SharedProgress& progress) {
    QProgressDialog dialog("Reading " + name + "…", "Cancel", 0, 0, parent);
    dialog.setWindowModality(Qt::WindowModal);
    dialog.setMinimumDuration(0);
    dialog.setAutoReset(false);
    dialog.setMinimumWidth(360);
    QObject::connect(&dialog, &QProgressDialog::canceled, [&] { progress.Cancel(); });

    QEventLoop loop;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        if (IsReady(opened)) return loop.quit();
        if (progress.PerMille() < 0 || dialog.wasCanceled()) return;
        dialog.setMaximum(kPerMille);
        dialog.setValue(progress.PerMille());
    });
    poll.start(kPollMilliseconds);
    dialog.show();
    loop.exec();
}

}  // namespace

OpenedRecording ReadInBackground(const QString& name, const ReadRecording& read, QWidget* parent) {
    SharedProgress progress;
    std::future<OpenedRecording> opened =
        std::async(std::launch::async, [&] { return Guard(read, progress); });
    if (opened.wait_for(kUnnoticed) != std::future_status::ready) {
        WaitWithDialog(name, parent, opened, progress);
    }
    return opened.get();
}

}  // namespace kvx::desktop
