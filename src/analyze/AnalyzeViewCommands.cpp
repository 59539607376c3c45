// The three modes, the pick-up, and saving a table.

#include "analyze/AnalyzeView.h"
#include "analyze/model/CsvWriter.h"
#include "host/CommandIds.h"
#include "host/OSTraceService.h"
#include "platform/base/Resources.h"
#include "platform/dialogs/FileDialog.h"
#include "trace/TraceData.h"
#include "utils/ErrorMessage.h"

namespace ids = kvx::ids;

void COSAnalyzeView::SetMode(EAnalysis mode) {
    if (mode_ != static_cast<int>(mode)) {
        mode_ = static_cast<int>(mode);
        horizontal_ = 0;
        SettingsChanged();
    }
    ApplyMode();
}

void COSAnalyzeView::UpdateModeCommand(CCmdUI& ui, EAnalysis mode) const {
    ui.Enable();
    ui.SetCheck(mode_ == static_cast<int>(mode));
}

void COSAnalyzeView::OnUpdateRunTime(CCmdUI& ui) {
    UpdateModeCommand(ui, EAnalysis::RunTime);
}
void COSAnalyzeView::OnUpdateRdyToRun(CCmdUI& ui) {
    UpdateModeCommand(ui, EAnalysis::RdyToRun);
}
void COSAnalyzeView::OnUpdateSystemCall(CCmdUI& ui) {
    UpdateModeCommand(ui, EAnalysis::SysCall);
}

void COSAnalyzeView::ApplyMode() {
    if (!data_) return;
    FollowIndicator();
    Rows().Clamp(RowCount());
    UpdateHorizontalBar();
    UpdateVerticalBar();
    Invalidate(true);
}

// Brings the row at the indicator into sight; without such a row the rows stay within the table.
void COSAnalyzeView::FollowIndicator() {
    const kvx::SharedAnalysis& analysis = Analysis();
    if (!analysis.FollowsIndicator() || !Service() || RowCount() == 0 || !IsSorted()) return;
    if (const auto row = analysis.IndicatedRow()) {
        Rows().Show(analysis.PlaceOf(*row), RowCount(), visibleRows_);
    } else {
        Rows().StayAbove(RowCount(), visibleRows_);
    }
}

// Opens the service's dialog, or ends the pick-up that is active.
void COSAnalyzeView::OnPickUp() {
    IQOSTraceService* const service = Service();
    if (!service || !data_) return;
    VARIANT_BOOL active = VARIANT_FALSE;
    service->IsPickUpActive(&active);
    const HRESULT status = active ? service->EndPickUp() : service->StartPickUp();
    if (active || Succeeded(status)) rows_[static_cast<std::size_t>(EAnalysis::SysCall)].ToTop();
    data_->sysCalls.Build();
    ApplyMode();
}

void COSAnalyzeView::OnUpdatePickUp(CCmdUI& ui) {
    IQOSTraceService* const service = Service();
    VARIANT_BOOL active = VARIANT_FALSE;
    const bool told = service && Succeeded(service->IsPickUpActive(&active));
    ui.Enable(told && Table() == EAnalysis::SysCall);
    ui.SetCheck(told && active == VARIANT_TRUE);
}

void COSAnalyzeView::OnUpdateSave(CCmdUI& ui) {
    ui.Enable(IsOpen());
}

void COSAnalyzeView::Save(const CString& defaultName) {
    if (!IsOpen()) return;
    CFileDialog dialog(
        false, "csv", lastPath_.empty() ? defaultName : lastPath_,
        OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST | OFN_NOREADONLYRETURN,
        LoadString(ids::kStringSaveFilter));
    dialog.SetTitle(LoadString(ids::kStringSaveTitle));
    if (dialog.DoModal() != IDOK) return;
    const CString path = dialog.GetPathName();
    const CCsvWriter writer(Analysis());
    CCsvWriter::Failure failure;
    if (writer.Write(path, &failure)) {
        lastPath_ = path;
    } else {
        ShowErrorMessage(failure.opened ? ids::kStringCannotWriteFile : ids::kStringCannotOpenFile,
                         path);
    }
}
