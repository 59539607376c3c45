// The table of commands, and those on markers, scale and lines. Search: TraceCommandsSearch.cpp;
// dialogs and measuring: TraceCommandsSettings.cpp.

#include "traceview/TraceCommands.h"

#include <algorithm>

#include "host/CommandIds.h"
#include "host/OSTraceService.h"
#include "traceview/TraceView.h"

namespace ids = kvx::ids;

const TraceCommands::Command* TraceCommands::Find(UINT id) {
    using Self = TraceCommands;
    static constexpr Command kCommands[] = {
        {ids::kStartMarker, &Self::StartMarker, &Self::MayMoveStart},
        {ids::kEndMarker, &Self::EndMarker, &Self::MayMoveEnd},
        {ids::kIndicator, &Self::Indicator, &Self::IsOpen},
        {ids::kAdjust, &Self::Adjust, &Self::MayAdjust},
        {ids::kExpand, &Self::Expand, &Self::IsOpen},
        {ids::kReduce, &Self::Reduce, &Self::MayReduce},
        {ids::kRangeFullCommand, &Self::RangeFull, &Self::MaySetRange, &Self::IsRangeFull},
        {ids::kRangeFreeCommand, &Self::RangeFree, &Self::MaySetRange, &Self::IsRangeFree},
        {ids::kTraceStop, &Self::TraceStop, &Self::MayStop},
        {ids::kTraceRestart, &Self::TraceRestart, &Self::MayRestart},
        {ids::kSearch, &Self::Search, &Self::IsOpen},
        {ids::kSearchNext, &Self::SearchNext, &Self::MaySearchAgain},
        {ids::kHostSearchNext, &Self::SearchNext, &Self::MaySearchAgain},
        {ids::kSearchPrevious, &Self::SearchPrevious, &Self::MaySearchAgain},
        {ids::kHostSearchPrevious, &Self::SearchPrevious, &Self::MaySearchAgain},
        {ids::kValue, &Self::Value, &Self::HasTimeMode},
        {ids::kColor, &Self::Color, &Self::HasService},
        {ids::kDefaultOrder, &Self::DefaultOrder, &Self::MayOrder},
        {ids::kShowLine, &Self::ShowLine, &Self::IsAnySelected},
        {ids::kHideLine, &Self::HideLine, &Self::IsAnySelected},
    };
    const auto* const found = std::ranges::find(kCommands, id, &Command::id);
    return found == std::end(kCommands) ? nullptr : found;
}

bool TraceCommands::Handle(UINT id, CCmdUI* ui) {
    const Command* const command = Find(id);
    if (!command) return false;
    const bool connected = view_.Display() != nullptr;
    if (ui) {
        ui->Enable(connected && (this->*command->isOffered)());
        ui->SetCheck(connected && command->isChecked && (this->*command->isChecked)());
    } else if (connected) {
        (this->*command->run)();
    }
    return true;
}

TraceDisplay& TraceCommands::Display() const {
    return *view_.Display();
}

IQOSTraceService* TraceCommands::Service() const {
    return view_.Service();
}

bool TraceCommands::IsOpen() const {
    return view_.IsOpen();
}

bool TraceCommands::HasTimeMode() const {
    IQOSTraceService* const service = Service();
    std::int32_t mode = 0;
    return service && Succeeded(service->GetTimeMode(&mode));
}

void TraceCommands::StartMarker() {
    if (!IsOpen()) return;
    Data().markers.MoveStartIntoDisplay(&view_, Viewport().DisplayStart());
    view_.Invalidate(true);
}

bool TraceCommands::MayMoveStart() const {
    return IsOpen() && Data().markers.GetMarkerTime(kMarkerEnd) >= Viewport().DisplayStart();
}

void TraceCommands::EndMarker() {
    if (!IsOpen()) return;
    Data().markers.MoveEndIntoDisplay(&view_, Viewport().DisplayEnd());
    view_.Invalidate(true);
}

bool TraceCommands::MayMoveEnd() const {
    return IsOpen() && Data().markers.GetMarkerTime(kMarkerStart) <= Viewport().DisplayEnd();
}

void TraceCommands::Indicator() {
    if (!IsOpen()) return;
    Data().markers.MoveIndicatorIntoDisplay(&view_, Viewport().DisplayStart(),
                                            Viewport().DisplayEnd());
    view_.Invalidate(true);
}

void TraceCommands::Adjust() {
    const auto range = Viewport().Between(Data().markers.GetMarkerTime(kMarkerStart),
                                          Data().markers.GetMarkerTime(kMarkerEnd));
    if (IsOpen() && range) view_.GoTo(*range);
}

bool TraceCommands::MayAdjust() const {
    return IsOpen() &&
           Data().markers.GetMarkerTime(kMarkerStart) != Data().markers.GetMarkerTime(kMarkerEnd);
}

void TraceCommands::Expand() {
    if (Service() && IsOpen()) view_.GoTo(Viewport().Expanded(Viewport().DisplayStart()));
}

void TraceCommands::Reduce() {
    if (Service() && IsOpen()) view_.GoTo(Viewport().Reduced(Viewport().DisplayStart()));
}

bool TraceCommands::MayReduce() const {
    return IsOpen() && Viewport().Scale() != 1.0;
}

void TraceCommands::DefaultOrder() {
    IQOSTraceService* const service = Service();
    if (!service || !IsOpen()) return;
    service->ResetContextOrder();
    Display().RebuildLines(false);
    view_.Invalidate(true);
    Data().source.BroadcastDisplayChanged(&view_);
}

bool TraceCommands::IsAnySelected() const {
    return Service() && !Display().selection.IsEmpty();
}

void TraceCommands::ShowSelectedLines(bool show) {
    IQOSTraceService* const service = Service();
    if (!service) return;
    const auto selected = Display().selection.Lines(Data().contexts);
    VARIANT lines;
    lines.vt = VT_ARRAY | VT_UINT;
    lines.parray = SafeArrayCreateVector(static_cast<std::uint32_t>(selected.size()));
    for (std::uint32_t i = 0; i < selected.size(); ++i) {
        VARIANT* const element = SafeArrayElement(lines.parray, i);
        element->vt = VT_UINT;
        element->uintVal = selected[i];
    }
    show ? service->ShowContext(lines) : service->HideContext(lines);
    Display().LoadLines();
    Display().selection.Clear();
    view_.RedrawWindow();
    VariantClear(&lines);
}
