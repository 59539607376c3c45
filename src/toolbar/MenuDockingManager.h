#pragma once
// The docking manager on the host's docking: turns menu and toolbar resources into the host's plain
// descriptions and leads commands back to the window of an identifier. A host without docking
// leaves every operation without effect.

#include <map>
#include <memory>

#include "framework/DockingManager.h"

class CCommandTarget;

class CDockingManager : public IDockingManager {
  public:
    CDockingManager();
    ~CDockingManager() override;

    // The component is connected anew, to this host or another.
    void SetHost(IQHost* host) { host_ = host; }

    std::uint32_t AllocateIdentifier() override;
    void ReleaseIdentifier(std::uint32_t identifier) override;
    HWND FindDockingWindow(const CString& name, const CString& title, std::uint32_t flags,
                           std::uint32_t side) override;
    HWND CreateDockingWindow(const CString& baseName, const CString& title, std::uint32_t flags,
                             std::uint32_t side, CString* given) override;
    void SetWindowState(HWND docking, int state) override;
    int GetWindowState(HWND docking) override;
    void RegisterWindow(HWND docking, ICommandWindow* window, std::uint32_t identifier,
                        const GUID& owner) override;
    void AttachMenu(HWND docking, UINT menu, std::uint32_t identifier, const GUID& owner) override;
    void BindWindow(std::uint32_t identifier, ICommandWindow* window) override;
    void BindModule(std::uint32_t identifier, HINSTANCE module) override;
    void RegisterGroup(UINT resource, std::uint32_t identifier, const GUID& owner) override;
    void CreateToolbar(HWND docking, UINT toolbar, std::uint32_t identifier, const GUID& owner,
                       std::span<const UINT> optional) override;
    void AddHostToolbar(const CString& name, const CString& title, UINT toolbar,
                        std::uint32_t identifier) override;
    void RemoveRegistrations(std::uint32_t identifier) override;
    bool IsToolbarShown(HWND docking) override;
    void ShowToolbar(HWND docking, bool show) override;
    void CustomizeToolbar(HWND docking) override;

  private:
    // Identifiers of our own keep clear of those that a host counts up.
    static constexpr std::uint32_t kFirstOwnIdentifier = 0x80000000u;

    IQDockingHost* Docking() const;
    // Null where the host does not want to know.
    IQDockingRegistrations* Registrations() const;
    CCommandTarget& Target(std::uint32_t identifier);
    void AddToolbar(HWND docking, const CString& name, const CString& title, UINT toolbar,
                    std::uint32_t identifier);

    IQHost* host_ = nullptr;
    std::uint32_t nextIdentifier_ = kFirstOwnIdentifier;  // where the host gives none
    std::map<std::uint32_t, std::unique_ptr<CCommandTarget>> targets_;
};
