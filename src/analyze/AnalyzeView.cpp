#include "analyze/AnalyzeView.h"

#include <chrono>
#include <mutex>

#include "analyze/TablePainter.h"
#include "framework/FontCell.h"
#include "framework/HostWorkspaceStore.h"
#include "framework/InstanceDataCtrl.h"
#include "framework/StatusFrameWnd.h"
#include "framework/UpdateHints.h"
#include "host/CommandIds.h"
#include "host/DebuggerFunctions.h"
#include "host/ModuleHost.h"
#include "platform/base/Resources.h"
#include "platform/base/SystemInfo.h"
#include "trace/TraceData.h"
#include "traceview/model/MarkText.h"

namespace ids = kvx::ids;

namespace {

constexpr char kSettingsPrefix[] = "OSAnalyzeView";
constexpr char kSettingsEntry[] = "View";
constexpr UINT kSortOn = WM_USER + 1;
// A window that works in pieces of this length answers its user between them.
constexpr std::chrono::milliseconds kPiece{50};

}  // namespace

const CRuntimeClass COSAnalyzeView::kClass =
    MakeDynamicClass<COSAnalyzeView>("COSAnalyzeView", &CCoreView::kClass);

const MessageMap& COSAnalyzeView::GetMessageMap() const {
    using Self = COSAnalyzeView;
    static constexpr MessageMapEntry kEntries[] = {
        ON_WM_SIZE<&Self::OnSize>(),
        ON_COMMAND<ids::kRunTime, &Self::OnRunTime>(),
        ON_UPDATE_COMMAND_UI<ids::kRunTime, &Self::OnUpdateRunTime>(),
        ON_WM_HSCROLL<&Self::OnHScroll>(),
        ON_WM_VSCROLL<&Self::OnVScroll>(),
        ON_WM_MOUSEMOVE<&Self::OnMouseMove>(),
        ON_WM_LBUTTONDOWN<&Self::OnLButtonDown>(),
        ON_WM_LBUTTONUP<&Self::OnLButtonUp>(),
        ON_WM_CAPTURECHANGED<&Self::OnCaptureChanged>(),
        ON_WM_CANCELMODE<&Self::OnCancelMode>(),
        ON_COMMAND<ids::kSystemCall, &Self::OnSystemCall>(),
        ON_UPDATE_COMMAND_UI<ids::kSystemCall, &Self::OnUpdateSystemCall>(),
        ON_WM_KEYDOWN<&Self::OnKeyDown>(),
        ON_COMMAND<ids::kRdyToRun, &Self::OnRdyToRun>(),
        ON_UPDATE_COMMAND_UI<ids::kRdyToRun, &Self::OnUpdateRdyToRun>(),
        ON_WM_DESTROY<&Self::OnDestroy>(),
        ON_COMMAND<ids::kPickUp, &Self::OnPickUp>(),
        ON_UPDATE_COMMAND_UI<ids::kPickUp, &Self::OnUpdatePickUp>(),
        ON_UPDATE_COMMAND_UI<ids::kSave, &Self::OnUpdateSave>(),
        ON_MESSAGE<kSortOn, &Self::OnSortOn>(),
    };
    static const MessageMap kMap{&CCoreView::GetMessageMap(), kEntries};
    return kMap;
}

IQOSTraceService* COSAnalyzeView::Service() const {
    return kvx::host::IsDebuggerLoaded() ? kvx::host::TraceService() : nullptr;
}

bool COSAnalyzeView::IsOpen() const {
    return data_ && data_->engine.IsValid();
}

EAnalysis COSAnalyzeView::Table() const {
    const bool known = mode_ >= static_cast<int>(EAnalysis::RunTime) &&
                       mode_ <= static_cast<int>(EAnalysis::SysCall);
    return known ? static_cast<EAnalysis>(mode_) : EAnalysis::RunTime;
}

kvx::SharedAnalysis& COSAnalyzeView::Analysis() const {
    return data_->Table(Table());
}

CStatusFrameWnd* COSAnalyzeView::StatusFrame() const {
    return static_cast<CStatusFrameWnd*>(Frame());
}

void COSAnalyzeView::Connect(COSTraceData& data, CKvxDebugInstanceDataCtrl& instance) {
    data_ = &data;
    instance_ = &instance;
    const CRect client = GetClientRect();
    SizeTo(client.Width(), client.Height());
    OnUpdate(this, kHintDisplayChanged, nullptr);
}

void COSAnalyzeView::OnInitialUpdate() {
    SetViewFont(Frame()->GetDisplayFont());
    CWorkspaceStore store(kvx::host::ModuleHost());
    LoadSettings(store, kSettingsPrefix);
    RefreshStatus();
    CCoreView::OnInitialUpdate();
}

void COSAnalyzeView::OnUpdate(CWnd*, LPARAM hint, CObject*) {
    if (hint != kHintDisplayChanged || !data_) return;
    ApplyMode();
    RefreshStatus();
    if (StatusFrame()) StatusFrame()->LayOut();
}

void COSAnalyzeView::SetViewFont(CFont* font) {
    font_ = font;
    const FontCell cell = MeasureFontCell(*this, font_);
    charWidth_ = cell.width;
    rowHeight_ = cell.height;
    columns_.SetCharWidth(charWidth_);
    LayOutColumns();
    Invalidate(true);
    UpdateWindow();
}

int COSAnalyzeView::SaveSettings(IWorkspaceStore& store, const CString& prefix) {
    store.WriteText(prefix + kSettingsEntry, columns_.SettingsText(mode_));
    return 0;
}

int COSAnalyzeView::LoadSettings(IWorkspaceStore& store, const CString& prefix) {
    columns_.TakeSettings(store.ReadText(prefix + kSettingsEntry, ""), &mode_);
    columns_.SetCharWidth(charWidth_);
    LayOutColumns();
    Invalidate(true);
    return 0;
}

void COSAnalyzeView::SettingsChanged() {
    if (instance_) instance_->SetSettingsModified(true);
}

void COSAnalyzeView::OnDestroy() {
    CCoreView::OnDestroy();
    CWorkspaceStore store(kvx::host::ModuleHost());
    SaveSettings(store, kSettingsPrefix);
}

void COSAnalyzeView::OnDraw(CDC* dc) {
    if (!kvx::host::IsDebuggerLoaded() || !data_) return;
    const std::lock_guard guard(data_->lock);
    const CPoint origin = dc->GetViewportOrg();
    dc->SetViewportOrg(origin.x - Shift(), origin.y);
    CFont* const previous = dc->SelectObject(font_);
    dc->SetTextColor(GetSysColor(COLOR_WINDOWTEXT));
    dc->SetBkColor(GetSysColor(COLOR_WINDOW));
    kvx::table::Geometry geometry;
    geometry.rowHeight = rowHeight_;
    geometry.charWidth = charWidth_;
    geometry.firstRow = Rows().First();
    geometry.visibleRows = visibleRows_;
    const bool shown = IsOpen() && Analysis().IsReadable() && IsSorted();
    kvx::table::DrawTable(*dc, painter_, geometry, Columns(), shown ? &Analysis() : nullptr,
                          data_->colors[EColor::Run]);
    dc->SelectObject(previous);
    dc->SetViewportOrg(origin);
    gesture_.Draw(*dc);
    UpdateStatusText();
}

void COSAnalyzeView::RefreshStatus() {
    if (!StatusFrame()) return;
    StatusFrame()->ShowStatusBar(IsOpen());
    UpdateStatusText();
}

void COSAnalyzeView::UpdateStatusText() {
    if (!IsOpen() || !StatusFrame()) return;
    StatusFrame()->SetStatusText(sorting_ ? LoadString(ids::kStringSorting)
                                          : kvx::MarkText(data_->engine, data_->markers));
}

bool COSAnalyzeView::IsSorted() {
    if (Analysis().SortFor(kPiece)) return true;
    if (!sorting_) sorting_ = PostMessage(kSortOn);
    return false;
}

LRESULT COSAnalyzeView::OnSortOn(WPARAM, LPARAM) {
    sorting_ = false;
    const std::lock_guard guard(data_->lock);
    if (IsSorted()) ApplyMode();
    return 0;
}
