#pragma once
// Keeps a window and what lies in it light while the rest of the program is dark.

#include <QObject>
#include <QWidget>

namespace kvx::qt {

class LightPalette final : public QObject {
  public:
    // Lives as long as the window.
    explicit LightPalette(QWidget& window);

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void Apply();

    QWidget& window_;
};

}  // namespace kvx::qt
