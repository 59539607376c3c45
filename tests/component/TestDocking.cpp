#include "component/TestDocking.h"

#include <gtest/gtest.h>

#include "host/Identifiers.h"
#include "platform/base/Text.h"

namespace kvx::test {
namespace {

void CollectCommands(const MenuNode& node, std::vector<std::uint32_t>& commands) {
    if (node.command) commands.push_back(node.command);
    for (std::uint32_t i = 0; i < node.childCount; ++i) {
        CollectCommands(node.children[i], commands);
    }
}

}  // namespace

void TestRegistrations::Note(std::string what, std::uint32_t identifier, const GUID& owner) {
    const bool own = owner == host::kComponent;
    const bool second = owner == host::kSecondToolbarOwner;
    log.push_back(what + " under " + std::to_string(identifier) + " of " +
                  (own      ? "component"
                   : second ? "second"
                            : "nobody"));
}

HRESULT TestRegistrations::RegisterWindow(HWND docking, HWND control, std::int32_t position,
                                          BSTR name, std::int32_t a, std::int32_t b,
                                          std::uint32_t identifier, const GUID& owner) {
    EXPECT_TRUE(docking && control);
    Note(FormatText("window %d \"%s\" %d %d", position, ToUtf8(name).c_str(), a, b), identifier,
         owner);
    return S_OK;
}

HRESULT TestRegistrations::AttachMenu(void* module, std::uint32_t menu, std::uint32_t identifier,
                                      const GUID& owner) {
    modules.insert(module);
    Note(FormatText("menu %u", menu), identifier, owner);
    return S_OK;
}

HRESULT TestRegistrations::BindWindow(std::uint32_t identifier, HWND window) {
    bound[identifier] = window;
    log.push_back("bind window");
    return S_OK;
}

HRESULT TestRegistrations::BindModule(std::uint32_t, void* module) {
    modules.insert(module);
    log.push_back("bind module");
    return S_OK;
}

HRESULT TestRegistrations::RegisterGroup(void* module, std::uint32_t resource,
                                         std::uint32_t identifier, const GUID& owner) {
    modules.insert(module);
    Note(FormatText("group %u", resource), identifier, owner);
    return S_OK;
}

HRESULT TestRegistrations::CreateToolbar(HWND docking, void* module, std::uint32_t toolbar,
                                         std::uint32_t style, std::uint32_t identifier,
                                         const GUID& owner, const std::uint32_t* reserved,
                                         const std::uint32_t* optional,
                                         std::uint32_t optionalCount) {
    EXPECT_TRUE(docking);
    modules.insert(module);
    std::string text = FormatText("toolbar %u %u", toolbar, style);
    for (int i = 0; i < 8; ++i) EXPECT_EQ(reserved[i], 0u);
    for (std::uint32_t i = 0; i < optionalCount; ++i) text += ' ' + std::to_string(optional[i]);
    Note(text, identifier, owner);
    return S_OK;
}

HRESULT TestDocking::QueryInterface(const GUID& id, void** out) {
    if (id != host::kDockingRegistrations) return Counted::QueryInterface(id, out);
    *out = &told;
    return S_OK;
}

const std::vector<std::string>& TestDocking::Operations() {
    static const std::vector<std::string> names = {
        "AllocateIdentifier", "ReleaseIdentifier", "CreateDockingWindow", "FindDockingWindow",
        "SetWindowState",     "GetWindowState",    "RegisterWindow",      "AddMenu",
        "AddToolbar",         "AddAccelerators",   "RemoveRegistrations", "IsToolbarShown",
        "ShowToolbar",        "CustomizeToolbar"};
    return names;
}

IQCommandTarget* TestDocking::TargetOf(std::uint32_t command) const {
    for (const auto& [identifier, registration] : registrations) {
        CommandState state;
        if (!registration.target) continue;
        if (Succeeded(registration.target->OnUpdateCommand(command, &state))) {
            return registration.target;
        }
    }
    return nullptr;
}

IQCommandTarget* TestDocking::TargetIn(HWND docking) const {
    for (const auto& [identifier, registration] : registrations) {
        if (registration.control && registration.docking == docking) return registration.target;
    }
    return nullptr;
}

CommandState TestDocking::StateOf(std::uint32_t command) const {
    CommandState state;
    IQCommandTarget* const target = TargetOf(command);
    if (!target) return {0, 0};
    target->OnUpdateCommand(command, &state);
    return state;
}

HRESULT TestDocking::Command(std::uint32_t command) {
    IQCommandTarget* const target = TargetOf(command);
    if (!target) return E_FAIL;
    const bool allowed = ignoreStates || StateOf(command).enabled;
    return allowed ? target->OnCommand(command) : S_FALSE;
}

HRESULT TestDocking::Press(HWND docking, char key) {
    for (const auto& [identifier, registration] : registrations) {
        if (registration.docking != docking) continue;
        for (const Accelerator& each : registration.keys) {
            if (each.key == static_cast<unsigned char>(key)) return Command(each.command);
        }
    }
    return S_FALSE;
}

HRESULT TestDocking::Close(HWND docking) {
    IQCommandTarget* const target = TargetIn(docking);
    if (target && target->OnCloseRequest() != S_OK) return S_FALSE;
    std::erase_if(windows, [&](const std::unique_ptr<CWnd>& window) {
        if (window->GetSafeHwnd() != docking) return false;
        window->DestroyWindow();
        return true;
    });
    names.erase(docking);
    states.erase(docking);
    shownToolbars.erase(docking);
    return S_OK;
}

HWND TestDocking::Control() const {
    for (const auto& [identifier, registration] : registrations) {
        if (registration.control) return registration.control;
    }
    return nullptr;
}

HWND TestDocking::Docking() const {
    return windows.empty() ? nullptr : windows.back()->m_hWnd;
}

HRESULT TestDocking::GetMainWindow(HWND* window) {
    *window = main->GetSafeHwnd();
    return S_OK;
}

HRESULT TestDocking::AllocateIdentifier(std::uint32_t* identifier) {
    if (Fails("AllocateIdentifier")) return E_FAIL;
    *identifier = nextIdentifier_++;
    registrations[*identifier];
    return S_OK;
}

HRESULT TestDocking::ReleaseIdentifier(std::uint32_t identifier) {
    if (Fails("ReleaseIdentifier")) return E_FAIL;
    released.push_back(identifier);
    registrations.erase(identifier);
    return S_OK;
}

HRESULT TestDocking::CreateDockingWindow(BSTR baseName, BSTR title, std::uint32_t flags,
                                         std::uint32_t side, HWND* window, BSTR* given) {
    log.push_back(FormatText("create %s \"%s\" %x %u", ToUtf8(baseName).c_str(),
                             ToUtf8(title).c_str(), flags, side));
    if (Fails("CreateDockingWindow")) return E_FAIL;
    auto docking = std::make_unique<CWnd>();
    if (!docking->Create(WS_CHILD | WS_VISIBLE, {0, 0, 640, 400}, main, 1000)) return E_FAIL;
    const HWND handle = docking->GetSafeHwnd();
    // A name that is taken gets a number; one that ends in a number came back from a workspace.
    const std::string base = ToUtf8(baseName);
    const bool numbered = !base.empty() && base.back() >= '0' && base.back() <= '9';
    names[handle] = numbered ? base : base + std::to_string(windows.size());
    windows.push_back(std::move(docking));
    if (giveNoWindows) return S_OK;
    *window = handle;
    *given = ToBstr(names[handle]);
    return S_OK;
}

HRESULT TestDocking::FindDockingWindow(BSTR name, BSTR title, std::uint32_t flags,
                                       std::uint32_t side, HWND* window) {
    log.push_back(FormatText("find %s \"%s\" %x %u", ToUtf8(name).c_str(), ToUtf8(title).c_str(),
                             flags, side));
    if (Fails("FindDockingWindow")) return E_FAIL;
    for (const auto& [handle, each] : names) {
        if (each == ToUtf8(name) && ::IsWindow(handle)) {
            *window = handle;
            return S_OK;
        }
    }
    return E_FAIL;
}

HRESULT TestDocking::SetWindowState(HWND window, std::int32_t state) {
    if (Fails("SetWindowState")) return E_FAIL;
    states[window] = state;
    return S_OK;
}

HRESULT TestDocking::GetWindowState(HWND window, std::int32_t* state) {
    if (Fails("GetWindowState")) return E_FAIL;
    *state = states[window];
    return S_OK;
}

HRESULT TestDocking::RegisterWindow(HWND window, HWND control, std::uint32_t identifier,
                                    const GUID& owner, IQCommandTarget* target) {
    if (Fails("RegisterWindow")) return E_FAIL;
    Registration& registration = registrations[identifier];
    registration.docking = window;
    registration.control = control;
    registration.target = target;
    registration.owners.push_back(owner);
    const SIZE size = CWnd::FromHandle(window)->GetClientRect().Size();
    CWnd::FromHandle(control)->MoveWindow(0, 0, size.cx, size.cy);
    return S_OK;
}

HRESULT TestDocking::AddMenu(std::uint32_t identifier, HWND, const MenuNode* root,
                             IQCommandTarget* target) {
    if (Fails("AddMenu")) return E_FAIL;
    registrations[identifier].target = target;
    CollectCommands(*root, registrations[identifier].menuCommands);
    return S_OK;
}

HRESULT TestDocking::AddToolbar(std::uint32_t identifier, HWND window, BSTR name, BSTR title,
                                const ToolbarButton* buttons, std::uint32_t count,
                                IQCommandTarget*) {
    if (Fails("AddToolbar")) return E_FAIL;
    Registration& registration = registrations[identifier];
    for (std::uint32_t i = 0; i < count; ++i) {
        registration.toolbarCommands.push_back(buttons[i].command);
    }
    if (window) {
        shownToolbars.insert(window);
    } else {
        registration.toolbar = ToUtf8(name) + " " + ToUtf8(title);
    }
    return S_OK;
}

HRESULT TestDocking::AddAccelerators(std::uint32_t identifier, HWND docking,
                                     const Accelerator* keys, std::uint32_t count,
                                     IQCommandTarget*) {
    if (Fails("AddAccelerators")) return E_FAIL;
    registrations[identifier].docking = docking;
    registrations[identifier].keys.assign(keys, keys + count);
    return S_OK;
}

HRESULT TestDocking::RemoveRegistrations(std::uint32_t identifier) {
    registrations.erase(identifier);
    return Fails("RemoveRegistrations") ? E_FAIL : S_OK;
}

HRESULT TestDocking::IsToolbarShown(HWND window, std::int32_t* shown) {
    if (Fails("IsToolbarShown")) return E_FAIL;
    *shown = shownToolbars.contains(window);
    return S_OK;
}

HRESULT TestDocking::ShowToolbar(HWND window, std::int32_t show) {
    if (Fails("ShowToolbar")) return E_FAIL;
    if (show) {
        shownToolbars.insert(window);
    } else {
        shownToolbars.erase(window);
    }
    return S_OK;
}

HRESULT TestDocking::CustomizeToolbar(HWND window) {
    if (Fails("CustomizeToolbar")) return E_FAIL;
    customized.push_back(window);
    return S_OK;
}

}  // namespace kvx::test
