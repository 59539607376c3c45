#pragma once
// Who answers dialogs in place of the user: a program that runs without a display, or a test.

#include <optional>
#include <vector>

#include "platform/base/Types.h"

class CDialog;

struct MessageBoxRequest {
    HWND owner = nullptr;
    CString text;
    CString caption;
    UINT type = 0;  // MB_ flags
};

struct FileFilter {
    CString label;
    CString patterns;  // "*.csv;*.txt"
};

struct FileDialogRequest {
    bool open = true;  // else: save
    HWND owner = nullptr;
    CString title;
    CString directory;
    CString name;
    std::vector<FileFilter> filters;
};

// Every operation is asked before the dialog would be shown; an empty answer shows it.
class IDialogResponder {
  public:
    virtual ~IDialogResponder() = default;
    // IDOK, IDYES, ...
    virtual std::optional<int> OnMessageBox(const MessageBoxRequest&) { return {}; }
    // A path; an empty one cancels. Asked again while the dialog does not accept the answer.
    virtual std::optional<CString> OnFileDialog(const FileDialogRequest&) { return {}; }
    struct ColourAnswer {
        bool accepted = false;
        COLORREF colour = 0;
    };
    virtual std::optional<ColourAnswer> OnColourDialog(COLORREF /*initial*/) { return {}; }
    // A modal dialog, created and initialised: works on its controls and ends it by a command
    // (SendMessage WM_COMMAND). True: answered; a dialog that was not ended is cancelled.
    virtual bool OnModalDialog(CDialog&) { return false; }
    // The menu's choice (its command), 0 for none.
    virtual std::optional<UINT> OnPopupMenu(const class CMenu&) { return {}; }
};

// Borrows the responder; null: none. Answers the previous one.
IDialogResponder* SetDialogResponder(IDialogResponder* responder);
IDialogResponder* GetDialogResponder();
