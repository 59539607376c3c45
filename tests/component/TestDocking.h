#pragma once
// The test host's docking windows: plain windows. What the component registers is written down.

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "component/Counted.h"
#include "host/DockingHost.h"
#include "platform/windows/Wnd.h"

namespace kvx::test {

// Writes down what registrations say beyond the docking host's own operations.
class TestRegistrations : public Counted<IQDockingRegistrations> {
  public:
    std::vector<std::string> log;
    std::set<void*> modules;  // that resources were said to come from
    std::map<std::uint32_t, HWND> bound;

    HRESULT KVX_CALL RegisterWindow(HWND docking, HWND control, std::int32_t position, BSTR name,
                                    std::int32_t a, std::int32_t b, std::uint32_t identifier,
                                    const GUID& owner) override;
    HRESULT KVX_CALL AttachMenu(void* module, std::uint32_t menu, std::uint32_t identifier,
                                const GUID& owner) override;
    HRESULT KVX_CALL BindWindow(std::uint32_t identifier, HWND window) override;
    HRESULT KVX_CALL BindModule(std::uint32_t identifier, void* module) override;
    HRESULT KVX_CALL RegisterGroup(void* module, std::uint32_t resource, std::uint32_t identifier,
                                   const GUID& owner) override;
    HRESULT KVX_CALL CreateToolbar(HWND docking, void* module, std::uint32_t toolbar,
                                   std::uint32_t style, std::uint32_t identifier, const GUID& owner,
                                   const std::uint32_t* reserved, const std::uint32_t* optional,
                                   std::uint32_t optionalCount) override;

  private:
    void Note(std::string what, std::uint32_t identifier, const GUID& owner);
};

class TestDocking : public Counted<IQDockingHost> {
  public:
    HRESULT KVX_CALL QueryInterface(const GUID& id, void** out) override;

    TestRegistrations told;
    struct Registration {
        HWND docking = nullptr;
        HWND control = nullptr;
        IQCommandTarget* target = nullptr;
        std::vector<std::uint32_t> menuCommands;
        std::vector<std::uint32_t> toolbarCommands;
        std::vector<Accelerator> keys;
        std::vector<GUID> owners;
        std::string toolbar;  // name and title of a host toolbar
    };
    std::map<std::uint32_t, Registration> registrations;
    std::vector<std::unique_ptr<CWnd>> windows;
    std::map<HWND, std::string> names;
    std::map<HWND, std::int32_t> states;
    std::set<HWND> shownToolbars;
    std::vector<HWND> customized;
    std::vector<std::string> log;  // operations that ask for a docking window, with their arguments
    CWnd* main = nullptr;

    std::vector<std::uint32_t> released;  // identifiers
    std::set<std::string> failing;        // names of operations that answer E_FAIL
    bool giveNoWindows = false;           // docking windows are made, but not handed out
    bool ignoreStates = false;            // commands are given whether they are enabled or not

    // The operations that a host can fail in.
    static const std::vector<std::string>& Operations();

    // The target that knows the command, or null.
    IQCommandTarget* TargetOf(std::uint32_t command) const;
    // That of the control in a docking window, or null.
    IQCommandTarget* TargetIn(HWND docking) const;
    // Runs a command as a menu would: only when it is enabled. S_FALSE: disabled.
    HRESULT Command(std::uint32_t command);
    CommandState StateOf(std::uint32_t command) const;
    // Presses a key in a docking window. S_FALSE: the key means nothing there, or is disabled.
    HRESULT Press(HWND docking, char key);
    // Closes a docking window as its close button does. S_FALSE: refused.
    HRESULT Close(HWND docking);
    // The first control in a docking window, or null.
    HWND Control() const;
    // The docking window that was made last, or null.
    HWND Docking() const;

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
    HRESULT KVX_CALL SetStatusText(BSTR) override { return S_OK; }

  private:
    bool Fails(const char* operation) const { return failing.contains(operation); }

    std::uint32_t nextIdentifier_ = 1;
};

}  // namespace kvx::test
