#include "framework/QFrameWnd.h"

#include <strings.h>

#include "platform/base/WinApp.h"
#include "platform/windows/DropTarget.h"
#include "utils/FileTypes.h"

const MessageMap& CQFrameWnd::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        ON_WM_CREATE<&CQFrameWnd::OnCreate>(),
        ON_WM_SIZE<&CQFrameWnd::OnSize>(),
        ON_WM_DROPFILES<&CQFrameWnd::OnDropFiles>(),
        ON_MESSAGE<WM_SETFOCUS, &CQFrameWnd::OnSetFocus>(),
    };
    static const MessageMap kMap{&CWnd::GetMessageMap(), kEntries};
    return kMap;
}

bool CQFrameWnd::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    owner_ = parent;
    if (!CWnd::Create(style, rect, parent, id)) return false;
    ModifyStyle(WS_BORDER, 0);
    return true;
}

int CQFrameWnd::OnCreate(const CREATESTRUCT* create) {
    if (CWnd::OnCreate(create) == -1) return -1;
    DragAcceptFiles(true);
    return 0;
}

void CQFrameWnd::OnSize(UINT, int cx, int cy) {
    Default();
    if (!View()) return;
    view_->SetWindowPos(nullptr, 0, 0, cx, cy, SWP_NOZORDER | SWP_SHOWWINDOW);
}

// The keyboard is the view's.
LRESULT CQFrameWnd::OnSetFocus(WPARAM, LPARAM) {
    if (View()) view_->SetFocus();
    return 0;
}

CQView* CQFrameWnd::CreateView(const CRuntimeClass* viewClass, UINT id) {
    CObject* const object = viewClass->CreateObject();
    if (!object) return nullptr;
    auto* const view = static_cast<CQView*>(object);
    // A view whose window cannot be made has deleted itself.
    if (!view->Create(WS_CHILD | WS_VISIBLE | WS_BORDER, RECT{}, this, id)) return nullptr;
    view->OnInitialUpdate();
    return view;
}

void CQFrameWnd::SetView(CQView* view) {
    view_ = view;
    viewWindow_ = view ? view->GetSafeHwnd() : nullptr;
}

bool CQFrameWnd::OnCmdMsg(UINT id, UINT code, CCmdUI* ui) {
    return (View() && view_->OnCmdMsg(id, code, ui)) || CWnd::OnCmdMsg(id, code, ui);
}

void CQFrameWnd::SetDisplayFont(const CFont& font) {
    LOGFONT description;
    font.GetLogFont(&description);
    displayFont_.DeleteObject();
    displayFont_.CreateFontIndirect(description);
    SetViewFont(&displayFont_);
}

LRESULT CQFrameWnd::DropFilesToView(HDROP drop) {
    if (!View()) return 0;
    return view_->SendMessage(WM_DROPFILES, reinterpret_cast<WPARAM>(drop));
}

// Files of this window's type go to the view, all others to the host's main window.
void CQFrameWnd::OnDropFiles(HDROP drop) {
    if (DragQueryFileCount(drop) == 0) return DragFinish(drop);
    const CString window = kvx::WindowNameOfFile(DragQueryFile(drop, 0));
    CString mine;
    GetDataName(mine);
    if (!window.empty() && strcasecmp(window.c_str(), mine.c_str()) == 0) {
        DropFilesToView(drop);
        return DragFinish(drop);
    }
    if (CWnd* main = AfxGetMainWnd()) {
        main->SendMessage(WM_DROPFILES, reinterpret_cast<WPARAM>(drop));
    } else {
        DragFinish(drop);
    }
}
