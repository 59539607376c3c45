#pragma once
// Reads a recording on a thread of its own, so that the window stays alive, with progress and
// cancel.

#include <QWidget>
#include <atomic>
#include <functional>
#include <future>
#include <memory>

#include "workbench/formats/OpenRecording.h"

namespace kvx::desktop {

using OpenedRecording = Result<std::unique_ptr<service::Recording>>;
// Runs on the thread. It stops soon after the progress answers false; what it throws becomes an
// error.
using ReadRecording = std::function<OpenedRecording(formats::IOpenProgress& progress)>;

class BackgroundRead {
  public:
    // Starts reading at once; no application object is needed for it.
    explicit BackgroundRead(ReadRecording read);
    // Stops reading and waits for that.
    ~BackgroundRead();
    BackgroundRead(const BackgroundRead&) = delete;
    BackgroundRead& operator=(const BackgroundRead&) = delete;

    // Answers what read answered; to be called once. When that takes noticeable time, a dialog over
    // the parent shows the name and how far it is, and lets the user cancel it; the error is then
    // marked as cancelled.
    OpenedRecording Finish(const QString& name, QWidget* parent);

  private:
    // Written by the reading thread, read by the window.
    class SharedProgress final : public formats::IOpenProgress {
      public:
        bool Progress(std::uint64_t done, std::uint64_t total) override;
        std::atomic<int> perMille{-1};  // negative: not known
        std::atomic<bool> cancelled{false};
    };

    OpenedRecording Read();
    bool IsReady() const;
    void WaitWithDialog(const QString& name, QWidget* parent);

    ReadRecording read_;
    SharedProgress progress_;
    std::future<OpenedRecording> opened_;
};

// Starts reading the file or folder, whatever its format.
std::unique_ptr<BackgroundRead> StartReading(const std::string& path);

}  // namespace kvx::desktop
