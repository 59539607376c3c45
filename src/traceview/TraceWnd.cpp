#include "traceview/TraceWnd.h"

#include "host/CommandIds.h"
#include "platform/base/Resources.h"
#include "traceview/TraceView.h"

COSTraceView* COSTraceWnd::TraceView() const {
    return static_cast<COSTraceView*>(View());
}

const CRuntimeClass* COSTraceWnd::ViewClass() const {
    return &COSTraceView::kClass;
}

void COSTraceWnd::OnFrameCreated() {
    if (TraceView()) TraceView()->RefreshStatus();
}

void COSTraceWnd::GetWindowTitle(CString& title) const {
    title = LoadString(kvx::ids::kStringOSTrace);
}

int COSTraceWnd::RefreshView() {
    if (TraceView()) TraceView()->RedrawWindow();
    return 0;
}
