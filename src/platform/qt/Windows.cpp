// Making, finding and ending windows. Look, place and input focus: WindowsLayout.cpp.

#include "platform/qt/Windows.h"

#include <QApplication>
#include <QPointer>
#include <QVariant>

#include "platform/base/Styles.h"
#include "platform/qt/ControlFactory.h"
#include "platform/qt/Convert.h"
#include "platform/qt/FileDrop.h"
#include "platform/qt/LightPalette.h"
#include "platform/qt/MessageEvent.h"
#include "platform/qt/MessagePump.h"
#include "platform/qt/PlainWindow.h"

namespace kvx::qt {

namespace {

Qt::WindowFlags FlagsOf(DWORD style) {
    if (style & WS_CHILD) return Qt::Widget;
    const bool caption = (style & WS_CAPTION) == WS_CAPTION;
    if ((style & WS_POPUP) && !caption) return Qt::ToolTip;
    Qt::WindowFlags flags = style & WS_POPUP ? Qt::Dialog : Qt::Window;
    flags |= Qt::CustomizeWindowHint | Qt::WindowTitleHint;
    if (style & WS_SYSMENU) flags |= Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
    if (style & WS_MINIMIZEBOX) flags |= Qt::WindowMinimizeButtonHint;
    if (style & WS_MAXIMIZEBOX) flags |= Qt::WindowMaximizeButtonHint;
    return flags;
}

QWidget* MakePlain(const WindowRequest& request, QWidget* parent, IWindowSink* sink) {
    const Qt::WindowFlags flags = FlagsOf(request.style);
    auto* const window = new PlainWindow(parent, flags, request.frame, sink);
    if (flags == Qt::ToolTip) window->setAttribute(Qt::WA_ShowWithoutActivating);
    window->setAttribute(Qt::WA_TransparentForMouseEvents, !request.takesMouse);
    if (request.style & WS_TABSTOP) window->setFocusPolicy(Qt::TabFocus);
    return window;
}

QPoint ClientOriginIn(const QWidget* widget) {
    return widget->contentsRect().topLeft();
}

}  // namespace

QtWindows::~QtWindows() {
    for (const QPointer<QWidget>& widget : doomed_) delete widget.data();
}

HWND QtWindows::Create(const WindowRequest& request, IWindowSink* sink) {
    QWidget* const parent = ToWidget(request.parent);
    if ((request.style & WS_CHILD) && !parent) return nullptr;
    const bool plain = request.kind == WindowKind::Plain || request.kind == WindowKind::Backdrop;
    QWidget* const widget =
        plain ? MakePlain(request, parent, sink) : MakeControl(request, parent, sink);
    // What lies in a light window is light with it.
    const bool inherits = OwnWindow::Of(parent) && !widget->isWindow();
    if (request.light && !inherits) new LightPalette(*widget);
    SetWindowId(widget, request.id);
    const HWND handle = ToHandle(widget);
    SetText(handle, request.text);
    QRect rect = ToQRect(request.rect);
    if (!widget->isWindow()) rect.translate(ClientOriginIn(parent));
    rect.setSize(rect.size().expandedTo(QSize(0, 0)));
    widget->setGeometry(rect);
    if (request.kind == WindowKind::Backdrop) widget->lower();
    if (auto* window = PlainWindow::Of(widget)) window->BeginSizes();
    return handle;
}

void QtWindows::Destroy(HWND window) {
    QWidget* const widget = ToWidget(window);
    const QPointer<QWidget> guard(widget);
    std::vector<QPointer<QWidget>> own{widget};
    for (QWidget* child : widget->findChildren<QWidget*>())
        if (OwnWindow::Of(child)) own.emplace_back(child);
    for (const QPointer<QWidget>& each : own)
        if (OwnWindow* part = each ? OwnWindow::Of(each) : nullptr) part->Detach();
    if (guard) Delete(widget);
}

void QtWindows::Delete(QWidget* widget) {
    ActivateOwner(widget);
    if (!OwnWindow::EventScope::Active()) {
        delete widget;
        return;
    }
    SetInternal(widget);
    widget->hide();
    widget->deleteLater();
    std::erase_if(doomed_, [](const QPointer<QWidget>& each) { return each.isNull(); });
    doomed_.emplace_back(widget);
}

bool QtWindows::Exists(HWND window) const {
    if (!window) return false;
    QWidget* const widget = ToWidget(window);
    if (const OwnWindow* own = OwnWindow::Of(widget)) return own->Sink() != nullptr;
    return QApplication::allWidgets().contains(widget) && !IsInternal(widget);
}

LRESULT QtWindows::Send(HWND window, UINT message, WPARAM wParam, LPARAM) {
    if (message != WM_DROPFILES) return 0;
    const auto drop = reinterpret_cast<HDROP>(wParam);
    const bool accepted = DropFilesOn(ToWidget(window), drop);
    DragFinish(drop);
    return accepted ? 1 : 0;
}

void QtWindows::Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    QCoreApplication::postEvent(ToWidget(window), new MessageEvent(message, wParam, lParam));
}

HWND QtWindows::Parent(HWND window) const {
    return ToHandle(ToWidget(window)->parentWidget());
}

std::vector<HWND> QtWindows::Children(HWND window) const {
    std::vector<HWND> children;
    for (QObject* child : ToWidget(window)->children()) {
        if (!child->isWidgetType()) continue;
        const auto* const widget = static_cast<QWidget*>(child);
        if (!IsInternal(widget)) children.push_back(ToHandle(widget));
    }
    return children;
}

HWND QtWindows::Child(HWND window, UINT id) const {
    for (const HWND child : Children(window))
        if (WindowId(ToWidget(child)) == id && !ToWidget(child)->isWindow()) return child;
    return nullptr;
}

UINT QtWindows::Id(HWND window) const {
    return WindowId(ToWidget(window));
}

HWND QtWindows::TopLevel(HWND window) const {
    return ToHandle(ToWidget(window)->window());
}

void QtWindows::DispatchWaiting(HWND window) {
    DispatchWaitingFor(ToWidget(window));
}

int QtWindows::Run() {
    return QCoreApplication::exec();
}

void QtWindows::Quit() {
    QCoreApplication::quit();
}

}  // namespace kvx::qt
