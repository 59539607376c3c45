#include "workbench/desktop/docking/WorkbenchDocking.h"

#include <QMenuBar>
#include <QStatusBar>

#include "workbench/desktop/QtText.h"
#include "workbench/desktop/docking/AcceleratorKeys.h"
#include "workbench/desktop/docking/MenuMerge.h"
#include "workbench/desktop/docking/ToolbarDialog.h"

namespace kvx::desktop {
namespace {

constexpr char kWatched[] = "kvxWatched";

QString ToolbarName(const DockingWindow& window) {
    return window.Name() + "/toolbar";
}

}  // namespace

WorkbenchDocking::WorkbenchDocking(QMainWindow& window, Settings& settings,
                                   QAction* windowMenusBefore)
    : main_(window),
      settings_(settings),
      windows_(window, windowMenusBefore),
      updates_([this] { UpdateCommands(); }) {}

void WorkbenchDocking::UpdateCommands() {
    for (const auto& [identifier, registration] : registrations_) registration.commands->Update();
    if (onCommandsUpdated) onCommandsUpdated();
}

bool WorkbenchDocking::GiveCommand(std::uint32_t command) {
    for (const auto& [identifier, registration] : registrations_) {
        IQCommandTarget* target =
            registration.inMenuBar ? registration.commands->TargetOf(command) : nullptr;
        if (!target) continue;
        Execute(target, command);
        return true;
    }
    return false;
}

void WorkbenchDocking::CloseAll() {
    const std::vector<DockingWindow*> windows = windows_.All();
    for (DockingWindow* window : windows) RequestClose(*window);
}

QString WorkbenchDocking::HelpKey() {
    const DockingWindow* active = windows_.Active();
    Bstr key;
    if (!active || active->isHidden() || !active->target) return {};
    return Succeeded(active->target->GetHelpKey(key.Receive())) ? FromBstr(key.Get()) : QString();
}

CommandToolbar* WorkbenchDocking::Toolbar(const QString& name) const {
    for (const auto& [identifier, registration] : registrations_) {
        for (const auto& toolbar : registration.toolbars) {
            if (toolbar && toolbar->objectName() == name) return toolbar;
        }
    }
    return nullptr;
}

HRESULT WorkbenchDocking::GetMainWindow(HWND* window) {
    if (!window) return E_POINTER;
    *window = reinterpret_cast<HWND>(static_cast<QWidget*>(&main_));
    return S_OK;
}

HRESULT WorkbenchDocking::AllocateIdentifier(std::uint32_t* identifier) {
    if (!identifier) return E_POINTER;
    *identifier = nextIdentifier_++;
    return S_OK;
}

HRESULT WorkbenchDocking::ReleaseIdentifier(std::uint32_t identifier) {
    return RemoveRegistrations(identifier);
}

HRESULT WorkbenchDocking::CreateDockingWindow(BSTR baseName, BSTR title, std::uint32_t,
                                              std::uint32_t side, HWND* window, BSTR* given) {
    if (!baseName || !window || !given) return E_POINTER;
    return Guarded([&] {
        DockingWindow* made = windows_.Make(FromBstr(baseName), FromBstr(title), side);
        made->onClose = [this, made] { RequestClose(*made); };
        *window = made->Area().Handle();
        *given = NewBstr(made->Name());
        return S_OK;
    });
}

HRESULT WorkbenchDocking::FindDockingWindow(BSTR name, BSTR title, std::uint32_t, std::uint32_t,
                                            HWND* window) {
    if (!name || !window) return E_POINTER;
    return Guarded([&] {
        DockingWindow* found = windows_.FindByName(FromBstr(name));
        if (!found || found->windowTitle() != FromBstr(title)) return E_FAIL;
        *window = found->Area().Handle();
        return S_OK;
    });
}

// One that is hidden and that nobody fills is what is left of a window that could not be made.
HRESULT WorkbenchDocking::SetWindowState(HWND docking, std::int32_t state) {
    DockingWindow* window = windows_.Find(docking);
    if (!window) return E_INVALIDARG;
    return Guarded([&] {
        if (state == kDockHide && !window->target) return windows_.Close(*window);
        windows_.SetState(*window, state);
    });
}

HRESULT WorkbenchDocking::GetWindowState(HWND docking, std::int32_t* state) {
    const DockingWindow* window = windows_.Find(docking);
    if (!window) return E_INVALIDARG;
    if (!state) return E_POINTER;
    *state = window->State();
    return S_OK;
}

HRESULT WorkbenchDocking::RegisterWindow(HWND docking, HWND control, std::uint32_t identifier,
                                         const GUID&, IQCommandTarget* target) {
    DockingWindow* window = windows_.Find(docking);
    if (!window || !control) return E_INVALIDARG;
    return Guarded([&] {
        Under(identifier).windows.emplace_back(window);
        window->target = target;
        window->Area().SetControl(reinterpret_cast<QWidget*>(control));
        return S_OK;
    });
}

template <class Add>
HRESULT WorkbenchDocking::AddTo(HWND docking, std::uint32_t identifier, Add add) {
    DockingWindow* window = windows_.Find(docking);
    if (docking && !window) return E_INVALIDARG;
    return Guarded([&] {
        Registration& registration = Under(identifier);
        add(window, registration);
        registration.commands->Update();
        return S_OK;
    });
}

HRESULT WorkbenchDocking::AddMenu(std::uint32_t identifier, HWND docking, const MenuNode* root,
                                  IQCommandTarget* target) {
    if (!root || !target) return E_POINTER;
    return AddTo(docking, identifier, [&](DockingWindow* window, Registration& registration) {
        if (window) return SetWindowMenu(*window, registration, root, target);
        MergeMenu(*main_.menuBar(), root->children, root->childCount, target,
                  *registration.commands, windows_.MenusBefore());
        registration.inMenuBar = true;
        WatchMenuBar();
    });
}

HRESULT WorkbenchDocking::AddToolbar(std::uint32_t identifier, HWND docking, BSTR name, BSTR title,
                                     const ToolbarButton* buttons, std::uint32_t count,
                                     IQCommandTarget* target) {
    if (!buttons || !target) return E_POINTER;
    return AddTo(docking, identifier, [&](DockingWindow* window, Registration& registration) {
        const QString key = window ? ToolbarName(*window) : FromBstr(name);
        CommandToolbar* toolbar = Toolbar(key);
        if (!toolbar) toolbar = MakeToolbar(window, key, FromBstr(title));
        toolbar->AddButtons(buttons, count, target, *registration.commands);
        registration.toolbars.emplace_back(toolbar);
    });
}

HRESULT WorkbenchDocking::AddAccelerators(std::uint32_t identifier, HWND docking,
                                          const Accelerator* keys, std::uint32_t count,
                                          IQCommandTarget* target) {
    if (!keys || !target) return E_POINTER;
    return AddTo(docking, identifier, [&](DockingWindow* window, Registration& registration) {
        QWidget& where = window ? static_cast<QWidget&>(*window) : main_;
        for (std::uint32_t i = 0; i < count; ++i) {
            QAction* action = registration.commands->Action(target, keys[i].command);
            action->setShortcuts(action->shortcuts() << KeySequenceOf(keys[i]));
            action->setShortcutContext(window ? Qt::WidgetWithChildrenShortcut
                                              : Qt::WindowShortcut);
            where.addAction(action);
        }
    });
}

HRESULT WorkbenchDocking::RemoveRegistrations(std::uint32_t identifier) {
    const auto found = registrations_.find(identifier);
    if (found == registrations_.end()) return S_OK;
    return Guarded([&] {
        const Registration registration = std::move(found->second);
        registrations_.erase(found);
        for (const auto& window : registration.windows) {
            if (!window) continue;
            window->target = nullptr;
            window->Area().SetControl(nullptr);
        }
        for (const auto& toolbar : registration.toolbars) {
            if (toolbar && !Toolbar(toolbar->objectName())) toolbar->deleteLater();
        }
        if (registration.inMenuBar) PruneMenus(*main_.menuBar());
        return S_OK;
    });
}

HRESULT WorkbenchDocking::IsToolbarShown(HWND docking, std::int32_t* shown) {
    if (!shown) return E_POINTER;
    const CommandToolbar* toolbar = ToolbarOf(docking);
    if (!toolbar) return E_FAIL;
    *shown = toolbar->isHidden() ? 0 : 1;
    return S_OK;
}

HRESULT WorkbenchDocking::ShowToolbar(HWND docking, std::int32_t show) {
    CommandToolbar* toolbar = ToolbarOf(docking);
    if (!toolbar) return E_FAIL;
    return Guarded([&] {
        toolbar->SetShown(show != 0);
        return S_OK;
    });
}

HRESULT WorkbenchDocking::CustomizeToolbar(HWND docking) {
    CommandToolbar* toolbar = ToolbarOf(docking);
    if (!toolbar) return E_FAIL;
    return Guarded([&] { return ToolbarDialog(*toolbar, &main_).exec() ? S_OK : S_FALSE; });
}

HRESULT WorkbenchDocking::SetStatusText(BSTR text) {
    return Guarded([&] {
        main_.statusBar()->showMessage(FromBstr(text));
        return S_OK;
    });
}

WorkbenchDocking::Registration& WorkbenchDocking::Under(std::uint32_t identifier) {
    Registration& registration = registrations_[identifier];
    if (!registration.commands) {
        registration.commands = std::make_unique<CommandSet>(
            [this](IQCommandTarget* target, std::uint32_t command) { Execute(target, command); });
    }
    return registration;
}

CommandToolbar* WorkbenchDocking::MakeToolbar(DockingWindow* window, const QString& name,
                                              const QString& title) {
    auto* toolbar = new CommandToolbar(name, title, settings_);
    const bool shown = !toolbar->isHidden();
    if (window) {
        window->SetToolbar(toolbar);
    } else {
        main_.addToolBar(toolbar);
    }
    toolbar->setVisible(shown);
    return toolbar;
}

CommandToolbar* WorkbenchDocking::ToolbarOf(HWND docking) const {
    const DockingWindow* window = windows_.Find(docking);
    return window ? Toolbar(ToolbarName(*window)) : nullptr;
}

void WorkbenchDocking::SetWindowMenu(DockingWindow& window, Registration& registration,
                                     const MenuNode* root, IQCommandTarget* target) {
    // A menu resource of one popup is that popup.
    while (root->childCount == 1 && root->children->childCount > 0) root = root->children;
    registration.windowMenu = std::make_unique<QMenu>(window.windowTitle());
    QMenu& menu = *registration.windowMenu;
    menu.setToolTipsVisible(true);
    MergeMenu(menu, root->children, root->childCount, target, *registration.commands);
    QObject::connect(&menu, &QMenu::aboutToShow, [this] { UpdateCommands(); });
    window.SetMenu(&menu);
    if (windows_.Active() == &window) windows_.Activate(&window);
}

// Menus that hold commands of components show their states when they open.
void WorkbenchDocking::WatchMenuBar() {
    for (const QAction* action : main_.menuBar()->actions()) {
        QMenu* menu = action->menu();
        if (!menu || menu->property(kWatched).toBool()) continue;
        menu->setProperty(kWatched, true);
        QObject::connect(menu, &QMenu::aboutToShow, [this] { UpdateCommands(); });
    }
}

// A window whose toolbar gave the command is the active one, as if it had been clicked into.
void WorkbenchDocking::Execute(IQCommandTarget* target, std::uint32_t command) {
    for (DockingWindow* window : windows_.All()) {
        if (window->target == target && windows_.Active() != window) windows_.Activate(window);
    }
    target->OnCommand(command);
    CommandDone();
}

void WorkbenchDocking::CommandDone() {
    UpdateCommands();
    if (onCommandDone) onCommandDone();
}

void WorkbenchDocking::RequestClose(DockingWindow& window) {
    if (!window.target) return windows_.SetState(window, kDockHide);
    if (onClosing) onClosing();
    const QString title = window.windowTitle();
    const bool closes = window.target->OnCloseRequest() == S_OK;
    if (closes) windows_.Close(window);
    CommandDone();
    if (!closes && onCloseRefused) onCloseRefused(title);
}

}  // namespace kvx::desktop
