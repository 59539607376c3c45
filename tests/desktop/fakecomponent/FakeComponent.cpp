#include "fakecomponent/FakeComponent.h"

#include <map>
#include <utility>

#include "fakecomponent/FakeWindow.h"
#include "host/CommandIds.h"
#include "host/Component.h"
#include "host/Identifiers.h"
#include "host/OSTraceRange.h"
#include "host/OSTraceService.h"
#include "host/Services.h"

namespace kvx::test {
namespace {

std::string g_log;
std::string g_taken;
std::map<int, int> g_knobs;

void Log(const std::string& line) {
    g_log += line + "\n";
}

std::string Text(const EventRecord& record) {
    static const std::map<GUID, const char*> kNames = {
        {host::kEventDebuggerConnected, "debugger connected"},
        {host::kEventDebuggerDisconnected, "debugger disconnected"},
        {host::kEventTargetConnected, "target connected"},
        {host::kEventTargetDisconnected, "target disconnected"},
        {host::kEventTraceReady, "trace ready"},
        {host::kEventTraceCleared, "trace cleared"},
    };
    const auto found = kNames.find(record.id);
    return found == kNames.end() ? "other" : found->second;
}

class FakeComponent final : public IQComponent,
                            public IQCommandTarget,
                            public IQEOSTraceWindow,
                            public host::IQOSTraceRange {
  public:
    HRESULT KVX_CALL QueryInterface(const GUID& id, void** out) override {
        *out = id == host::kComponent ? static_cast<IQComponent*>(this) : nullptr;
        return *out ? S_OK : E_NOINTERFACE;
    }
    std::uint32_t KVX_CALL AddRef() override { return 1; }
    std::uint32_t KVX_CALL Release() override { return 0; }

    HRESULT KVX_CALL Notify(const EventRecord* record) override {
        // The trace at the time of the event: with events, or none.
        auto* trace = host::Service<IQOSTraceAvailability>(host_, host::kOSTraceAvailability);
        VARIANT_BOOL yes = VARIANT_FALSE;
        const bool there = trace && trace->IsTraceAvailable(&yes) == S_OK && yes == VARIANT_TRUE;
        Log(Text(*record) + (there ? ", trace there" : ""));
        return S_OK;
    }
    HRESULT KVX_CALL Initialize(IQHost* host, std::int16_t flag) override {
        Log("initialize " + std::to_string(flag != 0));
        if (g_knobs[kFailInitialize]) return E_FAIL;
        host_ = host;
        docks_ = host::Service<IQDockingHost>(host, host::kDockingHost);
        host->AddService(host::kOSTraceWindow, static_cast<IQEOSTraceWindow*>(this));
        host->AddService(host::kOSTraceRange, static_cast<host::IQOSTraceRange*>(this));
        docks_->AllocateIdentifier(&identifier_);
        AddMenus();
        return S_OK;
    }
    HRESULT KVX_CALL Reserved3() override { return S_OK; }
    HRESULT KVX_CALL Reserved4() override { return S_OK; }
    HRESULT KVX_CALL Terminate(std::int16_t flag) override {
        Log("terminate " + std::to_string(flag != 0));
        windows_.clear();
        docks_->RemoveRegistrations(identifier_);
        host_->RemoveService(host::kOSTraceWindow, static_cast<IQEOSTraceWindow*>(this));
        host_->RemoveService(host::kOSTraceRange, static_cast<host::IQOSTraceRange*>(this));
        return S_OK;
    }

    HRESULT KVX_CALL OnCommand(std::uint32_t command) override {
        if (command == ids::kOpenOSTrace) return Open("{WK_00000001_OSTRACE}", "OS Trace");
        if (command == ids::kOpenOSAnalyze) return Open("{WK_00000001_OSANALYZE}", "OS Analyze");
        return E_NOTIMPL;
    }
    HRESULT KVX_CALL OnUpdateCommand(std::uint32_t, CommandState*) override { return S_OK; }
    HRESULT KVX_CALL OnCloseRequest() override { return S_FALSE; }
    HRESULT KVX_CALL GetHelpKey(BSTR*) override { return E_NOTIMPL; }

    HRESULT KVX_CALL IsOpen(std::uint16_t* flag) override {
        *flag = windows_.contains("OS Trace") ? 0xFFFF : 0;
        return S_OK;
    }
    HRESULT KVX_CALL SetDisplayRange(double start, double end) override {
        Log("range " + std::to_string(static_cast<long long>(start)) + " " +
            std::to_string(static_cast<long long>(end)));
        return S_OK;
    }
    HRESULT KVX_CALL GetPosition(host::OSTracePosition*) override { return E_FAIL; }
    HRESULT KVX_CALL SetPosition(const host::OSTracePosition*) override { return E_FAIL; }

  private:
    void AddMenus() {
        const MenuNode trace[] = {
            {u"&OSTrace", u"Open OS Trace window\nOS Trace", ids::kOpenOSTrace, nullptr, 0}};
        const MenuNode analyze[] = {{u"OS &Analyze", u"Open OS Analyze window\nOS Analyze",
                                     ids::kOpenOSAnalyze, nullptr, 0}};
        for (const MenuNode* items : {trace, analyze}) {
            const MenuNode rtos = {u"&RTOS", nullptr, 0, items, 1};
            const MenuNode view = {u"&View", nullptr, 0, &rtos, 1};
            const MenuNode root = {nullptr, nullptr, 0, &view, 1};
            docks_->AddMenu(identifier_, nullptr, &root, this);
        }
        const std::vector<std::uint32_t> pixels(256, 0xFF202020);
        const ToolbarButton button = {ids::kOpenOSTrace, u"Open OS Trace window\nOS Trace",
                                      pixels.data()};
        docks_->AddToolbar(identifier_, nullptr, Bstr("{WK_TB00000023_RTOS}").Get(),
                           Bstr("RTOS").Get(), &button, 1, this);
    }

    HRESULT Open(const std::string& name, const std::string& title) {
        HWND docking = nullptr;
        if (Succeeded(docks_->FindDockingWindow(Bstr(name).Get(), Bstr(title).Get(), 0x10, 59422,
                                                &docking))) {
            return docks_->SetWindowState(docking, kDockShow);
        }
        Bstr given;
        const HRESULT status = docks_->CreateDockingWindow(
            Bstr(name).Get(), Bstr(title).Get(), 0x1804, 59422, &docking, given.Receive());
        if (Failed(status)) return status;
        Log("created " + given.Utf8());
        docks_->SetWindowState(docking, kDockShow);
        auto window = std::make_unique<FakeWindow>(host_, docking, Log);
        window->onClose = [this, title] { return Close(title); };
        windows_[title] = std::move(window);
        return S_OK;
    }

    HRESULT Close(const std::string& title) {
        Log("close request " + title);
        if (g_knobs[kRefuseClose]) return S_FALSE;
        windows_.erase(title);
        return S_OK;
    }

    IQHost* host_ = nullptr;
    IQDockingHost* docks_ = nullptr;
    std::uint32_t identifier_ = 0;
    std::map<std::string, std::unique_ptr<FakeWindow>> windows_;
};

std::map<std::uintptr_t, std::unique_ptr<FakeComponent>>& Instances() {
    static std::map<std::uintptr_t, std::unique_ptr<FakeComponent>> instances;
    return instances;
}

}  // namespace
}  // namespace kvx::test

using kvx::test::FakeComponent;
using kvx::test::Instances;
using kvx::test::Log;

extern "C" {

KVX_EXPORT HRESULT KVX_CALL LibraryRegister2(IQLibraryRegistration* registry) {
    registry->RegisterComponent(kvx::Bstr("Fake component").Get(), 2, 1, 0, &kvx::host::kComponent);
    return S_OK;
}

KVX_EXPORT HRESULT KVX_CALL QueryInterface2(std::uintptr_t key, const GUID* id, void** out) {
    *out = nullptr;
    const auto found = Instances().find(key);
    return found == Instances().end() ? E_NOINTERFACE : found->second->QueryInterface(*id, out);
}

KVX_EXPORT HRESULT KVX_CALL CreateInstance(std::uintptr_t key) {
    Log("create");
    Instances()[key] = std::make_unique<FakeComponent>();
    return S_OK;
}

KVX_EXPORT HRESULT KVX_CALL DestroyInstance(std::uintptr_t key) {
    Log("destroy");
    Instances().erase(key);
    return S_OK;
}

KVX_EXPORT HRESULT KVX_CALL GetComponentVersion(std::int32_t* major, std::int32_t* minor) {
    *major = 1;
    *minor = 0;
    return S_OK;
}

KVX_EXPORT const char* FakeTakeLog() {
    kvx::test::g_taken = std::exchange(kvx::test::g_log, {});
    return kvx::test::g_taken.c_str();
}

KVX_EXPORT void FakeSet(int knob, int value) {
    kvx::test::g_knobs[knob] = value;
}

}  // extern "C"
