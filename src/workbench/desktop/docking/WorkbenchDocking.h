#pragma once
// What components see of the docking windows, menus, toolbars and keys of the main window.

#include <map>
#include <memory>
#include <vector>

#include "host/Identifiers.h"
#include "hosting/Interface.h"
#include "workbench/desktop/Settings.h"
#include "workbench/desktop/docking/CommandSet.h"
#include "workbench/desktop/docking/CommandToolbar.h"
#include "workbench/desktop/docking/CommandUpdates.h"
#include "workbench/desktop/docking/DockingWindows.h"

namespace kvx::desktop {

class WorkbenchDocking final : public hosting::Implementation<IQDockingHost, host::kDockingHost> {
  public:
    // window and settings must outlive the host. Menus of docking windows stand in the menu bar
    // before that action.
    WorkbenchDocking(QMainWindow& window, Settings& settings, QAction* windowMenusBefore);

    // After a command was carried out, or the user closed a docking window.
    std::function<void()> onCommandDone;

    // The user's request to close that window was refused by its component.
    std::function<void(const QString& title)> onCloseRefused;
    // Before a docking window's component is asked to close it.
    std::function<void()> onClosing;
    // After the states of all commands were asked for.
    std::function<void()> onCommandsUpdated;

    // Asks every command for its state.
    void UpdateCommands();
    // The same, soon: something may have changed them. Input of the user needs no call.
    void UpdateCommandsSoon() { updates_.Soon(); }
    // Gives a command of the host's menus. False when no component put it there.
    bool GiveCommand(std::uint32_t command);

    // Asks every docking window to close, as its user would; one whose component refuses stays.
    void CloseAll();
    // Page of help for the active window; empty where there is none.
    QString HelpKey();

    DockingWindows& Windows() { return windows_; }
    const DockingWindows& Windows() const { return windows_; }
    // Null when there is none of that name.
    CommandToolbar* Toolbar(const QString& name) const;

    HRESULT KVX_CALL GetMainWindow(HWND* window) override;
    HRESULT KVX_CALL AllocateIdentifier(std::uint32_t* identifier) override;
    HRESULT KVX_CALL ReleaseIdentifier(std::uint32_t identifier) override;
    HRESULT KVX_CALL CreateDockingWindow(BSTR baseName, BSTR title, std::uint32_t flags,
                                         std::uint32_t side, HWND* window, BSTR* given) override;
    HRESULT KVX_CALL FindDockingWindow(BSTR name, BSTR title, std::uint32_t flags,
                                       std::uint32_t side, HWND* window) override;
    HRESULT KVX_CALL SetWindowState(HWND docking, std::int32_t state) override;
    HRESULT KVX_CALL GetWindowState(HWND docking, std::int32_t* state) override;
    HRESULT KVX_CALL RegisterWindow(HWND docking, HWND control, std::uint32_t identifier,
                                    const GUID& owner, IQCommandTarget* target) override;
    HRESULT KVX_CALL AddMenu(std::uint32_t identifier, HWND docking, const MenuNode* root,
                             IQCommandTarget* target) override;
    HRESULT KVX_CALL AddToolbar(std::uint32_t identifier, HWND docking, BSTR name, BSTR title,
                                const ToolbarButton* buttons, std::uint32_t count,
                                IQCommandTarget* target) override;
    HRESULT KVX_CALL AddAccelerators(std::uint32_t identifier, HWND docking,
                                     const Accelerator* keys, std::uint32_t count,
                                     IQCommandTarget* target) override;
    HRESULT KVX_CALL RemoveRegistrations(std::uint32_t identifier) override;
    HRESULT KVX_CALL IsToolbarShown(HWND docking, std::int32_t* shown) override;
    HRESULT KVX_CALL ShowToolbar(HWND docking, std::int32_t show) override;
    HRESULT KVX_CALL CustomizeToolbar(HWND docking) override;
    HRESULT KVX_CALL SetStatusText(BSTR text) override;

  private:
    // All that was registered under one identifier.
    struct Registration {
        std::unique_ptr<CommandSet> commands;
        std::vector<QPointer<DockingWindow>> windows;
        std::unique_ptr<QMenu> windowMenu;
        std::vector<QPointer<CommandToolbar>> toolbars;
        bool inMenuBar = false;
    };

    Registration& Under(std::uint32_t identifier);
    // Adds to a docking window, or to the main window where docking is 0: add is given the docking
    // window, or null, and what is registered under the identifier.
    template <class Add>
    HRESULT AddTo(HWND docking, std::uint32_t identifier, Add add);
    CommandToolbar* MakeToolbar(DockingWindow* window, const QString& name, const QString& title);
    CommandToolbar* ToolbarOf(HWND docking) const;
    void SetWindowMenu(DockingWindow& window, Registration& registration, const MenuNode* root,
                       IQCommandTarget* target);
    void WatchMenuBar();
    void Execute(IQCommandTarget* target, std::uint32_t command);
    void CommandDone();
    void RequestClose(DockingWindow& window);

    QMainWindow& main_;
    Settings& settings_;
    DockingWindows windows_;
    std::uint32_t nextIdentifier_ = 1;
    std::map<std::uint32_t, Registration> registrations_;
    CommandUpdates updates_;
};

}  // namespace kvx::desktop
