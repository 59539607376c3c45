#pragma once
// Answers dialogs in tests. A message box, file or colour dialog or popup menu that nobody expected
// fails the test; an expected one that never came fails it too.
//
//     UnexpectedBoxes boxes;                       // for the scope of the test
//     boxes.ExpectMessage("Can not open file", IDOK);
//     boxes.ExpectFile("/tmp/a.csv");              // "" cancels
//     boxes.ExpectColour(RGB(1, 2, 3));            // nullopt cancels
//     boxes.ExpectDialog([](CDialog& dialog) { ... });

#include <gtest/gtest.h>

#include <deque>
#include <functional>

#include "platform/dialogs/Dialog.h"
#include "platform/dialogs/DialogResponder.h"
#include "platform/dialogs/MessageBox.h"

namespace kvx::test {

class UnexpectedBoxes : public IDialogResponder {
  public:
    UnexpectedBoxes() : previous_(SetDialogResponder(this)) {}
    ~UnexpectedBoxes() override {
        SetDialogResponder(previous_);
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

    // What the latest dialogs asked.
    const MessageBoxRequest& LastMessage() const { return lastMessage_; }
    const FileDialogRequest& LastFile() const { return lastFile_; }

    std::optional<int> OnMessageBox(const MessageBoxRequest& request) override {
        lastMessage_ = request;
        if (messages_.empty()) {
            ADD_FAILURE() << "unexpected message box: " << request.caption << ": " << request.text;
            return (request.type & MB_TYPEMASK) == MB_YESNO ? IDNO : IDCANCEL;
        }
        const auto expected = Take(messages_);
        EXPECT_NE(request.text.find(expected.text), CString::npos) << request.text;
        return expected.answer;
    }
    std::optional<CString> OnFileDialog(const FileDialogRequest& request) override {
        lastFile_ = request;
        if (!files_.empty()) return Take(files_);
        ADD_FAILURE() << "unexpected file dialog: " << request.title;
        return CString();
    }
    std::optional<ColourAnswer> OnColourDialog(COLORREF initial) override {
        if (colours_.empty()) {
            ADD_FAILURE() << "unexpected colour dialog";
            return ColourAnswer{false, initial};
        }
        const auto colour = Take(colours_);
        return ColourAnswer{colour.has_value(), colour.value_or(initial)};
    }
    bool OnModalDialog(CDialog& dialog) override {
        if (dialogs_.empty()) {
            ADD_FAILURE() << "unexpected dialog: " << dialog.GetWindowText();
            return true;
        }
        Take(dialogs_)(dialog);
        return true;
    }
    std::optional<UINT> OnPopupMenu(const CMenu&) override {
        if (!menus_.empty()) return Take(menus_);
        ADD_FAILURE() << "unexpected popup menu";
        return 0u;
    }

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

    IDialogResponder* previous_;
    std::deque<Message> messages_;
    std::deque<CString> files_;
    std::deque<std::optional<COLORREF>> colours_;
    std::deque<std::function<void(CDialog&)>> dialogs_;
    std::deque<UINT> menus_;
    MessageBoxRequest lastMessage_;
    FileDialogRequest lastFile_;
};

}  // namespace kvx::test
