#pragma once
// Message boxes and dialogs that the module shows: each is noted and closed, as a user in a hurry
// would; one that no test has asked for fails it.

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Backend.h"
#include "platform/windows/Wnd.h"

namespace kvx::test {

class ModuleBoxes final : public IBackend, public IDialogs {
  public:
    // Over the back-end that is there; installs one where there is none.
    ModuleBoxes() : installed_(!InstalledBackend() && InstallBackend()) {
        under_ = InstalledBackend();
        SetBackend(this);
    }
    ~ModuleBoxes() override {
        SetBackend(under_);
        if (installed_) RemoveBackend();
        for (const std::string& text : texts_) ADD_FAILURE() << "unexpected message box: " << text;
        for (const std::string& title : dialogs_) ADD_FAILURE() << "unexpected dialog: " << title;
    }
    ModuleBoxes(const ModuleBoxes&) = delete;
    ModuleBoxes& operator=(const ModuleBoxes&) = delete;

    // Takes the texts of the boxes shown so far.
    std::vector<std::string> Take() { return std::exchange(texts_, {}); }
    // Called while a dialog is open, before it is closed.
    std::function<void()> onDialog;
    // Takes the titles of the dialogs shown so far.
    std::vector<std::string> TakeDialogs() { return std::exchange(dialogs_, {}); }

    IWindows& Windows() override { return under_->Windows(); }
    IControls& Controls() override { return under_->Controls(); }
    ITextEngine& Text() override { return under_->Text(); }
    IDialogs& Dialogs() override { return *this; }
    IDesktop& Desktop() override { return under_->Desktop(); }

    int MessageBox(const MessageBoxRequest& request) override {
        texts_.push_back(request.text);
        return IDOK;
    }
    CString File(const FileDialogRequest& request) override {
        Note(request.title);
        return {};
    }
    std::optional<COLORREF> Colour(COLORREF, HWND) override {
        Note("colour");
        return {};
    }
    UINT PopupMenu(const CMenu&, POINT) override { return 0; }
    bool ReadMenuBar(HWND window, CMenu& menu) override {
        return under_->Dialogs().ReadMenuBar(window, menu);
    }
    void RunModal(HWND window) override {
        CWnd* const dialog = CWnd::FromHandle(window);
        dialog->ShowWindow(SW_SHOW);
        Note(dialog->GetWindowText());
        ::SendMessage(window, WM_CLOSE, 0, 0);
    }
    void EndModal(HWND) override {}

  private:
    void Note(const std::string& title) {
        dialogs_.push_back(title);
        if (onDialog) onDialog();
    }

    const bool installed_;
    IBackend* under_ = nullptr;
    std::vector<std::string> texts_;
    std::vector<std::string> dialogs_;
};

}  // namespace kvx::test
