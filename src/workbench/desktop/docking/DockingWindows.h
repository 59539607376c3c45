#pragma once
// The docking windows of a main window: where they stand, which is the active one, whose menu is in
// the menu bar.

#include <QMainWindow>
#include <functional>
#include <vector>

#include "workbench/desktop/docking/DockingWindow.h"

namespace kvx::desktop {

class DockingWindows final : public QObject {
  public:
    // main must outlive the object. The active window's menu stands in the menu bar before that
    // action.
    DockingWindows(QMainWindow& main, QAction* menusBefore);
    ~DockingWindows() override;

    // A new window at a dock bar, under the base name or, when that is taken, one made from it.
    // Hidden until its state is set, unless the stored layout shows it.
    DockingWindow* Make(const QString& baseName, const QString& title, std::uint32_t side);
    // Shows, hides or lets it dock; see DockingWindow::SetState.
    void SetState(DockingWindow& window, std::int32_t state);
    // Destroys the window once it is safe to; it is not found any more.
    void Close(DockingWindow& window);

    // Null when there is none.
    DockingWindow* Find(HWND docking) const;
    DockingWindow* FindByName(const QString& name) const;

    // In the order of their creation.
    const std::vector<DockingWindow*>& All() const { return windows_; }
    bool IsAnyShown() const;

    // Takes all windows off the screen, and brings them back, where there is nothing to show in
    // them meanwhile.
    void PutAway();
    void BringBack();
    // Where all windows stand, those that are put away included, for RestoreLayout.
    QByteArray Layout() const;
    // False: this is no layout. Windows that are put away come back as the layout has them.
    bool RestoreLayout(const QByteArray& layout);
    // Which windows there are and how they stand; changes when the user rearranges them, but not
    // when they only get another size.
    QString Arrangement() const;

    // The one that had the focus last, or was shown last; null when none is open.
    DockingWindow* Active() const { return active_; }
    void Activate(DockingWindow* window);
    // Makes one that can be seen the active one, and gives it the focus.
    void ActivateSeen();

    // Menus of windows, and further menus of components, stand in the menu bar before it.
    QAction* MenusBefore() const { return menusBefore_; }

    // After a window was shown, hidden, made or closed.
    std::function<void()> onChanged;

  private:
    QString FreeName(const QString& baseName) const;
    void Place(DockingWindow& window, std::uint32_t side);
    void GiveHeight();
    void FollowFocus(QWidget* focus);
    void Changed() const;

    QMainWindow& main_;
    QAction* menusBefore_;
    std::vector<DockingWindow*> windows_;
    QPointer<DockingWindow> active_;
    QPointer<DockingWindow> unsized_;
    std::vector<QPointer<DockingWindow>> putAway_;
    QByteArray layoutBefore_;  // before they were put away; empty: they are not
};

}  // namespace kvx::desktop
