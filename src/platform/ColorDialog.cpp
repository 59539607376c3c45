#include "platform/ColorDialog.h"

#include "platform/Backend.h"
#include "platform/DialogResponder.h"
#include "platform/WinApp.h"
#include "platform/WindowState.h"

int CColorDialog::DoModal() {
    if (IDialogResponder* responder = GetDialogResponder()) {
        if (const auto answer = responder->OnColourDialog(colour_)) {
            if (answer->accepted) colour_ = answer->colour;
            return answer->accepted ? IDOK : IDCANCEL;
        }
    }
    kvx::EndCapture();
    const CWnd* const owner = parent_ ? parent_ : AfxGetMainWnd();
    const auto chosen =
        kvx::Backend().Dialogs().Colour(colour_, owner ? owner->GetSafeHwnd() : nullptr);
    colour_ = chosen.value_or(colour_);
    return chosen ? IDOK : IDCANCEL;
}
