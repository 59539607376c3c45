#include "traceview/TraceView.h"

#include "framework/HostWorkspaceStore.h"
#include "framework/InstanceDataCtrl.h"
#include "framework/StatusFrameWnd.h"
#include "framework/UpdateHints.h"
#include "host/DebuggerFunctions.h"
#include "host/ModuleHost.h"
#include "host/OSTraceService.h"
#include "trace/dialogs/StopDlg.h"
#include "traceview/StatusTexts.h"
#include "traceview/TracePainter.h"

namespace {

constexpr char kSettingsPrefix[] = "OSTraceView";
constexpr char kSettingsEntry[] = "View";
// Comes after a paint, from the message loop.
constexpr UINT kPainted = WM_USER + 1;

}  // namespace

const CRuntimeClass COSTraceView::kClass =
    MakeDynamicClass<COSTraceView>("COSTraceView", &CCoreView::kClass);

COSTraceView::COSTraceView() {
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
        ON_MESSAGE<WM_MOUSELEAVE, &Self::OnMouseLeave>(),
        ON_WM_LBUTTONDOWN<&Self::OnLButtonDown>(),
        ON_WM_LBUTTONUP<&Self::OnLButtonUp>(),
        ON_WM_CAPTURECHANGED<&Self::OnCaptureChanged>(),
        ON_WM_CANCELMODE<&Self::OnCancelMode>(),
        ON_MESSAGE<kPainted, &Self::OnPainted>(),
    };
    static const MessageMap kMap{&CCoreView::GetMessageMap(), kEntries};
    return kMap;
}

bool COSTraceView::OnCmdMsg(UINT id, UINT code, CCmdUI* ui) {
    return (code == 0 && commands_.Handle(id, ui)) || CCoreView::OnCmdMsg(id, code, ui);
}

IQOSTraceService* COSTraceView::Service() const {
    return kvx::host::IsDebuggerLoaded() ? kvx::host::TraceService() : nullptr;
}

bool COSTraceView::IsTargetRunning() const {
    return instance_ && instance_->IsRunning();
}

IQUnknown* COSTraceView::TargetContext() const {
    return instance_ ? instance_->TargetContext() : nullptr;
}

CStatusFrameWnd* COSTraceView::StatusFrame() const {
    return static_cast<CStatusFrameWnd*>(Frame());
}

void COSTraceView::Connect(COSTraceData& data, CKvxDebugInstanceDataCtrl& instance) {
    display_.emplace(data, *this);
    instance_ = &instance;
    client_ = GetClientRect().Size();
    LayOut();
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
    cell_ = MeasureFontCell(*this, font_);
    LayOut();
    Invalidate(true);
    UpdateWindow();
}

int COSTraceView::SaveSettings(IWorkspaceStore& store, const CString& prefix) {
    store.WriteText(prefix + kSettingsEntry, columns_.SettingsText());
    return 0;
}

int COSTraceView::LoadSettings(IWorkspaceStore& store, const CString& prefix) {
    columns_.TakeSettings(store.ReadText(prefix + kSettingsEntry, ""));
    LayOut();
    Invalidate(true);
    return 0;
}

void COSTraceView::SettingsChanged() {
    if (instance_) instance_->SetSettingsModified(true);
}

void COSTraceView::SetColumnEdge(std::size_t column, int edge) {
    columns_.SetRightEdge(column, edge, cell_.width);
    LayOut();
    SettingsChanged();
}

void COSTraceView::OnSize(UINT, int cx, int cy) {
    Default();
    if (!kvx::host::IsDebuggerLoaded() || !display_) return;
    client_ = {cx, cy};
    LayOut();
    pointer_.Follow();
}

void COSTraceView::LayOut() {
    if (!display_) return;
    kvx::chart::LayOut(columns_, display_->viewport, cell_, client_);
    if (cell_.height > 0) UpdateVerticalBar();
}

std::unique_ptr<IProgress> COSTraceView::CreateProgress(const CString& caption) {
    return std::make_unique<CProgressDialog>(GetParent(), caption);
}

void COSTraceView::OnDestroy() {
    pointer_.Cancel();
    if (kvx::host::IsDebuggerLoaded() && display_) {
        IQOSTraceService* const service = Service();
        if (service && !instance_->IsRunning() && attached_) service->Detach();
        display_->data.engine.Discard(this);
        display_->data.markers.SetSearchFlag(0);
        if (service) service->ViewClosed();
        CWorkspaceStore store(kvx::host::ModuleHost());
        SaveSettings(store, kSettingsPrefix);
    }
    CCoreView::OnDestroy();
}

void COSTraceView::OnUpdate(CWnd*, LPARAM hint, CObject*) {
    IQOSTraceService* const service = Service();
    if (hint != kHintDisplayChanged) {
        pointer_.Cancel();
        ClearTipRects();
    }
    switch (display_ ? hint : 0) {
        case kHintTargetConnected:
            if (service) service->ResetMeasurement();
            attached_ = service && Succeeded(service->Attach());
            display_->Close(1);
            break;
        case kHintTraceCleared:
            if (service) service->ResetMeasurement();
            display_->Close(0);
            UpdateHorizontalBar();
            break;
        case kHintTraceReady:
            display_->Close(0);
            if (attached_) display_->Open();
            UpdateHorizontalBar();
            UpdateVerticalBar();
            break;
        case kHintTargetDisconnected:
            if (attached_ && service) service->Detach();
            attached_ = false;
            display_->Close(1);
            UpdateHorizontalBar();
            UpdateVerticalBar();
            break;
        case kHintDisplayChanged:
            display_->CentreIndicator();
            UpdateHorizontalBar();
            pointer_.Follow();
            break;
        default:
            break;
    }
    Invalidate(true);
    RefreshStatus();
    if (StatusFrame()) StatusFrame()->LayOut();
}

// What it showed goes, and with it what the user does in it.
void COSTraceView::CloseTrace(int resetService) {
    pointer_.Cancel();
    ClearTipRects();
    display_->Close(resetService);
}

void COSTraceView::TrackTip(CPoint point) {
    COSTip::TrackTip(*this, font_, display_->data.colors, point.x, point.y);
}

void COSTraceView::OnDraw(CDC* dc) {
    if (!kvx::host::IsDebuggerLoaded() || !display_) return;
    CFont* const previous = dc->SelectObject(font_);
    ClearTipRects();
    kvx::chart::DrawTrace(*dc, painter_, columns_, cell_, *display_,
                          kvx::chart::ItemsOf(*display_, Service()), *this);
    dc->SelectObject(previous);
    pointer_.Draw(*dc);
    UpdateStatusTexts();
    PostMessage(kPainted);
}

void COSTraceView::RefreshStatus() {
    if (!StatusFrame()) return;
    StatusFrame()->ShowStatusBar(IsOpen());
    UpdateStatusTexts();
}

void COSTraceView::UpdateStatusTexts() {
    if (!IsOpen() || !StatusFrame()) return;
    StatusFrame()->SetStatusTexts(
        kvx::ComposeStatusTexts(display_->data.engine, display_->data.markers, display_->viewport));
}
