#include "workbench/desktop/BackgroundRead.h"

#include <QEventLoop>
#include <QFile>
#include <QProgressDialog>
#include <QTimer>
#include <chrono>

namespace kvx::desktop {
namespace {

constexpr auto kUnnoticed = std::chrono::milliseconds(250);
constexpr int kPollMilliseconds = 20;
constexpr int kPerMille = 1000;

}  // namespace

BackgroundRead::BackgroundRead(ReadRecording read)
    : read_(std::move(read)), opened_(std::async(std::launch::async, [this] { return Read(); })) {}

BackgroundRead::~BackgroundRead() {
    progress_.cancelled = true;
    if (opened_.valid()) opened_.wait();
}

OpenedRecording BackgroundRead::Finish(const QString& name, QWidget* parent) {
    if (opened_.wait_for(kUnnoticed) != std::future_status::ready)
        WaitWithDialog(name, parent, [this] { return IsReady(); });
    return opened_.get();
}

OpenedRecording BackgroundRead::FirstLook(const QString& name, QWidget* parent) {
    if (opened_.wait_for(kUnnoticed) != std::future_status::ready)
        WaitWithDialog(name, parent, [this] { return IsReady() || progress_.HasBeginning(); });
    if (IsReady()) return opened_.get();
    return progress_.TakeBeginning();
}

void BackgroundRead::SharedProgress::Beginning(std::unique_ptr<service::Recording> beginning) {
    const std::lock_guard guard(mutex_);
    beginning_ = std::move(beginning);
}

std::unique_ptr<service::Recording> BackgroundRead::SharedProgress::TakeBeginning() {
    const std::lock_guard guard(mutex_);
    return std::move(beginning_);
}

bool BackgroundRead::SharedProgress::HasBeginning() const {
    const std::lock_guard guard(mutex_);
    return beginning_ != nullptr;
}

bool BackgroundRead::SharedProgress::Progress(std::uint64_t soFar, std::uint64_t total) {
    done = soFar;
    if (total > 0) {
        perMille =
            static_cast<int>(static_cast<double>(soFar) / static_cast<double>(total) * kPerMille);
    }
    return !cancelled;
}

OpenedRecording BackgroundRead::Read() {
    try {
        return read_(progress_);
    } catch (const std::exception& failure) {
        return Error{failure.what()};
    }
}

bool BackgroundRead::IsReady() const {
    return opened_.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

// A cancelled reading ends soon.
void BackgroundRead::WaitWithDialog(const QString& name, QWidget* parent,
                                    const std::function<bool()>& done) {
    if (done()) return;
    QProgressDialog dialog("Reading " + name + "…", "Cancel", 0, 0, parent);
    dialog.setWindowModality(Qt::WindowModal);
    dialog.setMinimumDuration(0);
    dialog.setAutoReset(false);
    dialog.setMinimumWidth(360);
    QObject::connect(&dialog, &QProgressDialog::canceled, [this] { progress_.cancelled = true; });

    QEventLoop loop;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        if (done()) return loop.quit();
        if (progress_.perMille < 0 || dialog.wasCanceled()) return;
        dialog.setMaximum(kPerMille);
        dialog.setValue(progress_.perMille);
    });
    poll.start(kPollMilliseconds);
    dialog.show();
    loop.exec();
}

std::unique_ptr<BackgroundRead> StartReading(const TraceFiles& files,
                                             formats::OpenOptions options) {
    const auto encoded = [](const QString& path) { return QFile::encodeName(path).toStdString(); };
    for (const QString& path : files.More()) options.moreFiles.push_back(encoded(path));
    return std::make_unique<BackgroundRead>(
        [path = encoded(files.First()), options](formats::IOpenProgress& progress) {
            return formats::OpenRecording(path, options, &progress);
        });
}

}  // namespace kvx::desktop
