#pragma once
// The standard dialogs that ask for a file to open or to write.

#include "platform/dialogs/DialogRequests.h"
#include "platform/windows/Wnd.h"

inline constexpr DWORD OFN_READONLY = 0x0001;
inline constexpr DWORD OFN_OVERWRITEPROMPT = 0x0002;
inline constexpr DWORD OFN_HIDEREADONLY = 0x0004;
inline constexpr DWORD OFN_PATHMUSTEXIST = 0x0800;
inline constexpr DWORD OFN_FILEMUSTEXIST = 0x1000;
inline constexpr DWORD OFN_NOREADONLYRETURN = 0x8000;

class CFileDialog {
  public:
    // filter: "Label|*.csv;*.txt|Label|*.*||". fileName: a path, a name, or a pattern such as
    // "dir/*.csv" that names the directory. defaultExtension is added to a name without one.
    CFileDialog(bool open, const CString& defaultExtension = {}, const CString& fileName = {},
                DWORD flags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, const CString& filter = {},
                CWnd* parent = nullptr);
    void SetTitle(const CString& title) { request_.title = title; }
    // IDOK or IDCANCEL. Asks before a file is overwritten, and refuses what the flags forbid, with
    // the dialog staying open.
    int DoModal();
    CString GetPathName() const { return path_; }

  private:
    bool Accept(CString& path) const;
    FileDialogRequest request_;
    CString defaultExtension_;
    DWORD flags_;
    CWnd* parent_;
    CString path_;
};
