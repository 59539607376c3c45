#pragma once
// Docking windows, menus and toolbars of the host, ours. The component's docking manager turns its
// resources into the plain descriptions below; the host shows them in its own way and sends
// commands back to the target. Descriptions are borrowed for the call.

#include "host/Host.h"

// States of a docking window.
inline constexpr std::int32_t kDockHide = 0x01;
inline constexpr std::int32_t kDockShow = 0x02;
inline constexpr std::int32_t kDockFloating = 0x08;       // reported: the window floats …
inline constexpr std::int32_t kDockMayDock = 0x10;        // … and may dock
inline constexpr std::int32_t kDockToggleAllowed = 0x20;  // set: toggles whether it may dock

struct MenuNode {
    const char16_t* text = nullptr;    // with "&"; null: a separator
    const char16_t* prompt = nullptr;  // "status text\ntool tip", or null
    std::uint32_t command = 0;         // 0 for a popup
    const MenuNode* children = nullptr;
    std::uint32_t childCount = 0;
};

struct ToolbarButton {
    std::uint32_t command = 0;              // 0: a separator
    const char16_t* prompt = nullptr;       // "status text\ntool tip", or null
    const std::uint32_t* pixels = nullptr;  // 16 x 16, 0xAARRGGBB, row by row
};

// Keys as the platform's virtual-key codes; characters below 0x80 as themselves.
struct Accelerator {
    std::uint16_t key = 0;
    std::uint8_t control = 0;
    std::uint8_t shift = 0;
    std::uint8_t alt = 0;
    std::uint32_t command = 0;
};

struct CommandState {
    std::int32_t enabled = 1;
    std::int32_t checked = 0;
};

// Receives what the user does with a menu, a toolbar, a key or a docking window's close button.
class IQCommandTarget {
  public:
    virtual HRESULT KVX_CALL OnCommand(std::uint32_t command) = 0;
    // Asked before a menu opens and when the host is idle. Negative: nobody handles the command.
    virtual HRESULT KVX_CALL OnUpdateCommand(std::uint32_t command, CommandState* state) = 0;
    // The user closes the docking window that holds the target's window. S_OK: closed (the host
    // then destroys the docking window); S_FALSE: refused.
    virtual HRESULT KVX_CALL OnCloseRequest() = 0;
    // Help context of the window, for F1: "book.chm>Window".
    virtual HRESULT KVX_CALL GetHelpKey(BSTR* key) = 0;

  protected:
    ~IQCommandTarget() = default;
};

class IQDockingHost : public IQUnknown {
  public:
    virtual HRESULT KVX_CALL GetMainWindow(HWND* window) = 0;
    virtual HRESULT KVX_CALL AllocateIdentifier(std::uint32_t* identifier) = 0;
    virtual HRESULT KVX_CALL ReleaseIdentifier(std::uint32_t identifier) = 0;

    // Makes a docking window; *given is the name it got, a new text.
    virtual HRESULT KVX_CALL CreateDockingWindow(BSTR baseName, BSTR title, std::uint32_t flags,
                                                 std::uint32_t side, HWND* window, BSTR* given) = 0;
    // Negative when there is none.
    virtual HRESULT KVX_CALL FindDockingWindow(BSTR name, BSTR title, std::uint32_t flags,
                                               std::uint32_t side, HWND* window) = 0;
    virtual HRESULT KVX_CALL SetWindowState(HWND docking, std::int32_t state) = 0;
    virtual HRESULT KVX_CALL GetWindowState(HWND docking, std::int32_t* state) = 0;

    // The control fills the docking window from now on; its commands and close requests go to
    // target. Registrations made under an identifier end with RemoveRegistrations.
    virtual HRESULT KVX_CALL RegisterWindow(HWND docking, HWND control, std::uint32_t identifier,
                                            const GUID& owner, IQCommandTarget* target) = 0;
    // docking null: into the host's menu bar; else the menu of that docking window.
    virtual HRESULT KVX_CALL AddMenu(std::uint32_t identifier, HWND docking, const MenuNode* root,
                                     IQCommandTarget* target) = 0;
    // docking null: the host toolbar of that name, created with the title when it is new.
    virtual HRESULT KVX_CALL AddToolbar(std::uint32_t identifier, HWND docking, BSTR name,
                                        BSTR title, const ToolbarButton* buttons,
                                        std::uint32_t count, IQCommandTarget* target) = 0;
    virtual HRESULT KVX_CALL AddAccelerators(std::uint32_t identifier, HWND docking,
                                             const Accelerator* keys, std::uint32_t count,
                                             IQCommandTarget* target) = 0;
    virtual HRESULT KVX_CALL RemoveRegistrations(std::uint32_t identifier) = 0;

    virtual HRESULT KVX_CALL IsToolbarShown(HWND docking, std::int32_t* shown) = 0;
    virtual HRESULT KVX_CALL ShowToolbar(HWND docking, std::int32_t show) = 0;
    virtual HRESULT KVX_CALL CustomizeToolbar(HWND docking) = 0;

    // A line for the host's status line: the prompt of a command under the pointer, progress.
    virtual HRESULT KVX_CALL SetStatusText(BSTR text) = 0;

  protected:
    ~IQDockingHost() = default;
};

// What the component says of its registrations beyond IQDockingHost: which of its resources they
// come from, who owns them and which commands a toolbar can do without. For hosts that want to
// know, by query-interface (kvx::host::kDockingRegistrations); each call comes before its
// counterpart above. module is the handle of the resource
// library, as dlopen gives it. What an argument means that the component
// always passes the same value for is the host's to say.
class IQDockingRegistrations : public IQUnknown {
  public:
    // position is -1, name empty, a and b are 0.
    virtual HRESULT KVX_CALL RegisterWindow(HWND docking, HWND control, std::int32_t position,
                                            BSTR name, std::int32_t a, std::int32_t b,
                                            std::uint32_t identifier, const GUID& owner) = 0;
    virtual HRESULT KVX_CALL AttachMenu(void* module, std::uint32_t menu, std::uint32_t identifier,
                                        const GUID& owner) = 0;
    virtual HRESULT KVX_CALL BindWindow(std::uint32_t identifier, HWND window) = 0;
    virtual HRESULT KVX_CALL BindModule(std::uint32_t identifier, void* module) = 0;
    virtual HRESULT KVX_CALL RegisterGroup(void* module, std::uint32_t resource,
                                           std::uint32_t identifier, const GUID& owner) = 0;
    // style is 0, reserved are eight zeros. optional: commands that the toolbar can do without.
    virtual HRESULT KVX_CALL CreateToolbar(HWND docking, void* module, std::uint32_t toolbar,
                                           std::uint32_t style, std::uint32_t identifier,
                                           const GUID& owner, const std::uint32_t* reserved,
                                           const std::uint32_t* optional,
                                           std::uint32_t optionalCount) = 0;

  protected:
    ~IQDockingRegistrations() = default;
};
