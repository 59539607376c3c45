#include "framework/QView.h"

#include "framework/QFrameWnd.h"

const CRuntimeClass CQView::kClass = MakeRuntimeClass("CQView", &CView::kClass);

bool CQView::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    frame_ = dynamic_cast<CQFrameWnd*>(parent);
    owner_ = parent ? parent->GetParent() : nullptr;
    return CView::Create(style, rect, parent, id);
}

int CQView::SaveSettings(IWorkspaceStore&, const CString&) {
    return 0;
}
int CQView::LoadSettings(IWorkspaceStore&, const CString&) {
    return 0;
}
void CQView::SetViewFont(CFont*) {}
void CQView::SetViewColors(const CString&, COLORREF, COLORREF) {}
