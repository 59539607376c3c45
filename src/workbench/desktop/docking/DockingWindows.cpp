#include "workbench/desktop/docking/DockingWindows.h"

#include <QApplication>
#include <QMenuBar>
#include <algorithm>

namespace kvx::desktop {
namespace {

// Dock bars as the framework numbers them; the bottom one is 59422.
constexpr std::uint32_t kTopBar = 59419;
constexpr std::uint32_t kLeftBar = 59420;
constexpr std::uint32_t kRightBar = 59421;

constexpr int kNewShare = 45;  // per cent of the height, for a window below others

Qt::DockWidgetArea AreaOf(std::uint32_t side) {
    switch (side) {
        case kTopBar:
            return Qt::TopDockWidgetArea;
        case kLeftBar:
            return Qt::LeftDockWidgetArea;
        case kRightBar:
            return Qt::RightDockWidgetArea;
        default:
            return Qt::BottomDockWidgetArea;
    }
}

}  // namespace

DockingWindows::DockingWindows(QMainWindow& main, QAction* menusBefore)
    : main_(main), menusBefore_(menusBefore) {
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget*, QWidget* now) { FollowFocus(now); });
}

DockingWindows::~DockingWindows() {
    for (DockingWindow* window : windows_) {
        window->disconnect(this);
        delete window;
    }
}

DockingWindow* DockingWindows::Make(const QString& baseName, const QString& title,
                                    std::uint32_t side) {
    auto* window = new DockingWindow(FreeName(baseName), title, &main_);
    if (!main_.restoreDockWidget(window)) {
        Place(*window, side);
        window->hide();
        unsized_ = window;
    }
    windows_.push_back(window);
    connect(window, &QDockWidget::visibilityChanged, this, [this] { Changed(); });
    Changed();
    return window;
}

void DockingWindows::SetState(DockingWindow& window, std::int32_t state) {
    window.SetState(state);
    if (state == kDockShow) {
        Activate(&window);
        if (unsized_ == &window) {
            // The layout takes the window in first.
            QMetaObject::invokeMethod(
                this, [this] { GiveHeight(); }, Qt::QueuedConnection);
        }
    }
    Changed();
}

void DockingWindows::Close(DockingWindow& window) {
    std::erase(windows_, &window);
    window.onClose = nullptr;
    window.disconnect(this);
    main_.removeDockWidget(&window);
    window.setObjectName({});  // layouts mean the next window of that name
    window.deleteLater();
    if (active_ == &window) Activate(windows_.empty() ? nullptr : windows_.back());
    Changed();
}

DockingWindow* DockingWindows::Find(HWND docking) const {
    const auto found = std::ranges::find_if(
        windows_, [docking](DockingWindow* window) { return window->Area().Handle() == docking; });
    return found == windows_.end() ? nullptr : *found;
}

DockingWindow* DockingWindows::FindByName(const QString& name) const {
    const auto found = std::ranges::find(windows_, name, &DockingWindow::Name);
    return found == windows_.end() ? nullptr : *found;
}

bool DockingWindows::IsAnyShown() const {
    return std::ranges::any_of(windows_, [](const auto* window) { return !window->isHidden(); });
}

void DockingWindows::PutAway() {
    if (layoutBefore_.isEmpty()) layoutBefore_ = main_.saveState();
    for (DockingWindow* window : windows_) {
        if (window->isHidden()) continue;
        window->SetState(kDockHide);
        putAway_.emplace_back(window);
    }
    Changed();
}

void DockingWindows::BringBack() {
    layoutBefore_.clear();
    for (const auto& window : std::exchange(putAway_, {})) {
        if (window) SetState(*window, kDockShow);
    }
}

QByteArray DockingWindows::Layout() const {
    return layoutBefore_.isEmpty() || IsAnyShown() ? main_.saveState() : layoutBefore_;
}

bool DockingWindows::RestoreLayout(const QByteArray& layout) {
    putAway_.clear();
    layoutBefore_.clear();
    unsized_ = nullptr;
    const bool done = main_.restoreState(layout);
    Changed();
    return done;
}

QString DockingWindows::Arrangement() const {
    QString text;
    for (DockingWindow* window : windows_) {
        const bool putAway =
            std::ranges::any_of(putAway_, [window](const auto& other) { return other == window; });
        const bool hidden = window->isHidden() && !putAway;
        text += QStringLiteral("%1 %2 %3 %4\n")
                    .arg(window->Name())
                    .arg(hidden)
                    .arg(window->isFloating())
                    .arg(main_.dockWidgetArea(window));
    }
    return text;
}

void DockingWindows::Activate(DockingWindow* window) {
    active_ = window;
    for (const DockingWindow* other : windows_) {
        if (!other->Menu()) continue;
        QAction* menu = other->Menu()->menuAction();
        main_.menuBar()->removeAction(menu);
        if (other == window) main_.menuBar()->insertAction(menusBefore_, menu);
    }
}

void DockingWindows::ActivateSeen() {
    const auto seen = std::ranges::find_if(windows_, [](DockingWindow* window) {
        return !window->isHidden() && !window->visibleRegion().isEmpty();
    });
    if (seen == windows_.end()) return;
    Activate(*seen);
    (*seen)->Area().setFocus();
}

QString DockingWindows::FreeName(const QString& baseName) const {
    QString name = baseName;
    for (int i = 2; FindByName(name); ++i) name = baseName + "_" + QString::number(i);
    return name;
}

// Windows on one side stand one above the other: time runs from left to right in them, so each
// takes the whole width.
void DockingWindows::Place(DockingWindow& window, std::uint32_t side) {
    const Qt::DockWidgetArea area = AreaOf(side);
    const auto neighbour = std::ranges::find_if(windows_, [&](DockingWindow* other) {
        return !other->isFloating() && main_.dockWidgetArea(other) == area;
    });
    if (neighbour == windows_.end()) {
        main_.addDockWidget(area, &window);
    } else {
        main_.splitDockWidget(*neighbour, &window, Qt::Vertical);
    }
}

// Once, when a window shows whose height no stored layout gives.
void DockingWindows::GiveHeight() {
    DockingWindow* window = unsized_;
    unsized_ = nullptr;
    const auto above = std::ranges::find_if(windows_, [&](DockingWindow* other) {
        return window && other != window && !other->isHidden() && !other->isFloating() &&
               main_.dockWidgetArea(other) == main_.dockWidgetArea(window);
    });
    if (above == windows_.end()) return;
    const int height = (*above)->height() + window->height();
    const int share = height * kNewShare / 100;
    main_.resizeDocks({*above, window}, {height - share, share}, Qt::Vertical);
}

void DockingWindows::FollowFocus(QWidget* focus) {
    for (QWidget* widget = focus; widget; widget = widget->parentWidget()) {
        const auto found = std::ranges::find(windows_, widget);
        if (found == windows_.end()) continue;
        if (*found != active_) Activate(*found);
        return;
    }
}

void DockingWindows::Changed() const {
    if (onChanged) onChanged();
}

}  // namespace kvx::desktop
