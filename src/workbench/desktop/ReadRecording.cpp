#include "workbench/desktop/ReadRecording.h"

#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QProgressDialog>
#include <QTimer>
#include <atomic>
#include <chrono>
#include <future>

namespace kvx::desktop {
namespace {

using Opened = Result<std::unique_ptr<service::Recording>>;

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

Opened Read(const std::string& path, SharedProgress& progress) {
    try {
        return formats::OpenRecording(path, {}, &progress);
    } catch (const std::exception& failure) {
        return Error{path + ": " + failure.what()};
    }
}

bool IsReady(const std::future<Opened>& opened) {
    return opened.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

// Until the reading thread has ended, which it also does soon after a cancel.
void WaitWithDialog(const QString& path, QWidget* parent, const std::future<Opened>& opened,
                    SharedProgress& progress) {
    QProgressDialog dialog("Reading " + QFileInfo(path).fileName() + "…", "Cancel", 0, 0, parent);
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

Opened ReadRecording(const QString& path, QWidget* parent) {
    SharedProgress progress;
    std::future<Opened> opened = std::async(
        std::launch::async,
        [name = QFile::encodeName(path).toStdString(), &progress] { return Read(name, progress); });
    if (opened.wait_for(kUnnoticed) != std::future_status::ready) {
        WaitWithDialog(path, parent, opened, progress);
    }
    return opened.get();
}

}  // namespace kvx::desktop
