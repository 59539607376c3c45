#pragma once
// Message boxes and dialogs that the module shows. They come from the module's own copy of the
// platform layer, so they are met where the user meets them: as modal windows of the toolkit. Each
// is noted and closed; one that no test has asked for fails it.

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <functional>
#include <string>
#include <vector>

namespace kvx::test {

class ModuleBoxes {
  public:
    ModuleBoxes() {
        timer_.setInterval(1);
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { CloseBox(); });
        timer_.start();
    }
    ~ModuleBoxes() {
        for (const std::string& text : texts_) ADD_FAILURE() << "unexpected message box: " << text;
        for (const std::string& title : dialogs_) ADD_FAILURE() << "unexpected dialog: " << title;
    }
    // Takes the texts of the boxes shown so far.
    std::vector<std::string> Take() { return std::exchange(texts_, {}); }
    // Called while a dialog is open, before it is closed.
    std::function<void()> onDialog;
    // Takes the titles of the dialogs shown so far.
    std::vector<std::string> TakeDialogs() { return std::exchange(dialogs_, {}); }

  private:
    void CloseBox() {
        QWidget* const modal = QApplication::activeModalWidget();
        if (auto* const box = qobject_cast<QMessageBox*>(modal)) {
            texts_.push_back(box->text().toStdString());
            box->done(QMessageBox::Ok);
        } else if (modal) {
            dialogs_.push_back(modal->windowTitle().toStdString());
            if (onDialog) onDialog();
            modal->close();
        }
    }

    QTimer timer_;
    std::vector<std::string> texts_;
    std::vector<std::string> dialogs_;
};

}  // namespace kvx::test
