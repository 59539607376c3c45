#include "component/TestHost.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "platform/WinApp.h"
#include "platform/qt/QtBackend.h"

namespace kvx::test {
namespace {

void CollectCommands(const MenuNode& node, std::vector<std::uint32_t>& commands) {
    if (node.command) commands.push_back(node.command);
    for (std::uint32_t i = 0; i < node.childCount; ++i) {
        CollectCommands(node.children[i], commands);
    }
}

}  // namespace

std::string BinDirectory() {
    const char* directory = std::getenv("KVX_BIN_DIR");
    return directory ? directory : "bin";
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
    return StateOf(command).enabled ? target->OnCommand(command) : S_FALSE;
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
    *identifier = nextIdentifier_++;
    registrations[*identifier];
    return S_OK;
}

HRESULT TestDocking::ReleaseIdentifier(std::uint32_t identifier) {
    return RemoveRegistrations(identifier);
}

HRESULT TestDocking::CreateDockingWindow(BSTR baseName, BSTR, std::uint32_t, std::uint32_t,
                                         HWND* window, BSTR* given) {
    if (refuseWindows) return E_FAIL;
    auto docking = std::make_unique<CWnd>();
    if (!docking->Create(WS_CHILD | WS_VISIBLE, {0, 0, 640, 400}, main, 1000)) return E_FAIL;
    *window = docking->GetSafeHwnd();
    names[*window] = ToUtf8(baseName) + std::to_string(windows.size());
    *given = ToBstr(names[*window]);
    windows.push_back(std::move(docking));
    return S_OK;
}

HRESULT TestDocking::FindDockingWindow(BSTR name, BSTR, std::uint32_t, std::uint32_t,
                                       HWND* window) {
    for (const auto& [handle, each] : names) {
        if (each == ToUtf8(name) && ::IsWindow(handle)) {
            *window = handle;
            return S_OK;
        }
    }
    return E_FAIL;
}

HRESULT TestDocking::SetWindowState(HWND window, std::int32_t state) {
    states[window] = state;
    return S_OK;
}

HRESULT TestDocking::GetWindowState(HWND window, std::int32_t* state) {
    *state = states[window];
    return S_OK;
}

HRESULT TestDocking::RegisterWindow(HWND window, HWND control, std::uint32_t identifier,
                                    const GUID&, IQCommandTarget* target) {
    Registration& registration = registrations[identifier];
    registration.docking = window;
    registration.control = control;
    registration.target = target;
    return S_OK;
}

HRESULT TestDocking::AddMenu(std::uint32_t identifier, HWND, const MenuNode* root,
                             IQCommandTarget* target) {
    registrations[identifier].target = target;
    CollectCommands(*root, registrations[identifier].menuCommands);
    return S_OK;
}

HRESULT TestDocking::AddToolbar(std::uint32_t identifier, HWND window, BSTR, BSTR,
                                const ToolbarButton* buttons, std::uint32_t count,
                                IQCommandTarget*) {
    for (std::uint32_t i = 0; i < count; ++i) {
        registrations[identifier].toolbarCommands.push_back(buttons[i].command);
    }
    if (window) shownToolbars.insert(window);
    return S_OK;
}

HRESULT TestDocking::RemoveRegistrations(std::uint32_t identifier) {
    registrations.erase(identifier);
    return S_OK;
}

HRESULT TestDocking::IsToolbarShown(HWND window, std::int32_t* shown) {
    *shown = shownToolbars.contains(window);
    return S_OK;
}

HRESULT TestDocking::ShowToolbar(HWND window, std::int32_t show) {
    if (show) {
        shownToolbars.insert(window);
    } else {
        shownToolbars.erase(window);
    }
    return S_OK;
}

HRESULT TestDocking::CustomizeToolbar(HWND window) {
    customized.push_back(window);
    return S_OK;
}

HRESULT TestDebuggerLibrary::GetDirectory(BSTR* directory) {
    *directory = ToBstr(BinDirectory());
    return S_OK;
}

HRESULT TestDebuggerLibrary::GetBaseName(BSTR* name) {
    *name = ToBstr("test");
    return S_OK;
}

HRESULT TestStore::WriteText(const WorkspaceKey*, BSTR key, BSTR text) {
    texts[ToUtf8(key)] = ToUtf8(text);
    return S_OK;
}

HRESULT TestStore::ReadText(const WorkspaceKey*, BSTR key, BSTR* text) {
    const auto found = texts.find(ToUtf8(key));
    if (found == texts.end()) return E_FAIL;
    *text = ToBstr(found->second);
    return S_OK;
}

HRESULT TestProperties::SetNumber(BSTR key, std::int32_t value) {
    numbers[ToUtf8(key)] = value;
    return S_OK;
}

HRESULT TestProperties::SetText(BSTR key, BSTR text) {
    texts[ToUtf8(key)] = ToUtf8(text);
    return S_OK;
}

HRESULT TestProperties::GetNumber(BSTR key, std::int32_t* value) {
    const auto found = numbers.find(ToUtf8(key));
    if (found == numbers.end()) return E_FAIL;
    *value = found->second;
    return S_OK;
}

HRESULT TestProperties::GetText(BSTR key, BSTR* text) {
    const auto found = texts.find(ToUtf8(key));
    if (found == texts.end()) return E_FAIL;
    *text = ToBstr(found->second);
    return S_OK;
}

TestHost::TestHost() : main_(std::make_unique<CWnd>()) {
    InstallQtBackend();
    main_->Create(WS_OVERLAPPED | WS_VISIBLE, {0, 0, 800, 500}, HWND{}, 0);
    AfxSetMainWnd(main_->GetSafeHwnd());
    docking.main = main_.get();
    debugger.module = LoadLibrary(BinDirectory() + "/KvxDebugger.dll");
    services = {
        {host::kDockingHost, &docking},
        {host::kRunState, &runState},
        {host::kDebuggerLibrary, &debugger},
        {host::kWorkspaceStore, &store},
        {host::kPropertyStore, &properties},
        {host::kOSTraceService, static_cast<IQOSTraceService*>(&trace)},
        {host::kOSTraceAvailability, static_cast<IQOSTraceAvailability*>(&trace)},
    };
}

TestHost::~TestHost() {
    for (const auto& window : docking.windows) window->DestroyWindow();
    main_->DestroyWindow();
    AfxSetMainWnd(nullptr);
    if (debugger.module) FreeLibrary(debugger.module);
}

void TestHost::Send(const GUID& event) {
    const EventRecord record{event, 0};
    BroadcastEvent(&record);
}

HRESULT TestHost::BroadcastEvent(const EventRecord* record) {
    broadcasts.push_back(record->id);
    return component ? component->Notify(record) : S_OK;
}

HRESULT TestHost::GetService(const GUID& service, void** out) {
    const auto found = services.find(service);
    if (found == services.end()) return E_NOINTERFACE;
    *out = found->second;
    return S_OK;
}

HRESULT TestHost::Advise(const GUID& id, void* client) {
    advised[id] = client;
    return S_OK;
}

HRESULT TestHost::AddService(const GUID& service, void* implementation) {
    services[service] = implementation;
    return S_OK;
}

HRESULT TestHost::Unadvise(const GUID& id, void* client) {
    if (advised[id] == client) advised.erase(id);
    return S_OK;
}

HRESULT TestHost::RemoveService(const GUID& service, void*) {
    services.erase(service);
    return S_OK;
}

TestModule::TestModule() {
    CString error;
    module_ = LoadLibrary(BinDirectory() + "/KvxOSTrace.dll", &error);
    EXPECT_NE(module_, nullptr) << error;
}

TestModule::~TestModule() {
    if (module_) FreeLibrary(module_);
}

Session::Session(TestHost& host, bool debugger) : host_(host) {
    module_.Entry<CreateInstanceFn>("CreateInstance")(kKey);
    component_ = module_.Query<IQComponent>(kKey, kvx::host::kComponent);
    host_.component = component_;
    status_ = component_->Initialize(&host_, -1);
    if (debugger) host_.Send(kvx::host::kEventDebuggerConnected);
}

Session::~Session() {
    host_.Send(kvx::host::kEventDebuggerDisconnected);
    component_->Terminate(-1);
    host_.component = nullptr;
    module_.Entry<DestroyInstanceFn>("DestroyInstance")(kKey);
}

}  // namespace kvx::test
