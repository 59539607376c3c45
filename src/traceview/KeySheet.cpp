#include "traceview/KeySheet.h"

#include "host/CommandIds.h"
#include "traceview/model/KeyBindings.h"

namespace ids = kvx::ids;

CKeySheet::CKeySheet(CWnd* parent) : CDialog(ids::kDialogKeys, parent) {}

bool CKeySheet::OnInitDialog() {
    CDialog::OnInitDialog();
    CString keys;
    CString meanings;
    for (const kvx::KeyBinding& binding : kvx::KeyBindings()) {
        keys += CString(binding.keyText) + "\n";
        meanings += CString(binding.meaning) + "\n";
    }
    SetDlgItemText(ids::kKeysColumn, keys);
    SetDlgItemText(ids::kMeaningsColumn, meanings);
    return true;
}
