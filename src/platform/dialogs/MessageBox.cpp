#include "platform/dialogs/MessageBox.h"

#include <cstdio>

#include "platform/Backend.h"
#include "platform/base/SystemInfo.h"
#include "platform/base/WinApp.h"
#include "platform/windows/WindowState.h"

int MessageBox(HWND owner, const CString& text, const CString& caption, UINT type) {
    if (!owner) owner = AfxGetMainWnd() ? AfxGetMainWnd()->GetSafeHwnd() : nullptr;
    const MessageBoxRequest request{owner, text, caption, type};
    if (!kvx::InstalledBackend()) {
        std::fprintf(stderr, "%s\n", text.c_str());
        return IDCANCEL;
    }
    kvx::EndCapture();
    MessageBeep(type & MB_ICONMASK);
    return kvx::Backend().Dialogs().MessageBox(request);
}

int AfxMessageBox(const CString& text, UINT type) {
    if (!(type & MB_ICONMASK)) type |= MB_ICONEXCLAMATION;
    const CWnd* const main = AfxGetMainWnd();
    return MessageBox(nullptr, text, main ? main->GetWindowText() : CString(), type);
}
