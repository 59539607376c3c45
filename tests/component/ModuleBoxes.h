#pragma once
// Message boxes that the module shows. They come from the module's own copy of the platform layer,
// so they are met where the user meets them: as modal windows of the toolkit. Each is noted and
// closed; a box that no test has asked for fails it.

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <string>
#include <vector>

namespace kvx::test {

class ModuleBoxes {
  public:
    ModuleBoxes() {
        timer_.setInterval(5);
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { CloseBox(); });
        timer_.start();
    }
    ~ModuleBoxes() {
        for (const std::string& text : texts_) ADD_FAILURE() << "unexpected message box: " << text;
    }
    // Takes the texts of the boxes shown so far.
    std::vector<std::string> Take() { return std::exchange(texts_, {}); }

  private:
    void CloseBox() {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box) return;
        texts_.push_back(box->text().toStdString());
        box->done(QMessageBox::Ok);
    }

    QTimer timer_;
    std::vector<std::string> texts_;
};

}  // namespace kvx::test
