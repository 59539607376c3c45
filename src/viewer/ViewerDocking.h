#pragma once
// The docking host: each docking window is a pane of the viewer's window, menus and keys of all of
// them are there at once.

#include <map>
#include <memory>

#include "host/Identifiers.h"
#include "hosting/Interface.h"
#include "viewer/Pane.h"

namespace kvx::viewer {

class ViewerDocking final : public hosting::Implementation<IQDockingHost, host::kDockingHost> {
  public:
    // The window must outlive the docking.
    explicit ViewerDocking(CWnd& main) : main_(main) {}

    // Panes came, went or are shown differently.
    std::function<void()> onPanesChanged;
    // Menus came or went.
    std::function<void()> onMenusChanged;
    // A command was given.
    std::function<void()> onCommandDone;
    std::function<void(const CString&)> onStatusText;
    // A component does not let its window close.
    std::function<void(const CString& title)> onCloseRefused;

    MenuTree& Menus() { return menus_; }
    ToolStrip& HostToolbar() { return toolbar_; }
    const std::vector<std::unique_ptr<Pane>>& Panes() const { return panes_; }
    CString KeyText(const Command& command) const;
    void Run(const Command& command);
    // Runs the command of whoever put it into the menu bar; false: nobody did.
    bool GiveCommand(std::uint32_t command);
    void RequestClose(Pane& pane);
    // The keyboard is in that window, which may be in none of the panes: then the last one stays
    // the active one.
    void Follow(const CWnd* focus);
    void UpdateToolbars();

    HRESULT KVX_CALL GetMainWindow(HWND* window) override;
    HRESULT KVX_CALL AllocateIdentifier(std::uint32_t* identifier) override;
    HRESULT KVX_CALL ReleaseIdentifier(std::uint32_t identifier) override;
    // Two panes at most.
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
    // The viewer's toolbars stay as they are; the status line says so.
    HRESULT KVX_CALL CustomizeToolbar(HWND docking) override;
    HRESULT KVX_CALL SetStatusText(BSTR text) override;

  private:
    Pane* Find(HWND docking) const;
    Pane* FindByName(const CString& name) const;
    CString FreeName(const CString& base) const;
    void Close(Pane& pane);

    CWnd& main_;
    MenuTree menus_;
    ToolStrip toolbar_;
    std::vector<std::unique_ptr<Pane>> panes_;
    std::vector<std::unique_ptr<Pane>> closed_;  // one may close in the middle of its own message
    std::map<std::uint32_t, Pane*> filled_;      // by the identifier of the control's registration
    std::map<std::uint32_t, Command> inMenuBar_;
    std::uint32_t nextIdentifier_ = 1;
    UINT nextPane_ = 100;  // id of its window
};

}  // namespace kvx::viewer
