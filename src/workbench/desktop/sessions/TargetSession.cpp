#include "workbench/desktop/sessions/TargetSession.h"

#include <QFile>
#include <algorithm>

#include "workbench/desktop/QtText.h"
#include "workbench/formats/OpenRecording.h"

namespace kvx::desktop {
namespace {

constexpr int kTickMilliseconds = 20;
// After a pause of the program, for example under a modal dialog, the target does not catch up.
constexpr std::int64_t kLongestTick = 100'000;  // microseconds

}  // namespace

TargetSession::TargetSession(hosting::HostObject& host, WorkbenchServices& services,
                             service::TraceService& trace, std::size_t capacity)
    : host_(host), services_(services), trace_(trace), target_(capacity) {
    trace_.SetMeasurement(&target_);
    services_.Debugger().SetMeasurementAvailable(true);
    host_.Broadcast(host::kEventDebuggerDisconnected);
    host_.Broadcast(host::kEventDebuggerConnected);
    host_.Broadcast(host::kEventTargetConnected);
    QObject::connect(&timer_, &QTimer::timeout, [this] { Tick(); });
}

TargetSession::~TargetSession() {
    SetRunning(false);
    host_.Broadcast(host::kEventTraceCleared);
    host_.Broadcast(host::kEventTargetDisconnected);
    DropRecording();
    services_.Debugger().SetMeasurementAvailable(false);
    host_.Broadcast(host::kEventDebuggerDisconnected);
    host_.Broadcast(host::kEventDebuggerConnected);
    trace_.SetMeasurement(nullptr);
}

// Views that clear their trace reset the measurement; the recording begins after that.
void TargetSession::Go() {
    if (IsRunning()) return;
    host_.Broadcast(host::kEventTraceCleared);
    DropRecording();
    target_.Go();
    isRecording_ = true;
    SetRunning(true);
    Changed();
}

void TargetSession::Stop() {
    if (!IsRunning()) return;
    target_.Halt();
    SetRunning(false);
    FollowRecording();
    Changed();
}

void TargetSession::Reset() {
    SetRunning(false);
    target_.ResetProgram();
    isRecording_ = false;
    host_.Broadcast(host::kEventTraceCleared);
    DropRecording();
    Changed();
}

void TargetSession::SetBufferSize(std::size_t records) {
    target_.Buffer().SetCapacity(records);
    Changed();
}

void TargetSession::Tick() {
    Advance(std::min<std::int64_t>(clock_.nsecsElapsed() / 1000, kLongestTick));
    clock_.restart();
}

void TargetSession::Advance(std::int64_t microseconds) {
    target_.Advance(microseconds);
    FollowRecording();
    Changed();
}

void TargetSession::FollowRecording() {
    const bool recording = target_.Buffer().IsRecording();
    if (recording && trace_.GetRecording()) DropRecording();
    if (std::exchange(isRecording_, recording) && !recording) ShowRecording();
}

void TargetSession::SetRunning(bool running) {
    services_.Running().Set(running);
    if (running) {
        clock_.start();
        timer_.start(kTickMilliseconds);
    } else {
        timer_.stop();
    }
}

void TargetSession::ShowRecording() {
    if (target_.Buffer().Count() == 0) return;
    const QString log = folder_.filePath("simulated-target.log");
    QFile::remove(log);  // an older one may still be mapped
    const std::string path = QFile::encodeName(log).toStdString();
    std::string failure = target_.WriteRecording(path);
    if (failure.empty()) {
        auto recording = formats::OpenRecording(path);
        if (recording) {
            trace_.SetRecording(std::move(*recording));
            trace_.ArrangeLines(lines_);
            host_.Broadcast(host::kEventTraceReady);
            if (onRecordingChanged) onRecordingChanged();
            return;
        }
        failure = recording.GetError().message;
    }
    if (onFailure) onFailure(FromUtf8(failure));
}

void TargetSession::DropRecording() {
    if (!trace_.GetRecording()) return;
    lines_ = trace_.Lines();
    trace_.SetRecording(nullptr);
    if (onRecordingChanged) onRecordingChanged();
}

void TargetSession::Changed() const {
    if (onChanged) onChanged();
}

}  // namespace kvx::desktop
