#include "component/TestHost.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "platform/Backend.h"
#include "platform/base/WinApp.h"

namespace kvx::test {
namespace {

// Another object that stands under the identifier stays.
HRESULT Forget(std::map<GUID, void*>& objects, const GUID& id, void* object) {
    const auto found = objects.find(id);
    if (found == objects.end() || found->second != object) return E_INVALIDARG;
    objects.erase(found);
    return S_OK;
}

}  // namespace
std::string BinDirectory() {
    const char* directory = std::getenv("KVX_BIN_DIR");
    return directory ? directory : "bin";
}

TestHost::TestHost() : main_(std::make_unique<CWnd>()) {
    InstallBackend();
    main_->Create(WS_OVERLAPPED | WS_VISIBLE, {0, 0, 800, 500}, HWND{}, 0);
    AfxSetMainWnd(main_->GetSafeHwnd());
    docking.main = main_.get();
    debugger.module = LoadLibrary(BinDirectory() + "/KvxDebugger.dll");
    services = {
        {host::kDockingHost, &docking},
        {host::kRunState, &runState},
        {host::kDebuggerLibrary, &debugger},
        {host::kDebuggerCalls, &debuggerCalls},
        {host::kWorkspaceStore, &store},
        {host::kPropertyStore, &properties},
        {host::kNamingService, &naming},
        {host::kErrorService, &errors},
        {host::kProjectInformation, &project},
        {host::kCustomPlaceholders, &placeholders},
        {host::kOpenBlockerA, &blockerA},
        {host::kOpenBlockerB, &blockerB},
        {host::kOSTraceService, static_cast<IQOSTraceService*>(&trace)},
        {host::kOSTraceAvailability, static_cast<IQOSTraceAvailability*>(&trace)},
    };
    for (const GUID& id :
         {host::kFrameworkA, host::kFrameworkB, host::kFrameworkC, host::kDebugB, host::kDebugC,
          host::kDebugD, host::kDebugE, host::kDebugF, host::kDebugG, host::kDebugH}) {
        services[id] = &framework;
    }
}

TestHost::~TestHost() {
    for (const auto& window : docking.windows) window->DestroyWindow();
    main_->DestroyWindow();
    AfxSetMainWnd(nullptr);
    if (debugger.module) FreeLibrary(debugger.module);
}

void TestHost::Send(const GUID& event, std::uintptr_t datum) {
    const EventRecord record{event, datum};
    BroadcastEvent(&record);
}

void TestHost::SendConnected() {
    Send(host::kEventDebuggerConnected);
    Send(host::kEventTargetConnected);
    Send(host::kEventTraceReady);
}

void TestHost::ExpectNothingLeft() const {
    EXPECT_TRUE(advised.empty());
    EXPECT_TRUE(offered.empty());
    EXPECT_TRUE(docking.registrations.empty());
}

HRESULT TestHost::QueryInterface(const GUID& id, void** out) {
    asked.push_back(id);
    if (id != host::kHostFrame) return Counted::QueryInterface(id, out);
    *out = &framework;
    return S_OK;
}

HRESULT TestHost::BroadcastEvent(const EventRecord* record) {
    broadcasts.push_back(*record);
    for (IQComponent* component : components) component->Notify(record);
    return S_OK;
}

HRESULT TestHost::GetService(const GUID& service, void** out) {
    asked.push_back(service);
    const Answer how = answer ? answer(service) : Answer::kService;
    if (how == Answer::kFailure) return E_FAIL;
    *out = nullptr;
    if (how == Answer::kNull) return S_OK;
    for (const auto* from : {&services, &offered}) {
        const auto found = from->find(service);
        if (found == from->end()) continue;
        *out = found->second;
        return S_OK;
    }
    return E_NOINTERFACE;
}

HRESULT TestHost::Advise(const GUID& id, void* client) {
    advised[id] = client;
    return S_OK;
}

HRESULT TestHost::AddService(const GUID& service, void* implementation) {
    offered[service] = implementation;
    return S_OK;
}

HRESULT TestHost::Unadvise(const GUID& id, void* client) {
    return Forget(advised, id, client);
}

HRESULT TestHost::RemoveService(const GUID& service, void* implementation) {
    return Forget(offered, service, implementation);
}

TestModule::TestModule(const std::string& directory) {
    CString error;
    module_ = LoadLibrary(directory + "/KvxOSTrace.dll", &error);
    EXPECT_NE(module_, nullptr) << error;
}

TestModule::~TestModule() {
    if (module_) FreeLibrary(module_);
}

Session::Session(TestHost& host, bool debugger, std::uintptr_t key) : host_(host), key_(key) {
    module_.Entry<CreateInstanceFn>("CreateInstance")(key_);
    component_ = module_.Query<IQComponent>(key_, kvx::host::kComponent);
    host_.components.push_back(component_);
    status_ = component_->Initialize(&host_, -1);
    if (debugger) host_.Send(kvx::host::kEventDebuggerConnected);
}

Session::~Session() {
    const EventRecord disconnected{kvx::host::kEventDebuggerDisconnected, 0};
    component_->Notify(&disconnected);
    component_->Terminate(-1);
    std::erase(host_.components, component_);
    module_.Entry<DestroyInstanceFn>("DestroyInstance")(key_);
    if (host_.components.empty()) host_.ExpectNothingLeft();
}

}  // namespace kvx::test
