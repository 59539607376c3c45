#include "toolbar/MenuDockingManager.h"

#include "host/Identifiers.h"
#include "toolbar/CommandTarget.h"
#include "toolbar/HostMenu.h"

using kvx::Bstr;

namespace {

std::vector<Accelerator> HostKeys(std::span<const AcceleratorResource> keys) {
    std::vector<Accelerator> host;
    for (const AcceleratorResource& key : keys) {
        host.push_back({key.key, key.control, key.shift, key.alt, key.command});
    }
    return host;
}

}  // namespace

CDockingManager::CDockingManager() = default;

CDockingManager::~CDockingManager() = default;

IQDockingHost* CDockingManager::Docking() const {
    return kvx::host::Service<IQDockingHost>(host_, kvx::host::kDockingHost);
}

CCommandTarget& CDockingManager::Target(std::uint32_t identifier) {
    std::unique_ptr<CCommandTarget>& target = targets_[identifier];
    if (!target) target = std::make_unique<CCommandTarget>();
    return *target;
}

std::uint32_t CDockingManager::AllocateIdentifier() {
    std::uint32_t identifier = 0;
    IQDockingHost* docking = Docking();
    if (docking && Succeeded(docking->AllocateIdentifier(&identifier))) return identifier;
    return nextIdentifier_++;
}

void CDockingManager::ReleaseIdentifier(std::uint32_t identifier) {
    RemoveRegistrations(identifier);
    if (identifier >= kFirstOwnIdentifier) return;
    if (IQDockingHost* docking = Docking()) docking->ReleaseIdentifier(identifier);
}

HWND CDockingManager::FindDockingWindow(const CString& name, const CString& title,
                                        std::uint32_t flags, std::uint32_t side) {
    HWND window = nullptr;
    IQDockingHost* docking = Docking();
    if (!docking) return nullptr;
    const HRESULT status =
        docking->FindDockingWindow(Bstr(name).Get(), Bstr(title).Get(), flags, side, &window);
    return Succeeded(status) ? window : nullptr;
}

HWND CDockingManager::CreateDockingWindow(const CString& baseName, const CString& title,
                                          std::uint32_t flags, std::uint32_t side, CString* given) {
    HWND window = nullptr;
    Bstr name;
    IQDockingHost* docking = Docking();
    if (!docking) return nullptr;
    const HRESULT status = docking->CreateDockingWindow(Bstr(baseName).Get(), Bstr(title).Get(),
                                                        flags, side, &window, name.Receive());
    if (Failed(status)) return nullptr;
    *given = name.Utf8();
    return window;
}

void CDockingManager::SetWindowState(HWND window, int state) {
    if (IQDockingHost* docking = Docking()) docking->SetWindowState(window, state);
}

int CDockingManager::GetWindowState(HWND window) {
    std::int32_t state = 0;
    if (IQDockingHost* docking = Docking()) docking->GetWindowState(window, &state);
    return state;
}

IQDockingRegistrations* CDockingManager::Registrations() const {
    IQDockingHost* const docking = Docking();
    void* out = nullptr;
    if (!docking || Failed(docking->QueryInterface(kvx::host::kDockingRegistrations, &out))) {
        return nullptr;
    }
    return static_cast<IQDockingRegistrations*>(out);
}

void CDockingManager::RegisterWindow(HWND window, ICommandWindow* control, std::uint32_t identifier,
                                     const GUID& owner) {
    constexpr std::int32_t kNoPosition = -1;
    Target(identifier).Bind(control);
    if (IQDockingRegistrations* const told = Registrations()) {
        told->RegisterWindow(window, control->CommandHandle(), kNoPosition, Bstr("").Get(), 0, 0,
                             identifier, owner);
    }
    if (IQDockingHost* docking = Docking()) {
        docking->RegisterWindow(window, control->CommandHandle(), identifier, owner,
                                &Target(identifier));
    }
}

void CDockingManager::AttachMenu(HWND window, UINT menu, std::uint32_t identifier,
                                 const GUID& owner) {
    const kvx::HostMenu description(FindMenu(menu));
    const std::vector<Accelerator> keys = HostKeys(FindAccelerators(menu));
    if (IQDockingRegistrations* const told = Registrations()) {
        told->AttachMenu(AfxGetResourceHandle(), menu, identifier, owner);
    }
    IQDockingHost* docking = Docking();
    if (!docking) return;
    docking->AddMenu(identifier, window, description.Root(), &Target(identifier));
    if (keys.empty()) return;
    docking->AddAccelerators(identifier, window, keys.data(),
                             static_cast<std::uint32_t>(keys.size()), &Target(identifier));
}

void CDockingManager::BindWindow(std::uint32_t identifier, ICommandWindow* window) {
    Target(identifier).Bind(window);
    if (IQDockingRegistrations* const told = Registrations()) {
        told->BindWindow(identifier, window->CommandHandle());
    }
}

void CDockingManager::BindModule(std::uint32_t identifier, HINSTANCE module) {
    if (IQDockingRegistrations* const told = Registrations()) told->BindModule(identifier, module);
}

void CDockingManager::RegisterGroup(UINT resource, std::uint32_t identifier, const GUID& owner) {
    if (IQDockingRegistrations* const told = Registrations()) {
        told->RegisterGroup(AfxGetResourceHandle(), resource, identifier, owner);
    }
}

void CDockingManager::CreateToolbar(HWND window, UINT toolbar, std::uint32_t identifier,
                                    const GUID& owner, std::span<const UINT> optional) {
    constexpr std::uint32_t kReserved[8] = {};
    if (IQDockingRegistrations* const told = Registrations()) {
        told->CreateToolbar(window, AfxGetResourceHandle(), toolbar, 0, identifier, owner,
                            kReserved, optional.data(),
                            static_cast<std::uint32_t>(optional.size()));
    }
    AddToolbar(window, {}, {}, toolbar, identifier);
}

void CDockingManager::AddHostToolbar(const CString& name, const CString& title, UINT toolbar,
                                     std::uint32_t identifier) {
    AddToolbar(nullptr, name, title, toolbar, identifier);
}

void CDockingManager::AddToolbar(HWND window, const CString& name, const CString& title,
                                 UINT toolbar, std::uint32_t identifier) {
    const ToolbarResource* resource = FindToolbar(toolbar);
    IQDockingHost* docking = Docking();
    if (!resource || !docking) return;
    const kvx::HostToolbar description(*resource);
    docking->AddToolbar(identifier, window, Bstr(name).Get(), Bstr(title).Get(),
                        description.Buttons(), description.Count(), &Target(identifier));
}

void CDockingManager::RemoveRegistrations(std::uint32_t identifier) {
    if (IQDockingHost* docking = Docking()) docking->RemoveRegistrations(identifier);
    targets_.erase(identifier);
}

bool CDockingManager::IsToolbarShown(HWND window) {
    std::int32_t shown = 0;
    if (IQDockingHost* docking = Docking()) docking->IsToolbarShown(window, &shown);
    return shown != 0;
}

void CDockingManager::ShowToolbar(HWND window, bool show) {
    if (IQDockingHost* docking = Docking()) docking->ShowToolbar(window, show);
}

void CDockingManager::CustomizeToolbar(HWND window) {
    if (IQDockingHost* docking = Docking()) docking->CustomizeToolbar(window);
}
