#pragma once
// Answers message boxes as a user would, and keeps their texts.

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

namespace kvx::test {

class BoxAnswer {
  public:
    explicit BoxAnswer(QMessageBox::StandardButton button = QMessageBox::Ok) {
        QObject::connect(&poll_, &QTimer::timeout, [this, button] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box) return;
            texts.append(box->text());
            QAbstractButton* pressed = box->button(button);
            pressed ? pressed->click() : box->reject();
        });
        poll_.start(10);
    }
    QStringList texts;

  private:
    QTimer poll_;
};

}  // namespace kvx::test
