#pragma once
// Tells when windows of components were painted: nothing else says that a chart shows something
// else.

#include <QObject>
#include <functional>

namespace kvx::desktop {

class PaintWatch final : public QObject {
  public:
    PaintWatch();
    // From the event loop, once after any number of paints.
    std::function<void()> onPaint;

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool isTold_ = false;  // it is on its way
};

}  // namespace kvx::desktop
