#pragma once
// What the main window shows while no window of a component is open.

#include <QWidget>
#include <functional>

namespace kvx::desktop {

class StartPage final : public QWidget {
  public:
    explicit StartPage(QWidget* parent = nullptr);

    // Shows these traces as links, newest first.
    void SetRecent(const QStringList& recordings);

    std::function<void()> onOpenTrace;
    std::function<void()> onOpenFolder;
    std::function<void()> onDemonstration;
    std::function<void()> onSimulation;
    std::function<void(const QString& recording)> onOpenRecent;

  private:
    QWidget* recent_;
};

}  // namespace kvx::desktop
