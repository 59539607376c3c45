#pragma once
// While a menu is open, keys are the menu's: the toolkit would give a letter to a command of the
// window below that has it as its key.

#include <QObject>

namespace kvx::desktop {

class MenuKeys final : public QObject {
  public:
    // Holds for the application as long as the object lives.
    MenuKeys();

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;
};

}  // namespace kvx::desktop
