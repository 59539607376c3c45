#include "utils/ErrorMessage.h"

#include "host/DebuggerFunctions.h"
#include "host/ModuleHost.h"
#include "platform/MessageBox.h"
#include "platform/Resources.h"
#include "platform/Text.h"
#include "platform/WinApp.h"
#include "platform/Wnd.h"

namespace {

void ShowError(const CString& text) {
    if (!kvx::host::ModuleHost()) return;
    CWnd* main = AfxGetMainWnd();
    if (main) main->SetForegroundWindow();
    MessageBox(main ? main->GetSafeHwnd() : nullptr, "ERROR: " + text, "Error",
               MB_OK | MB_ICONEXCLAMATION);
}

}  // namespace

void ShowErrorMessage(UINT stringId) {
    ShowError(LoadString(stringId));
}

void ShowErrorMessage(UINT stringId, const CString& argument) {
    ShowError(kvx::FormatResource(LoadString(stringId), argument));
}

void ShowDebuggerError() {
    const auto text = kvx::host::CallDebugger(kvx::host::DebuggerIndex("ERR_GetErrMsg"));
    const char* const message = reinterpret_cast<const char*>(text);
    ShowError(message && *message ? message : "???");
}
