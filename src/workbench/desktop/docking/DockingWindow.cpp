#include "workbench/desktop/docking/DockingWindow.h"

#include <QCloseEvent>
#include <QContextMenuEvent>

namespace kvx::desktop {
namespace {

constexpr QSize kSmallest(320, 120);
constexpr QPoint kFloatStep(24, 24);

}  // namespace

// The control is in the middle of its creation: what it holds comes after this call, and would miss
// a size that it got before.
void DockArea::SetControl(QWidget* control) {
    control_ = control;
    if (!control) return;
    setFocusProxy(control);
    QMetaObject::invokeMethod(
        this, [this] { Fit(); }, Qt::QueuedConnection);
}

void DockArea::Fit() {
    if (control_) control_->setGeometry(rect());
}

void DockArea::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Fit();
}

void DockArea::contextMenuEvent(QContextMenuEvent* event) {
    if (menu_) menu_->popup(event->globalPos());
}

void DockArea::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    if (control_) control_->setFocus(event->reason());
}

DockingWindow::DockingWindow(const QString& name, const QString& title, QWidget* parent)
    : QDockWidget(title, parent), area_(new DockArea) {
    setObjectName(name);
    auto* content = new QWidget;
    content->setMinimumSize(kSmallest);  // also what a window gets that is docked beside another
    layout_ = new QVBoxLayout(content);
    layout_->setContentsMargins(0, 0, 0, 0);
    layout_->setSpacing(0);
    layout_->addWidget(area_, 1);
    setWidget(content);
}

std::int32_t DockingWindow::State() const {
    std::int32_t state = isHidden() ? kDockHide : kDockShow;
    if (isFloating()) state |= kDockFloating;
    if (MayDock()) state |= kDockMayDock;
    return state;
}

void DockingWindow::SetState(std::int32_t state) {
    if (state == kDockHide) hide();
    if (state == kDockToggleAllowed) ToggleDockingAllowed();
    if (state != kDockShow) return;
    show();
    raise();
    if (isFloating()) activateWindow();
    area_->setFocus();
}

// A window that may not dock floats.
void DockingWindow::ToggleDockingAllowed() {
    const bool allow = !MayDock();
    if (!allow) {
        setFloating(true);
        move(pos() + kFloatStep);  // so that it is seen to have left its place
    }
    setAllowedAreas(allow ? Qt::AllDockWidgetAreas : Qt::NoDockWidgetArea);
    if (allow) setFloating(false);
}

void DockingWindow::SetToolbar(QWidget* toolbar) {
    layout_->insertWidget(0, toolbar);
}

void DockingWindow::SetMenu(QMenu* menu) {
    menu_ = menu;
    area_->SetMenu(menu);
}

void DockingWindow::closeEvent(QCloseEvent* event) {
    if (!onClose) return QDockWidget::closeEvent(event);
    event->ignore();
    onClose();
}

}  // namespace kvx::desktop
