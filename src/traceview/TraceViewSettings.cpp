// Commands that set how the chart looks and what is measured.

#include "display/DlgOSTraceColor.h"
#include "display/DlgOSTraceValue.h"
#include "framework/InstanceDataCtrl.h"
#include "host/DebuggerFunctions.h"
#include "trace/DisplayChanged.h"
#include "trace/TraceData.h"
#include "traceview/TraceView.h"

namespace {

constexpr std::uintptr_t kMeasuringService = 1050;
constexpr std::intptr_t kNotAvailable = 1;

}  // namespace

void COSTraceView::SetRangeCondition(int condition) {
    IQOSTraceService* const service = Service();
    if (!service) return;
    service->SetRangeCondition(condition);
    UpdateStatusTexts();
}

void COSTraceView::UpdateRangeCommand(CCmdUI& ui, int condition) {
    IQOSTraceService* const service = Service();
    std::int32_t current = 0;
    const bool known = service && Succeeded(service->GetRangeCondition(&current));
    ui.Enable(known && instance_ && !instance_->IsRunning());
    ui.SetCheck(known && current == condition);
}

void COSTraceView::OnRangeFull() {
    SetRangeCondition(kRangeFull);
}
void COSTraceView::OnRangeFree() {
    SetRangeCondition(kRangeFree);
}
void COSTraceView::OnUpdateRangeFull(CCmdUI& ui) {
    UpdateRangeCommand(ui, kRangeFull);
}
void COSTraceView::OnUpdateRangeFree(CCmdUI& ui) {
    UpdateRangeCommand(ui, kRangeFree);
}

bool COSTraceView::IsMeasuring() const {
    if (!Service() || !instance_ || !instance_->IsRunning()) return false;
    constexpr std::size_t kServiceInfo = kvx::host::DebuggerIndex("IN1_Get_service_info");
    return kvx::host::CallDebugger(kServiceInfo, kMeasuringService, instance_->TargetContext()) !=
           kNotAvailable;
}

void COSTraceView::OnTraceStop() {
    if (IQOSTraceService* service = Service()) service->StopMeasurement();
}

void COSTraceView::OnUpdateTraceStop(CCmdUI& ui) {
    ui.Enable(IsMeasuring() && !IsOpen());
}

void COSTraceView::OnTraceRestart() {
    IQOSTraceService* const service = Service();
    if (!service || !data_) return;
    service->StopMeasurement();
    service->ResetMeasurement();
    service->StartMeasurement();
    HideTip();
    ClearTipRects();
    data_->engine.Clear(this, 0);
    selection_.Clear();
    UpdateHorizontalBar();
    RefreshStatus();
    Invalidate(true);
}

void COSTraceView::OnUpdateTraceRestart(CCmdUI& ui) {
    ui.Enable(IsMeasuring() && IsOpen());
}

void COSTraceView::OnUpdateValue(CCmdUI& ui) {
    IQOSTraceService* const service = Service();
    std::int32_t mode = 0;
    ui.Enable(service && Succeeded(service->GetTimeMode(&mode)));
}

void COSTraceView::OnValue() {
    IQOSTraceService* const service = Service();
    if (!service) return;
    CDlgOSTraceValue dialog(this);
    service->CountToTime(static_cast<std::int64_t>(gridTime_), &dialog.hours, &dialog.minutes,
                         &dialog.seconds, &dialog.milliseconds, &dialog.microseconds,
                         &dialog.nanoseconds);
    service->GetTimeMode(&dialog.mode);
    dialog.cycles = gridTime_;
    dialog.expandRate = expandRate_;
    dialog.reduceRate = reduceRate_;
    if (dialog.DoModal() != IDOK) return;
    if (dialog.mode == kTimeCycles) {
        gridTime_ = dialog.cycles;
    } else {
        std::int64_t count = 0;
        service->TimeToCount(&count, dialog.hours, dialog.minutes, dialog.seconds,
                             dialog.milliseconds, dialog.microseconds, dialog.nanoseconds);
        if (count != 0) gridTime_ = static_cast<double>(count);
    }
    expandRate_ = dialog.expandRate;
    reduceRate_ = dialog.reduceRate;
    Invalidate(true);
}

void COSTraceView::OnUpdateColor(CCmdUI& ui) {
    ui.Enable(Service() != nullptr);
}

void COSTraceView::OnColor() {
    IQOSTraceService* const service = Service();
    if (!service || !data_) return;
    VARIANT_BOOL variablePools = VARIANT_TRUE;
    service->QueryCapability(kCapabilityVariablePools, &variablePools);
    CDlgOSTraceColor dialog(data_->colors, variablePools != VARIANT_FALSE, this);
    if (dialog.DoModal() != IDOK) return;
    data_->colors = dialog.Colors();
    Invalidate(true);
    SettingsChanged();
    kvx::BroadcastDisplayChanged(this);
}
