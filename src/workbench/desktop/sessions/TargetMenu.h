#pragma once
// The Target menu with its toolbar and its place in the status line.

#include <QAction>
#include <QLabel>
#include <QMainWindow>
#include <QToolBar>
#include <functional>

#include "workbench/desktop/sessions/TargetSession.h"

namespace kvx::desktop {

class TargetMenu final : public QObject {
  public:
    // Adds all three to the window, which must outlive the object; the menu stands before that one.
    TargetMenu(QMainWindow& window, QAction* before);

    // To be set before the window is shown.
    std::function<void()> onConnect;
    std::function<void()> onDisconnect;
    std::function<void()> onGo;
    std::function<void()> onStop;
    std::function<void()> onReset;
    std::function<void()> onBufferSize;

    // Shows how it is; null: not connected.
    void Show(const TargetSession* session);

  private:
    QAction* connect_;
    QAction* disconnect_;
    QAction* go_;
    QAction* stop_;
    QAction* reset_;
    QAction* bufferSize_;
    QToolBar* toolbar_;
    QLabel* status_;
};

}  // namespace kvx::desktop
