#pragma once
// A connection to the simulated target: the debugger that components expect. It tells them what
// happens (connected, running, stopped, reset, disconnected), answers whether the target runs, and
// puts what was recorded into the trace service.

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>

#include "hosting/HostObject.h"
#include "workbench/desktop/services/WorkbenchServices.h"
#include "workbench/service/TraceService.h"
#include "workbench/target/SimulatedTarget.h"

namespace kvx::desktop {

class TargetSession {
  public:
    // Connects. All must outlive the session; the trace service has no recording. capacity: records
    // of the trace memory.
    TargetSession(hosting::HostObject& host, WorkbenchServices& services,
                  service::TraceService& trace, std::size_t capacity);
    // Halts and disconnects; the trace service has no recording afterwards.
    ~TargetSession();
    TargetSession(const TargetSession&) = delete;
    TargetSession& operator=(const TargetSession&) = delete;

    // After anything that a display of the target shows has changed.
    std::function<void()> onChanged;
    // The trace service shows another recording, or none.
    std::function<void()> onRecordingChanged;
    // A recording could not be shown: why.
    std::function<void(const QString& message)> onFailure;

    void Go();
    void Stop();
    void Reset();
    bool IsRunning() const { return target_.IsRunning(); }

    const target::RecordBuffer& Buffer() const { return target_.Buffer(); }
    // The recording that is shown is not touched; the target must not run.
    void SetBufferSize(std::size_t records);
    // kRangeFull or kRangeFree.
    std::int32_t RangeCondition() const { return target_.GetRangeCondition(); }
    void SetRangeCondition(std::int32_t condition) { target_.SetRangeCondition(condition); }

    // Lets a running target go on for that long, as the clock does.
    void Advance(std::int64_t microseconds);
    // Shows a recording that ended and takes away one that was given up for a new one. To be called
    // after components may have stopped or restarted the recording.
    void FollowRecording();

  private:
    void Tick();
    void SetRunning(bool running);
    void ShowRecording();
    void DropRecording();
    void Changed() const;

    hosting::HostObject& host_;
    WorkbenchServices& services_;
    service::TraceService& trace_;
    target::SimulatedTarget target_;
    QTemporaryDir folder_;
    QTimer timer_;
    QElapsedTimer clock_;
    bool isRecording_ = false;        // as far as components were told
    service::LineArrangement lines_;  // of the recording that was shown last
};

}  // namespace kvx::desktop
