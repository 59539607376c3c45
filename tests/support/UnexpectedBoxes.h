#pragma once
// Answers dialogs in tests, in the place of the back-end's own. A message box, file or colour
// dialog or popup menu that nobody expected fails the test; an expected one that never came fails
// it too.
//
//     UnexpectedBoxes boxes;                       // for the scope of the test
//     boxes.ExpectMessage("Can not open file", IDOK);
//     boxes.ExpectFile("/tmp/a.csv");              // "" cancels
//     boxes.ExpectColour(RGB(1, 2, 3));            // nullopt cancels
//     boxes.ExpectDialog([](CDialog& dialog) { ... });

#include <gtest/gtest.h>

#include <deque>
#include <functional>

#include "platform/Backend.h"
#include "platform/dialogs/Dialog.h"
#include "platform/dialogs/MessageBox.h"
#include "platform/windows/Menu.h"

namespace kvx::test {

class UnexpectedBoxes final : public IBackend, public IDialogs {
  public:
    // Over the back-end that is there; installs one where there is none.
    UnexpectedBoxes() : installed_(!InstalledBackend() && InstallBackend()) {
        under_ = InstalledBackend();
        SetBackend(this);
    }
    ~UnexpectedBoxes() override {
        SetBackend(under_);
        if (installed_) RemoveBackend();
        EXPECT_TRUE(messages_.empty()) << "a message box did not come";
        EXPECT_TRUE(files_.empty()) << "a file dialog did not come";
        EXPECT_TRUE(colours_.empty()) << "a colour dialog did not come";
        EXPECT_TRUE(dialogs_.empty()) << "a dialog did not come";
        EXPECT_TRUE(menus_.empty()) << "a popup menu did not come";
    }
    UnexpectedBoxes(const UnexpectedBoxes&) = delete;
    UnexpectedBoxes& operator=(const UnexpectedBoxes&) = delete;

    // text: a part of the message.
    void ExpectMessage(const CString& text, int answer = IDOK) {
        messages_.push_back({text, answer});
    }
    void ExpectFile(const CString& path) { files_.push_back(path); }
    void ExpectColour(std::optional<COLORREF> colour) { colours_.push_back(colour); }
    void ExpectDialog(std::function<void(CDialog&)> user) { dialogs_.push_back(std::move(user)); }
    void ExpectMenu(UINT choice) { menus_.push_back(choice); }
    // The user, not the test, answers from now on.
    void LeaveToTheUser() { SetBackend(under_); }

    // What the latest dialogs asked; the menu as lines.
    const MessageBoxRequest& LastMessage() const { return lastMessage_; }
    const FileDialogRequest& LastFile() const { return lastFile_; }
    const CString& LastMenu() const { return lastMenu_; }

    IWindows& Windows() override { return under_->Windows(); }
    IControls& Controls() override { return under_->Controls(); }
    ITextEngine& Text() override { return under_->Text(); }
    IDialogs& Dialogs() override { return *this; }
    IDesktop& Desktop() override { return under_->Desktop(); }

    int MessageBox(const MessageBoxRequest& request) override {
        lastMessage_ = request;
        if (messages_.empty()) {
            ADD_FAILURE() << "unexpected message box: " << request.caption << ": " << request.text;
            return (request.type & MB_TYPEMASK) == MB_YESNO ? IDNO : IDCANCEL;
        }
        const auto expected = Take(messages_);
        EXPECT_NE(request.text.find(expected.text), CString::npos) << request.text;
        return expected.answer;
    }
    CString File(const FileDialogRequest& request) override {
        lastFile_ = request;
        if (!files_.empty()) return Take(files_);
        ADD_FAILURE() << "unexpected file dialog: " << request.title;
        return {};
    }
    std::optional<COLORREF> Colour(COLORREF, HWND) override {
        if (!colours_.empty()) return Take(colours_);
        ADD_FAILURE() << "unexpected colour dialog";
        return std::nullopt;
    }
    UINT PopupMenu(const CMenu& menu, POINT) override {
        lastMenu_.clear();
        Describe(menu);
        if (!menus_.empty()) return Take(menus_);
        ADD_FAILURE() << "unexpected popup menu";
        return 0;
    }
    bool ReadMenuBar(HWND window, CMenu& menu) override {
        return under_->Dialogs().ReadMenuBar(window, menu);
    }
    // A dialog that the test leaves open is cancelled.
    void RunModal(HWND window) override {
        auto* const dialog = dynamic_cast<CDialog*>(CWnd::FromHandle(window));
        ASSERT_NE(dialog, nullptr);
        dialog->ShowWindow(SW_SHOW);
        if (dialogs_.empty())
            ADD_FAILURE() << "unexpected dialog: " << dialog->GetWindowText();
        else
            Take(dialogs_)(*dialog);
        if (dialog->IsWindowVisible()) dialog->SendMessage(WM_COMMAND, MakeCommand(IDCANCEL));
    }
    void EndModal(HWND) override {}

  private:
    struct Message {
        CString text;
        int answer;
    };
    template <class T>
    static T Take(std::deque<T>& queue) {
        T first = std::move(queue.front());
        queue.pop_front();
        return first;
    }
    void Describe(const CMenu& menu) {
        for (const CMenu::Item& item : menu.Items()) {
            lastMenu_ +=
                item.text + (item.enabled ? "" : " (off)") + (item.checked ? " *" : "") + "\n";
            if (item.popup) Describe(*item.popup);
        }
    }

    const bool installed_;
    IBackend* under_ = nullptr;
    std::deque<Message> messages_;
    std::deque<CString> files_;
    std::deque<std::optional<COLORREF>> colours_;
    std::deque<std::function<void(CDialog&)>> dialogs_;
    std::deque<UINT> menus_;
    MessageBoxRequest lastMessage_;
    FileDialogRequest lastFile_;
    CString lastMenu_;
};

}  // namespace kvx::test
