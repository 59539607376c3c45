#pragma once
// When the states of commands are asked for: soon after anything that may have changed them, which
// is what the user does and what the host tells its components. Nothing happens while nothing does.

#include <QBasicTimer>
#include <QObject>
#include <functional>

namespace kvx::desktop {

class CommandUpdates final : public QObject {
  public:
    // Watches the application's input; update is called from the message loop.
    explicit CommandUpdates(std::function<void()> update);

    // After another cause; several close upon each other are one.
    void Soon();

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

  private:
    std::function<void()> update_;
    QBasicTimer soon_;
};

}  // namespace kvx::desktop
