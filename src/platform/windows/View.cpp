#include "platform/windows/View.h"

#include "platform/base/SystemInfo.h"

const CRuntimeClass CView::kClass = MakeRuntimeClass("CView", &CWnd::kClass);

const MessageMap& CView::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        ON_WM_PAINT<&CView::OnPaint>(),
    };
    static const MessageMap kMap{&CWnd::GetMessageMap(), kEntries};
    return kMap;
}

int CView::BackgroundColour() const {
    return COLOR_WINDOW;
}

void CView::OnInitialUpdate() {
    OnUpdate(nullptr, 0, nullptr);
}

void CView::OnUpdate(CWnd*, LPARAM, CObject*) {
    Invalidate();
}

void CView::OnPaint() {
    CPaintDC dc(this);
    OnDraw(&dc);
}

DROPEFFECT CView::OnDragEnter(COleDataObject*, DWORD, CPoint) {
    return DROPEFFECT_NONE;
}

DROPEFFECT CView::OnDragOver(COleDataObject*, DWORD, CPoint) {
    return DROPEFFECT_NONE;
}

void CView::OnDragLeave() {}

bool CView::OnDrop(COleDataObject*, DROPEFFECT, CPoint) {
    return false;
}
