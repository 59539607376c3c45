#include "platform/dialogs/ColorDialog.h"

#include "platform/Backend.h"
#include "platform/base/WinApp.h"
#include "platform/windows/WindowState.h"

int CColorDialog::DoModal() {
    kvx::EndCapture();
    const CWnd* const owner = parent_ ? parent_ : AfxGetMainWnd();
    const auto chosen =
        kvx::Backend().Dialogs().Colour(colour_, owner ? owner->GetSafeHwnd() : nullptr);
    colour_ = chosen.value_or(colour_);
    return chosen ? IDOK : IDCANCEL;
}
