#pragma once
// One docking window of the host: a title, the toolbar of the window, and below it the area that a
// component's control fills.

#include <QDockWidget>
#include <QMenu>
#include <QPointer>
#include <QVBoxLayout>
#include <functional>

#include "host/DockingHost.h"

namespace kvx::desktop {

// The widget that components know as the docking window. One control at a time fills it.
class DockArea final : public QWidget {
  public:
    using QWidget::QWidget;

    void SetControl(QWidget* control);
    // Shown where the user asks for a context menu; borrowed, or null.
    void SetMenu(QMenu* menu) { menu_ = menu; }

    HWND Handle() { return reinterpret_cast<HWND>(static_cast<QWidget*>(this)); }

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

  private:
    void Fit();

    QPointer<QWidget> control_;
    QPointer<QMenu> menu_;
};

class DockingWindow final : public QDockWidget {
  public:
    // The name is the window's key in stored layouts.
    DockingWindow(const QString& name, const QString& title, QWidget* parent);

    DockArea& Area() { return *area_; }
    QString Name() const { return objectName(); }

    // The state as components read it, and setting it.
    std::int32_t State() const;
    void SetState(std::int32_t state);

    // Commands and close requests of the control go there; borrowed, or null.
    IQCommandTarget* target = nullptr;
    // The user closes the window. Without one the window hides.
    std::function<void()> onClose;

    void SetToolbar(QWidget* toolbar);
    // The window's menu, borrowed; null takes it away.
    void SetMenu(QMenu* menu);
    QMenu* Menu() const { return menu_; }

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void ToggleDockingAllowed();
    bool MayDock() const { return allowedAreas() != Qt::NoDockWidgetArea; }

    DockArea* area_;
    QVBoxLayout* layout_;
    QPointer<QMenu> menu_;
};

}  // namespace kvx::desktop
