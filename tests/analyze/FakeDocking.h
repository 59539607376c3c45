#pragma once
// A docking manager whose docking windows are plain children of a main window.

#include <map>
#include <memory>
#include <vector>

#include "framework/DockingManager.h"
#include "platform/windows/Wnd.h"

namespace kvx::test {

class FakeDocking final : public IDockingManager {
  public:
    explicit FakeDocking(CWnd& main) : main_(main) {}
    ~FakeDocking() override {
        for (const auto& window : windows) window->DestroyWindow();
    }

    std::vector<std::unique_ptr<CWnd>> windows;
    std::map<CString, HWND> named;
    std::map<HWND, int> states;
    std::vector<UINT> menus;     // attached to docking windows
    std::vector<UINT> toolbars;  // of docking windows

    std::uint32_t AllocateIdentifier() override { return ++last_; }
    void ReleaseIdentifier(std::uint32_t) override {}
    HWND FindDockingWindow(const CString& name, const CString&, std::uint32_t,
                           std::uint32_t) override {
        const auto found = named.find(name);
        return found == named.end() ? nullptr : found->second;
    }
    HWND CreateDockingWindow(const CString& baseName, const CString&, std::uint32_t, std::uint32_t,
                             CString* given) override {
        auto& window = windows.emplace_back(std::make_unique<CWnd>());
        window->Create(WS_CHILD | WS_VISIBLE, {0, 0, 800, 300}, &main_, 1000);
        *given = baseName;
        return named[baseName] = window->GetSafeHwnd();
    }
    void SetWindowState(HWND docking, int state) override { states[docking] = state; }
    int GetWindowState(HWND docking) override { return states[docking]; }
    void RegisterWindow(HWND, ICommandWindow*, std::uint32_t, const GUID&) override {}
    void AttachMenu(HWND docking, UINT menu, std::uint32_t, const GUID&) override {
        if (docking) menus.push_back(menu);
    }
    void BindWindow(std::uint32_t, ICommandWindow*) override {}
    void BindModule(std::uint32_t, HINSTANCE) override {}
    void RegisterGroup(UINT, std::uint32_t, const GUID&) override {}
    void CreateToolbar(HWND, UINT toolbar, std::uint32_t, const GUID&,
                       std::span<const UINT>) override {
        toolbars.push_back(toolbar);
    }
    void AddHostToolbar(const CString&, const CString&, UINT, std::uint32_t) override {}
    void RemoveRegistrations(std::uint32_t) override {}
    bool IsToolbarShown(HWND) override { return true; }
    void ShowToolbar(HWND, bool) override {}
    void CustomizeToolbar(HWND) override {}

  private:
    CWnd& main_;
    std::uint32_t last_ = 0;
};

}  // namespace kvx::test
