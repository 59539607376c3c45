#include "traceview/TraceView.h"

#include "framework/FontCell.h"
#include "framework/HostWorkspaceStore.h"
#include "framework/InstanceDataCtrl.h"
#include "framework/StatusFrameWnd.h"
#include "framework/UpdateHints.h"
#include "host/CommandIds.h"
#include "host/DebuggerFunctions.h"
#include "host/ModuleHost.h"
#include "platform/Resources.h"
#include "platform/SystemInfo.h"
#include "trace/TraceData.h"
#include "trace/dialogs/StopDlg.h"
#include "traceview/ChartPainter.h"
#include "traceview/StatusTexts.h"

namespace ids = kvx::ids;

namespace {

constexpr char kSettingsPrefix[] = "OSTraceView";
constexpr char kSettingsEntry[] = "View";

}  // namespace

const CRuntimeClass COSTraceView::kClass =
    MakeDynamicClass<COSTraceView>("COSTraceView", &CCoreView::kClass);

COSTraceView::COSTraceView()
    : arrow_(LoadStandardCursor(IDC_ARROW)),
      sizeWE_(LoadStandardCursor(IDC_SIZEWE)),
      lineDrag_(LoadCursor(ids::kCursorLineDrag)) {
    IQOSTraceService* const service = Service();
    attached_ = service && Succeeded(service->Attach());
    if (attached_) service->ResetMeasurement();
}

const MessageMap& COSTraceView::GetMessageMap() const {
    using Self = COSTraceView;
    static constexpr MessageMapEntry kEntries[] = {
        ON_WM_DESTROY<&Self::OnDestroy>(),
        ON_WM_SIZE<&Self::OnSize>(),
        ON_WM_HSCROLL<&Self::OnHScroll>(),
        ON_WM_VSCROLL<&Self::OnVScroll>(),
        ON_WM_KEYDOWN<&Self::OnKeyDown>(),
        ON_WM_CHAR<&Self::OnChar>(),
        ON_WM_MOUSEWHEEL<&Self::OnMouseWheel>(),
        ON_WM_MOUSEMOVE<&Self::OnMouseMove>(),
        ON_WM_LBUTTONDOWN<&Self::OnLButtonDown>(),
        ON_WM_LBUTTONUP<&Self::OnLButtonUp>(),
        ON_WM_CAPTURECHANGED<&Self::OnCaptureChanged>(),
        ON_COMMAND<ids::kStartMarker, &Self::OnStartMarker>(),
        ON_UPDATE_COMMAND_UI<ids::kStartMarker, &Self::OnUpdateStartMarker>(),
        ON_COMMAND<ids::kEndMarker, &Self::OnEndMarker>(),
        ON_UPDATE_COMMAND_UI<ids::kEndMarker, &Self::OnUpdateEndMarker>(),
        ON_COMMAND<ids::kIndicator, &Self::OnIndicator>(),
        ON_UPDATE_COMMAND_UI<ids::kIndicator, &Self::OnUpdateTraceOpen>(),
        ON_COMMAND<ids::kAdjust, &Self::OnAdjust>(),
        ON_UPDATE_COMMAND_UI<ids::kAdjust, &Self::OnUpdateAdjust>(),
        ON_COMMAND<ids::kExpand, &Self::OnExpand>(),
        ON_UPDATE_COMMAND_UI<ids::kExpand, &Self::OnUpdateTraceOpen>(),
        ON_COMMAND<ids::kReduce, &Self::OnReduce>(),
        ON_UPDATE_COMMAND_UI<ids::kReduce, &Self::OnUpdateReduce>(),
        ON_COMMAND<ids::kRangeFullCommand, &Self::OnRangeFull>(),
        ON_UPDATE_COMMAND_UI<ids::kRangeFullCommand, &Self::OnUpdateRangeFull>(),
        ON_COMMAND<ids::kRangeFreeCommand, &Self::OnRangeFree>(),
        ON_UPDATE_COMMAND_UI<ids::kRangeFreeCommand, &Self::OnUpdateRangeFree>(),
        ON_COMMAND<ids::kTraceStop, &Self::OnTraceStop>(),
        ON_UPDATE_COMMAND_UI<ids::kTraceStop, &Self::OnUpdateTraceStop>(),
        ON_COMMAND<ids::kTraceRestart, &Self::OnTraceRestart>(),
        ON_UPDATE_COMMAND_UI<ids::kTraceRestart, &Self::OnUpdateTraceRestart>(),
        ON_COMMAND<ids::kSearch, &Self::OnSearch>(),
        ON_UPDATE_COMMAND_UI<ids::kSearch, &Self::OnUpdateTraceOpen>(),
        ON_COMMAND<ids::kSearchNext, &Self::OnSearchNext>(),
        ON_COMMAND<ids::kHostSearchNext, &Self::OnSearchNext>(),
        ON_UPDATE_COMMAND_UI<ids::kSearchNext, &Self::OnUpdateSearchAgain>(),
        ON_UPDATE_COMMAND_UI<ids::kHostSearchNext, &Self::OnUpdateSearchAgain>(),
        ON_COMMAND<ids::kSearchPrevious, &Self::OnSearchPrevious>(),
        ON_COMMAND<ids::kHostSearchPrevious, &Self::OnSearchPrevious>(),
        ON_UPDATE_COMMAND_UI<ids::kSearchPrevious, &Self::OnUpdateSearchAgain>(),
        ON_UPDATE_COMMAND_UI<ids::kHostSearchPrevious, &Self::OnUpdateSearchAgain>(),
        ON_COMMAND<ids::kValue, &Self::OnValue>(),
        ON_UPDATE_COMMAND_UI<ids::kValue, &Self::OnUpdateValue>(),
        ON_COMMAND<ids::kColor, &Self::OnColor>(),
        ON_UPDATE_COMMAND_UI<ids::kColor, &Self::OnUpdateColor>(),
        ON_COMMAND<ids::kDefaultOrder, &Self::OnDefaultOrder>(),
        ON_UPDATE_COMMAND_UI<ids::kDefaultOrder, &Self::OnUpdateDefaultOrder>(),
        ON_COMMAND<ids::kShowLine, &Self::OnShowLine>(),
        ON_UPDATE_COMMAND_UI<ids::kShowLine, &Self::OnUpdateSelectedLines>(),
        ON_COMMAND<ids::kHideLine, &Self::OnHideLine>(),
        ON_UPDATE_COMMAND_UI<ids::kHideLine, &Self::OnUpdateSelectedLines>(),
    };
    static const MessageMap kMap{&CCoreView::GetMessageMap(), kEntries};
    return kMap;
}

IQOSTraceService* COSTraceView::Service() const {
    return kvx::host::IsDebuggerLoaded() ? kvx::host::TraceService() : nullptr;
}

bool COSTraceView::IsOpen() const {
    return data_ && data_->engine.IsValid();
}

CStatusFrameWnd* COSTraceView::StatusFrame() const {
    return static_cast<CStatusFrameWnd*>(Frame());
}

void COSTraceView::Connect(COSTraceData& data, CKvxDebugInstanceDataCtrl& instance) {
    data_ = &data;
    instance_ = &instance;
    const CRect client = GetClientRect();
    SizeTo(client.Width(), client.Height());
    OnUpdate(this, kHintTraceReady, nullptr);
}

void COSTraceView::OnInitialUpdate() {
    SetViewFont(Frame()->GetDisplayFont());
    CWorkspaceStore store(kvx::host::ModuleHost());
    LoadSettings(store, kSettingsPrefix);
    RefreshStatus();
    CCoreView::OnInitialUpdate();
}

void COSTraceView::SetViewFont(CFont* font) {
    font_ = font;
    const FontCell cell = MeasureFontCell(*this, font_);
    charWidth_ = cell.width;
    lineHeight_ = cell.height;
    LayOutColumns();
    Invalidate(true);
    UpdateWindow();
}

int COSTraceView::SaveSettings(IWorkspaceStore& store, const CString& prefix) {
    store.WriteText(prefix + kSettingsEntry, columns_.SettingsText());
    return 0;
}

int COSTraceView::LoadSettings(IWorkspaceStore& store, const CString& prefix) {
    columns_.TakeSettings(store.ReadText(prefix + kSettingsEntry, ""));
    LayOutColumns();
    return 0;
}

void COSTraceView::SettingsChanged() {
    if (instance_) instance_->SetSettingsModified(true);
}

std::unique_ptr<IProgress> COSTraceView::CreateProgress(const CString& caption) {
    return std::make_unique<CProgressDialog>(GetParent(), caption);
}

void COSTraceView::OnDestroy() {
    HideTip();
    if (kvx::host::IsDebuggerLoaded() && data_) {
        IQOSTraceService* const service = Service();
        if (service && !instance_->IsRunning() && attached_) service->Detach();
        data_->engine.Discard(this);
        data_->markers.SetSearchFlag(0);
        if (service) service->ViewClosed();
        CWorkspaceStore store(kvx::host::ModuleHost());
        SaveSettings(store, kSettingsPrefix);
    }
    CCoreView::OnDestroy();
}

void COSTraceView::OnUpdate(CWnd*, LPARAM hint, CObject*) {
    IQOSTraceService* const service = Service();
    if (hint != kHintDisplayChanged) {
        HideTip();
        ClearTipRects();
    }
    switch (data_ ? hint : 0) {
        case kHintTargetConnected:
            if (service) service->ResetMeasurement();
            attached_ = service && Succeeded(service->Attach());
            data_->engine.Clear(this, 1);
            break;
        case kHintTraceCleared:
            if (service) service->ResetMeasurement();
            CloseTrace(0);
            UpdateHorizontalBar();
            break;
        case kHintTraceReady:
            CloseTrace(0);
            if (attached_ && data_->engine.Open(this)) OpenTrace();
            UpdateHorizontalBar();
            UpdateVerticalBar();
            break;
        case kHintTargetDisconnected:
            if (attached_ && service) service->Detach();
            attached_ = false;
            CloseTrace(1);
            UpdateHorizontalBar();
            UpdateVerticalBar();
            break;
        case kHintDisplayChanged:
            CenterIndicator();
            break;
        default:
            break;
    }
    if (hint != kHintDisplayChanged) selection_.Clear();
    RefreshStatus();
    if (StatusFrame()) StatusFrame()->LayOut();
}

void COSTraceView::CloseTrace(int resetService) {
    data_->engine.Clear(this, resetService);
    firstLine_ = 0;
    scale_ = traceStart_ = traceEnd_ = displayStart_ = displayEnd_ = 0.0;
}

void COSTraceView::OpenTrace() {
    data_->contexts.Load();
    data_->engine.GetTimes(&traceStart_, &traceEnd_, &displayEnd_);
    displayStart_ = traceStart_;
    if (displayEnd_ <= displayStart_) displayEnd_ = traceEnd_;
    if (displayEnd_ <= displayStart_) displayEnd_ = traceEnd_ = traceStart_ + 1.0;
    scale_ = TraceSpan() / (displayEnd_ - displayStart_);
    gridTime_ = (displayEnd_ - displayStart_) / 5.0;
    PlaceMarkers();
}

void COSTraceView::PlaceMarkers() {
    data_->markers.MoveStartIntoDisplay(this, displayStart_);
    data_->markers.MoveEndIntoDisplay(this, displayEnd_);
    data_->markers.MoveIndicatorIntoDisplay(this, displayStart_, displayEnd_);
}

// Another view moved the indicator: it is brought into the middle when it is out of sight.
void COSTraceView::CenterIndicator() {
    const double time = data_->markers.GetMarkerTime(kMarkerIndicator);
    if (!IsOpen() || Geometry().InDisplay(time)) return;
    ScrollBy(time - (displayStart_ + (displayEnd_ - displayStart_) / 2.0));
    UpdateHorizontalBar();
}

ChartGeometry COSTraceView::Geometry() const {
    ChartGeometry geometry;
    geometry.left = columns_[TraceColumns::kChart].left;
    geometry.right = columns_[TraceColumns::kChart].right;
    geometry.traceStart = traceStart_;
    geometry.traceEnd = traceEnd_;
    geometry.displayStart = displayStart_;
    geometry.displayEnd = displayEnd_;
    geometry.scale = scale_;
    geometry.lineHeight = lineHeight_;
    geometry.charWidth = charWidth_;
    geometry.clientHeight = clientHeight_;
    geometry.firstLine = firstLine_;
    geometry.visibleLines = visibleLines_;
    geometry.lineCount = data_ ? data_->contexts.GetCount() : 0;
    return geometry;
}

void COSTraceView::OnDraw(CDC* dc) {
    if (!kvx::host::IsDebuggerLoaded() || !data_) return;
    CFont* const previous = dc->SelectObject(font_);
    dc->SetTextColor(GetSysColor(COLOR_WINDOWTEXT));
    dc->SetBkColor(GetSysColor(COLOR_WINDOW));
    ClearTipRects();
    namespace chart = kvx::chart;
    DrawTitles(*dc, painter_, columns_, lineHeight_);
    if (IsOpen()) {
        const ChartGeometry geometry = Geometry();
        const COSColor& colors = data_->colors;
        const COLORREF run = colors[EColor::Run];
        chart::DrawTable(*dc, painter_, columns_, geometry, data_->contexts, selection_,
                         colors[EColor::SysCallBack]);
        chart::DrawRowLines(*dc, geometry, columns_[TraceColumns::kVector].left, dropLine_, run);
        if (geometry.right > geometry.left) {
            const auto items = kvx::BuildChart(geometry, data_->engine, data_->contexts, gridTime_,
                                               data_->markers.GetMarkerTime(kMarkerStart));
            chart::DrawGrid(*dc, geometry, items.grid, run);
            chart::DrawStates(*dc, geometry, items.states, colors, *this);
            chart::DrawSwitches(*dc, items.switches, run);
            chart::DrawRuns(*dc, geometry, items.runs, run, *this);
            chart::DrawMarks(*dc, geometry, items.marks, colors, *this);
            chart::BlankHiddenLines(*dc, geometry, data_->contexts);
            chart::DrawMarkers(*dc, geometry, data_->markers, colors);
        }
    }
    dc->SelectObject(previous);
    UpdateStatusTexts();
}

void COSTraceView::RefreshStatus() {
    if (!StatusFrame()) return;
    StatusFrame()->ShowStatusBar(IsOpen());
    UpdateStatusTexts();
}

void COSTraceView::UpdateStatusTexts() {
    if (!IsOpen() || !StatusFrame()) return;
    StatusFrame()->SetStatusTexts(
        kvx::ComposeStatusTexts(data_->engine, data_->markers, scale_, gridTime_));
}
