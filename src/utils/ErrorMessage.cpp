#include "utils/ErrorMessage.h"

#include <map>
#include <utility>

#include "host/DebuggerFunctions.h"
#include "host/ModuleHost.h"
#include "platform/base/Resources.h"
#include "platform/base/Text.h"
#include "platform/base/WinApp.h"
#include "platform/dialogs/MessageBox.h"
#include "platform/windows/Wnd.h"

namespace {

struct ErrorRecord {
    int users = 0;    // component objects
    CString pending;  // the whole text that is to be shown; empty: none
};

std::map<IQHost*, ErrorRecord>& Records() {
    static std::map<IQHost*, ErrorRecord> records;
    return records;
}

// Of the module's host, or null.
ErrorRecord* CurrentRecord() {
    const auto found = Records().find(kvx::host::ModuleHost());
    return found == Records().end() ? nullptr : &found->second;
}

CString ErrorText(const CString& message) {
    return kvx::FormatResource("ERROR: %s", message);
}

CString DebuggerError() {
    const auto text = kvx::host::CallDebugger(kvx::host::DebuggerIndex("ERR_GetErrMsg"));
    const char* const message = reinterpret_cast<const char*>(text);
    return ErrorText(message && *message ? message : "???");
}

void ShowError(const CString& message) {
    if (ErrorRecord* const record = CurrentRecord()) record->pending = ErrorText(message);
    ShowPendingError();
}

}  // namespace

void OpenErrorRecord(IQHost* host) {
    ++Records()[host].users;
}

bool CloseErrorRecord(IQHost* host) {
    const auto found = Records().find(host);
    if (found == Records().end()) return false;
    if (--found->second.users > 0) return true;
    Records().erase(found);
    return false;
}

void ShowErrorMessage(UINT stringId) {
    ShowError(LoadString(stringId));
}

void ShowErrorMessage(UINT stringId, const CString& argument) {
    ShowError(kvx::FormatResource(LoadString(stringId), argument));
}

void ShowPendingError() {
    ErrorRecord* const record = CurrentRecord();
    if (!record) return;
    const CString pending = std::exchange(record->pending, {});
    CWnd* const main = AfxGetMainWnd();
    if (main) main->SetForegroundWindow();
    MessageBox(main ? main->GetSafeHwnd() : nullptr, pending.empty() ? DebuggerError() : pending,
               "Error", MB_OK | MB_ICONEXCLAMATION);
}
