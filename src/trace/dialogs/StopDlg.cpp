#include "trace/dialogs/StopDlg.h"

#include "host/CommandIds.h"
#include "platform/base/WinApp.h"

namespace {

constexpr UINT kProgressControl = 9008;

}  // namespace

CStopDlgBase::CStopDlgBase(UINT templateId, CWnd* parent, const char* caption)
    : templateId_(templateId),
      parent_(parent ? parent->GetSafeHwnd() : nullptr),
      caption_(caption) {
    if (parent) parent->EnableWindow(false);
}

CStopDlgBase::~CStopDlgBase() {
    DestroyWindow();
}

int CStopDlgBase::Create() {
    return CDialog::Create(templateId_, CWnd::FromHandle(parent_));
}

void CStopDlgBase::EnableParent() {
    CWnd* const parent = ::IsWindow(parent_) ? CWnd::FromHandle(parent_) : nullptr;
    if (parent && !parent->IsWindowEnabled()) parent->EnableWindow(true);
}

bool CStopDlgBase::DestroyWindow() {
    EnableParent();
    return CDialog::DestroyWindow();
}

int CStopDlgBase::Check_QXTraceStop() {
    DispatchWaitingMessages(GetSafeHwnd());
    return cancelled_;
}

// The dialog stands at the top left corner of its parent, or of the main window.
bool CStopDlgBase::OnInitDialog() {
    CDialog::OnInitDialog();
    const CWnd* anchor = parent_ ? CWnd::FromHandle(parent_) : AfxGetMainWnd();
    if (anchor) {
        const CPoint corner = anchor->GetWindowRect().TopLeft();
        SetWindowPos(nullptr, corner.x, corner.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    }
    if (!caption_.empty()) SetWindowText(caption_);
    return true;
}

void CStopDlgBase::OnCancel() {
    cancelled_ = 1;
    CDialog::OnCancel();
}

CStopDlgCore::CStopDlgCore(CWnd* parent, const char* caption)
    : CStopDlgBase(kvx::ids::kDialogProgress, parent, caption) {}

void CStopDlgCore::SetProgress(int range, int position) {
    range_ = range;
    position_ = position;
}

void CStopDlgCore::UpdateProgress() {
    if (!progress_.IsWindow()) return;
    progress_.SetRange(0, range_);
    progress_.SetPos(position_);
}

bool CStopDlgCore::OnInitDialog() {
    CStopDlgBase::OnInitDialog();
    UpdateProgress();
    return true;
}

void CStopDlgCore::DoDataExchange(CDataExchange* exchange) {
    CStopDlgBase::DoDataExchange(exchange);
    DDX_Control(exchange, kProgressControl, progress_);
}

CStopOnlyDlgCore::CStopOnlyDlgCore(CWnd* parent, const char* caption)
    : CStopDlgBase(kvx::ids::kDialogStop, parent, caption) {}
