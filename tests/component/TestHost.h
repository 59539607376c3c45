#pragma once
// A second, small host, written against the host interfaces alone: it loads the module, takes it
// through its entry points, gives it docking windows that are plain windows, and plays a scripted
// trace. Everything that the component asks is written down.

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "component/TestDocking.h"
#include "component/TestServices.h"
#include "host/Component.h"
#include "host/Identifiers.h"
#include "platform/base/Module.h"
#include "platform/windows/Wnd.h"
#include "support/ScriptedTraceService.h"

namespace kvx::test {

// Where the build puts modules.
std::string BinDirectory();

class TestHost : public Counted<IQHost> {
  public:
    // Offers everything; a test takes away what it does not want.
    TestHost();
    ~TestHost();

    TestDocking docking;
    TestRunState runState;
    TestDebuggerLibrary debugger;
    TestDebuggerCalls debuggerCalls;
    TestErrors errors;
    TestStore store;
    TestProperties properties;
    TestNaming naming;
    TestProject project;
    TestBlocker blockerA;
    TestBlocker blockerB;
    TestPlaceholders placeholders;
    Counted<IQUnknown> framework;  // for services that nobody calls
    ScriptedTraceService trace;
    std::map<GUID, void*> services;
    std::map<GUID, void*> advised;
    std::map<GUID, void*> offered;  // by the component
    std::vector<EventRecord> broadcasts;
    std::vector<IQComponent*> components;  // that receive broadcasts

    // What GetService answers; unset: the service, as far as there is one.
    enum class Answer { kService, kFailure, kNull };
    std::function<Answer(const GUID& service)> answer;
    std::vector<GUID> asked;  // services and interfaces, in the order in which they were asked for

    void Send(const GUID& event, std::uintptr_t datum = 0);
    // The debugger is there, its target, and the target's trace.
    void SendConnected();
    // The interface that the component advised or offered.
    template <class Interface>
    Interface* Client(const GUID& id) const {
        const auto found = advised.contains(id) ? advised.find(id) : offered.find(id);
        return static_cast<Interface*>(found->second);
    }
    // Fails the test when the component left anything at the host.
    void ExpectNothingLeft() const;

    HRESULT KVX_CALL QueryInterface(const GUID& id, void** out) override;

    HRESULT KVX_CALL BroadcastEvent(const EventRecord* record) override;
    HRESULT KVX_CALL GetService(const GUID& service, void** out) override;
    HRESULT KVX_CALL Advise(const GUID& id, void* client) override;
    HRESULT KVX_CALL AddService(const GUID& service, void* implementation) override;
    HRESULT KVX_CALL Unadvise(const GUID& id, void* client) override;
    HRESULT KVX_CALL RemoveService(const GUID& service, void* implementation) override;

  private:
    std::unique_ptr<CWnd> main_;
};

// The module under test, loaded as a host loads it, and unloaded with the object.
class TestModule {
  public:
    explicit TestModule(const std::string& directory = BinDirectory());
    ~TestModule();
    template <class Function>
    Function Entry(const char* name) const {
        return GetProcAddress<Function>(module_, name);
    }
    // The interface of the instance, or null.
    template <class Interface>
    Interface* Query(std::uintptr_t key, const GUID& id) const {
        void* out = nullptr;
        const auto query = Entry<QueryInterface2Fn>("QueryInterface2");
        return query(key, &id, &out) == S_OK ? static_cast<Interface*>(out) : nullptr;
    }

  private:
    HMODULE module_;
};

// An instance that is created and connected as long as the object lives. In the end nothing of it
// may be left at the host.
class Session {
  public:
    static constexpr std::uintptr_t kKey = 0x1234;
    // With a key of its own where two instances live at once.
    explicit Session(TestHost& host, bool debugger = true, std::uintptr_t key = kKey);
    ~Session();
    HRESULT Status() const { return status_; }
    IQComponent& Component() const { return *component_; }
    const TestModule& Module() const { return module_; }

  private:
    TestModule module_;
    TestHost& host_;
    std::uintptr_t key_;
    IQComponent* component_;
    HRESULT status_;
};

}  // namespace kvx::test
