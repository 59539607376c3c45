#pragma once
// What windows and command sink need of the docking manager: docking windows of the host, menus and
// toolbars from the resource library, and the way of commands back to the window.

#include <span>

#include "host/DockingHost.h"
#include "platform/base/Guid.h"
#include "platform/base/Resources.h"
#include "platform/base/Types.h"
#include "platform/windows/CmdUI.h"

// Docking side and flags of every docking window of the component.
inline constexpr std::uint32_t kDockBottom = 59422;
inline constexpr std::uint32_t kDockFindFlags = 0x10;
inline constexpr std::uint32_t kDockCreateFlags = 0x1804;

// A window that receives commands of its menus and toolbars.
class ICommandWindow {
  public:
    virtual HWND CommandHandle() const = 0;
    // False: the window does not know the command.
    virtual bool RouteCommand(UINT command) = 0;
    virtual bool RouteUpdate(UINT command, CCmdUI& ui) = 0;
    // The user closes the docking window that holds this one. True: this window is gone now.
    virtual bool CloseRequested() = 0;
    // "book.chm>Window", or empty.
    virtual CString HelpKey() const = 0;

  protected:
    ~ICommandWindow() = default;
};

class IDockingManager {
  public:
    virtual ~IDockingManager() = default;

    virtual std::uint32_t AllocateIdentifier() = 0;
    virtual void ReleaseIdentifier(std::uint32_t identifier) = 0;

    // The docking window of that name and title, or null.
    virtual HWND FindDockingWindow(const CString& name, const CString& title, std::uint32_t flags,
                                   std::uint32_t side) = 0;
    // A new docking window, or null; *given is the name it got.
    virtual HWND CreateDockingWindow(const CString& baseName, const CString& title,
                                     std::uint32_t flags, std::uint32_t side, CString* given) = 0;
    virtual void SetWindowState(HWND docking, int state) = 0;
    virtual int GetWindowState(HWND docking) = 0;

    // The window fills the docking window and stands for the identifier.
    virtual void RegisterWindow(HWND docking, ICommandWindow* window, std::uint32_t identifier,
                                const GUID& owner) = 0;
    // Menu resource of a docking window (null: merged into the host's menus), and the keys of the
    // accelerator table of the same id.
    virtual void AttachMenu(HWND docking, UINT menu, std::uint32_t identifier,
                            const GUID& owner) = 0;
    virtual void BindWindow(std::uint32_t identifier, ICommandWindow* window) = 0;
    virtual void BindModule(std::uint32_t identifier, HINSTANCE module) = 0;
    // A further group of resources under an identifier; nothing of it is shown.
    virtual void RegisterGroup(UINT resource, std::uint32_t identifier, const GUID& owner) = 0;
    // Toolbar resource of a docking window. optional: commands that the toolbar can do without.
    virtual void CreateToolbar(HWND docking, UINT toolbar, std::uint32_t identifier,
                               const GUID& owner, std::span<const UINT> optional) = 0;
    // Adds a toolbar resource to the named toolbar of the host.
    virtual void AddHostToolbar(const CString& name, const CString& title, UINT toolbar,
                                std::uint32_t identifier) = 0;
    virtual void RemoveRegistrations(std::uint32_t identifier) = 0;

    virtual bool IsToolbarShown(HWND docking) = 0;
    virtual void ShowToolbar(HWND docking, bool show) = 0;
    virtual void CustomizeToolbar(HWND docking) = 0;
};
