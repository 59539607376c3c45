// Commands that set how the chart looks and what is measured.

#include "display/DlgOSTraceColor.h"
#include "display/DlgOSTraceValue.h"
#include "host/DebuggerFunctions.h"
#include "host/OSTraceService.h"
#include "traceview/TraceCommands.h"
#include "traceview/TraceView.h"

namespace {

constexpr std::uintptr_t kMeasuringService = 1050;
constexpr std::intptr_t kNotAvailable = 1;

}  // namespace

void TraceCommands::SetRange(std::int32_t condition) {
    IQOSTraceService* const service = Service();
    if (!service) return;
    service->SetRangeCondition(condition);
    view_.UpdateStatusTexts();
}

std::optional<std::int32_t> TraceCommands::RangeCondition() const {
    IQOSTraceService* const service = Service();
    std::int32_t current = 0;
    if (!service || Failed(service->GetRangeCondition(&current))) return std::nullopt;
    return current;
}

void TraceCommands::RangeFull() {
    SetRange(kRangeFull);
}

void TraceCommands::RangeFree() {
    SetRange(kRangeFree);
}

bool TraceCommands::IsRangeFull() const {
    return RangeCondition() == kRangeFull;
}

bool TraceCommands::IsRangeFree() const {
    return RangeCondition() == kRangeFree;
}

bool TraceCommands::MaySetRange() const {
    return RangeCondition() && !view_.IsTargetRunning();
}

bool TraceCommands::IsMeasuring() const {
    if (!Service() || !view_.IsTargetRunning()) return false;
    constexpr std::size_t kServiceInfo = kvx::host::DebuggerIndex("IN1_Get_service_info");
    return kvx::host::CallDebugger(kServiceInfo, kMeasuringService, view_.TargetContext()) !=
           kNotAvailable;
}

void TraceCommands::TraceStop() {
    if (IQOSTraceService* service = Service()) service->StopMeasurement();
}

void TraceCommands::TraceRestart() {
    IQOSTraceService* const service = Service();
    if (!service) return;
    service->StopMeasurement();
    service->ResetMeasurement();
    service->StartMeasurement();
    view_.CloseTrace(0);
    view_.UpdateHorizontalBar();
    view_.RefreshStatus();
    view_.Invalidate(true);
}

void TraceCommands::Value() {
    IQOSTraceService* const service = Service();
    if (!service) return;
    CDlgOSTraceValue dialog(&view_);
    double& gridTime = Viewport().gridTime;
    service->CountToTime(static_cast<std::int64_t>(gridTime), &dialog.hours, &dialog.minutes,
                         &dialog.seconds, &dialog.milliseconds, &dialog.microseconds,
                         &dialog.nanoseconds);
    service->GetTimeMode(&dialog.mode);
    dialog.cycles = gridTime;
    dialog.expandRate = Viewport().expandRate;
    dialog.reduceRate = Viewport().reduceRate;
    if (dialog.DoModal() != IDOK) return;
    if (dialog.mode == kTimeCycles) {
        gridTime = dialog.cycles;
    } else {
        std::int64_t count = 0;
        service->TimeToCount(&count, dialog.hours, dialog.minutes, dialog.seconds,
                             dialog.milliseconds, dialog.microseconds, dialog.nanoseconds);
        if (count != 0) gridTime = static_cast<double>(count);
    }
    Viewport().expandRate = dialog.expandRate;
    Viewport().reduceRate = dialog.reduceRate;
    view_.Invalidate(true);
}

void TraceCommands::Color() {
    IQOSTraceService* const service = Service();
    if (!service) return;
    VARIANT_BOOL variablePools = VARIANT_TRUE;
    service->QueryCapability(kCapabilityVariablePools, &variablePools);
    CDlgOSTraceColor dialog(Data().colors, variablePools != VARIANT_FALSE, &view_);
    if (dialog.DoModal() != IDOK) return;
    Data().colors = dialog.Colors();
    view_.Invalidate(true);
    view_.SettingsChanged();
    Data().source.BroadcastDisplayChanged(&view_);
}
