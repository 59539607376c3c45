#include "traceview/KeySheet.h"

#include "host/CommandIds.h"
#include "traceview/model/KeyLines.h"

namespace ids = kvx::ids;

CKeySheet::CKeySheet(CWnd* parent) : CDialog(ids::kDialogKeys, parent) {}

bool CKeySheet::OnInitDialog() {
    CDialog::OnInitDialog();
    CString keys;
    CString meanings;
    for (const kvx::KeyLine& line : kvx::TraceKeyLines()) {
        keys += line.keyText + "\n";
        meanings += line.meaning + "\n";
    }
    SetDlgItemText(ids::kKeysColumn, keys);
    SetDlgItemText(ids::kMeaningsColumn, meanings);
    return true;
}
