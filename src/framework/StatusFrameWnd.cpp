#include "framework/StatusFrameWnd.h"

#include "host/CommandIds.h"
#include "platform/base/Resources.h"
#include "platform/base/SystemInfo.h"
#include "platform/drawing/ClientDC.h"

namespace {

constexpr UINT kNoId = 0xFFFFFFFFu;

}  // namespace

CStatusFrameWnd::CStatusFrameWnd()
    : table_{{RCROWGROUP | RCREST, 0, 0},
             {RCTOFIT, kStatusBarPane, 0},
             {RCREST, kFirstPane, 0},
             {RCENDGROUP, kNoId, 0},
             {0, kNoId, 0}},
      layout_(table_) {}

const MessageMap& CStatusFrameWnd::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        ON_WM_CREATE<&CStatusFrameWnd::OnCreate>(),
        ON_WM_SIZE<&CStatusFrameWnd::OnSize>(),
        ON_WM_GETMINMAXINFO<&CStatusFrameWnd::OnGetMinMaxInfo>(),
        ON_WM_ERASEBKGND<&CStatusFrameWnd::OnEraseBkgnd>(),
        ON_MESSAGE<kWinMgrMessage, &CStatusFrameWnd::OnWinMgr>(),
    };
    static const MessageMap kMap{&CQFrameWnd::GetMessageMap(), kEntries};
    return kMap;
}

int CStatusFrameWnd::OnCreate(const CREATESTRUCT* create) {
    if (CQFrameWnd::OnCreate(create) == -1) return -1;
    SetView(CreateView(ViewClass(), kFirstPane));
    if (!statusBar_.Create(this, kStatusBarPane, true)) return -1;
    OnFrameCreated();
    return 0;
}

void CStatusFrameWnd::OnSize(UINT, int, int) {
    Default();
    LayOut();
}

void CStatusFrameWnd::LayOut() {
    if (!IsWindow()) return;
    layout_.CalcLayout(this);
    layout_.SetWindowPositions(this);
}

void CStatusFrameWnd::OnGetMinMaxInfo(MINMAXINFO* info) {
    layout_.GetMinMaxInfo(this, info);
}

bool CStatusFrameWnd::OnEraseBkgnd(CDC* dc) {
    dc->FillSolidRect(GetClientRect(), GetSysColor(COLOR_3DFACE));
    return true;
}

LRESULT CStatusFrameWnd::OnWinMgr(WPARAM id, LPARAM notify) {
    auto* const record = reinterpret_cast<WINMGRNOTIFY*>(notify);
    if (id != kStatusBarPane || record->code != kWinMgrGetSizeInfo) return 0;
    record->sizeInfo.desired = statusBarShown_ ? statusBar_.GetToFitSize() : SIZE{};
    return 1;
}

void CStatusFrameWnd::ShowStatusBar(bool show) {
    if (!statusBar_.IsWindow()) return;
    statusBar_.ShowWindow(show ? SW_SHOW : SW_HIDE);
    statusBarShown_ = show;
    LayOut();
}

void CStatusFrameWnd::SetStatusTexts(const std::vector<CString>& texts) {
    if (statusBar_.IsWindow()) statusBar_.SetPanes(texts);
}

void CStatusFrameWnd::SetStatusText(const CString& text) {
    if (statusBar_.IsWindow()) statusBar_.SetPane(text);
}

void CStatusFrameWnd::GetDataName(CString& name) const {
    name = LoadString(kvx::ids::kStringDataName);
}

int CStatusFrameWnd::UpdateView(LPARAM hint) {
    if (View()) View()->OnUpdate(View(), hint, nullptr);
    return 0;
}

int CStatusFrameWnd::SaveSettings(IWorkspaceStore& store, const CString& prefix) {
    return View() ? View()->SaveSettings(store, prefix) : 0;
}

int CStatusFrameWnd::LoadSettings(IWorkspaceStore& store, const CString& prefix) {
    return View() ? View()->LoadSettings(store, prefix) : 0;
}

void CStatusFrameWnd::SetViewFont(CFont* font) {
    if (View()) View()->SetViewFont(font);
}

void CStatusFrameWnd::SetViewColors(const CString& item, COLORREF text, COLORREF background) {
    if (View()) View()->SetViewColors(item, text, background);
}
