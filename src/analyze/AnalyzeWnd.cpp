#include "analyze/AnalyzeWnd.h"

#include "analyze/AnalyzeView.h"
#include "host/CommandIds.h"
#include "platform/base/Resources.h"

COSAnalyzeView* COSAnalyzeWnd::AnalyzeView() const {
    return static_cast<COSAnalyzeView*>(View());
}

const CRuntimeClass* COSAnalyzeWnd::ViewClass() const {
    return &COSAnalyzeView::kClass;
}

void COSAnalyzeWnd::OnFrameCreated() {
    if (AnalyzeView()) AnalyzeView()->RefreshStatus();
}

void COSAnalyzeWnd::GetWindowTitle(CString& title) const {
    title = LoadString(kvx::ids::kStringOSAnalyze);
}
