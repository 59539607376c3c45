#pragma once
// Tells the windows made here when something else comes before them: a modal window of
// anybody, a menu, another program. Whatever a window does with the mouse ends then.

#include <QBasicTimer>
#include <QObject>

namespace kvx::qt {

class CancelMode final : public QObject {
  public:
    // Holds for the application as long as the object lives.
    CancelMode();

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

  private:
    QBasicTimer later_;  // ends with the object, as the library's code may
};

}  // namespace kvx::qt
