#pragma once
// Reads a recording on a thread of its own, so that the window stays alive, with progress and
// cancel.

#include <QWidget>
#include <atomic>
#include <functional>
#include <future>
#include <memory>
#include <mutex>

#include "workbench/desktop/TraceFiles.h"
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

    // Answers what read answered, and ends reading; to be called once. When that takes noticeable
    // time, a dialog over the parent shows the name and how far it is, and lets the user cancel it;
    // the error is then marked as cancelled.
    OpenedRecording Finish(const QString& name, QWidget* parent);
    // The same, but for a recording that takes long to read: of that the beginning, as soon as it
    // is there. Reading goes on then; what it comes to is asked for with IsReady and Finish.
    OpenedRecording FirstLook(const QString& name, QWidget* parent);
    // Reading goes on after a first look.
    bool IsReading() const { return opened_.valid(); }
    bool IsReady() const;
    // Events or bytes read so far.
    std::uint64_t Done() const { return progress_.done; }

  private:
    // Written by the reading thread, read by the window.
    class SharedProgress final : public formats::IOpenProgress {
      public:
        bool Progress(std::uint64_t done, std::uint64_t total) override;
        bool WantsBeginning() const override { return true; }
        void Beginning(std::unique_ptr<service::Recording> beginning) override;
        // Null: it is not there, or was taken.
        std::unique_ptr<service::Recording> TakeBeginning();
        bool HasBeginning() const;

        std::atomic<int> perMille{-1};  // negative: not known
        std::atomic<std::uint64_t> done{0};
        std::atomic<bool> cancelled{false};

      private:
        mutable std::mutex mutex_;
        std::unique_ptr<service::Recording> beginning_;
    };

    OpenedRecording Read();
    // Until done answers true.
    void WaitWithDialog(const QString& name, QWidget* parent, const std::function<bool()>& done);

    ReadRecording read_;
    SharedProgress progress_;
    std::future<OpenedRecording> opened_;
};

// Starts reading the files or the folder, whatever their format.
std::unique_ptr<BackgroundRead> StartReading(const TraceFiles& files,
                                             formats::OpenOptions options = {});

}  // namespace kvx::desktop
