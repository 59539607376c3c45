#pragma once
// What the main window shows while no window of a component is open.

#include <QWidget>
#include <functional>

namespace kvx::desktop {

class StartPage final : public QWidget {
  public:
    explicit StartPage(QWidget* parent = nullptr);

    // Shows these traces as links, newest first.
    void SetRecent(const QStringList& paths);

    std::function<void()> onOpenTrace;
    std::function<void()> onOpenFolder;
    std::function<void()> onDemonstration;
    std::function<void()> onSimulation;
    std::function<void(const QString& path)> onOpenRecent;

  private:
    QWidget* recent_;
};

}  // namespace kvx::desktop
