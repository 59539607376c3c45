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

#include "host/Component.h"
#include "host/DockingHost.h"
#include "host/Identifiers.h"
#include "host/Services.h"
#include "platform/Module.h"
#include "platform/Wnd.h"
#include "support/ScriptedTraceService.h"

namespace kvx::test {

// Reference counting of a host object that lives in a test's scope.
template <class Interface>
class Counted : public Interface {
  public:
    HRESULT KVX_CALL QueryInterface(const GUID&, void** out) override {
        *out = nullptr;
        return E_NOINTERFACE;
    }
    std::uint32_t KVX_CALL AddRef() override { return ++references; }
    std::uint32_t KVX_CALL Release() override { return --references; }
    std::uint32_t references = 1;
};

class TestDocking : public Counted<IQDockingHost> {
  public:
    struct Registration {
        HWND docking = nullptr;
        HWND control = nullptr;
        IQCommandTarget* target = nullptr;
        std::vector<std::uint32_t> menuCommands;
        std::vector<std::uint32_t> toolbarCommands;
    };
    std::map<std::uint32_t, Registration> registrations;
    std::vector<std::unique_ptr<CWnd>> windows;
    std::map<HWND, std::string> names;
    std::map<HWND, std::int32_t> states;
    std::set<HWND> shownToolbars;
    std::vector<HWND> customized;
    CWnd* main = nullptr;
    bool refuseWindows = false;

    // The target that knows the command, or null.
    IQCommandTarget* TargetOf(std::uint32_t command) const;
    // Runs a command as a menu would: only when it is enabled. S_FALSE: disabled.
    HRESULT Command(std::uint32_t command);
    CommandState StateOf(std::uint32_t command) const;
    // The only control in a docking window, or null.
    HWND Control() const;
    HWND Docking() const;

    HRESULT KVX_CALL GetMainWindow(HWND* window) override;
    HRESULT KVX_CALL AllocateIdentifier(std::uint32_t* identifier) override;
    HRESULT KVX_CALL ReleaseIdentifier(std::uint32_t identifier) override;
    HRESULT KVX_CALL CreateDockingWindow(BSTR baseName, BSTR title, std::uint32_t flags,
                                         std::uint32_t side, HWND* window, BSTR* given) override;
    HRESULT KVX_CALL FindDockingWindow(BSTR name, BSTR title, std::uint32_t flags,
                                       std::uint32_t side, HWND* window) override;
    HRESULT KVX_CALL SetWindowState(HWND docking, std::int32_t state) override;
    HRESULT KVX_CALL GetWindowState(HWND docking, std::int32_t* state) override;
    HRESULT KVX_CALL RegisterWindow(HWND docking, HWND control, std::uint32_t identifier,
                                    const GUID& owner, IQCommandTarget* target) override;
    HRESULT KVX_CALL AddMenu(std::uint32_t identifier, HWND docking, const MenuNode* root,
                             IQCommandTarget* target) override;
    HRESULT KVX_CALL AddToolbar(std::uint32_t identifier, HWND docking, BSTR name, BSTR title,
                                const ToolbarButton* buttons, std::uint32_t count,
                                IQCommandTarget* target) override;
    HRESULT KVX_CALL AddAccelerators(std::uint32_t, HWND, const Accelerator*, std::uint32_t,
                                     IQCommandTarget*) override {
        return S_OK;
    }
    HRESULT KVX_CALL RemoveRegistrations(std::uint32_t identifier) override;
    HRESULT KVX_CALL IsToolbarShown(HWND docking, std::int32_t* shown) override;
    HRESULT KVX_CALL ShowToolbar(HWND docking, std::int32_t show) override;
    HRESULT KVX_CALL CustomizeToolbar(HWND docking) override;
    HRESULT KVX_CALL SetStatusText(BSTR) override { return S_OK; }

  private:
    std::uint32_t nextIdentifier_ = 1;
};

class TestRunState : public Counted<IQRunState> {
  public:
    bool running = false;
    HRESULT KVX_CALL IsRunning() override { return running ? S_OK : E_FAIL; }
};

class TestDebuggerLibrary : public Counted<IQDebuggerLibrary> {
  public:
    HMODULE module = nullptr;
    HRESULT KVX_CALL GetModule(void** out) override {
        *out = module;
        return module ? S_OK : E_FAIL;
    }
    HRESULT KVX_CALL GetDirectory(BSTR* directory) override;
    HRESULT KVX_CALL GetBaseName(BSTR* name) override;
};

class TestStore : public Counted<IQWorkspaceStoreService> {
  public:
    std::map<std::string, std::string> texts;
    HRESULT KVX_CALL WriteText(const WorkspaceKey*, BSTR key, BSTR text) override;
    HRESULT KVX_CALL ReadText(const WorkspaceKey*, BSTR key, BSTR* text) override;
};

class TestProperties : public Counted<IQPropertyStore> {
  public:
    std::map<std::string, std::int32_t> numbers;
    std::map<std::string, std::string> texts;
    HRESULT KVX_CALL SetNumber(BSTR key, std::int32_t value) override;
    HRESULT KVX_CALL SetText(BSTR key, BSTR text) override;
    HRESULT KVX_CALL GetNumber(BSTR key, std::int32_t* value) override;
    HRESULT KVX_CALL GetText(BSTR key, BSTR* text) override;
};

class TestHost : public Counted<IQHost> {
  public:
    // Offers everything; a test takes away what it does not want.
    TestHost();
    ~TestHost();

    TestDocking docking;
    TestRunState runState;
    TestDebuggerLibrary debugger;
    TestStore store;
    TestProperties properties;
    ScriptedTraceService trace;
    std::map<GUID, void*> services;
    std::map<GUID, void*> advised;
    std::vector<GUID> broadcasts;
    IQComponent* component = nullptr;  // receives broadcasts

    void Send(const GUID& event);

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
    TestModule();
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

// An instance that is created and connected as long as the object lives.
class Session {
  public:
    static constexpr std::uintptr_t kKey = 0x1234;
    explicit Session(TestHost& host, bool debugger = true);
    ~Session();
    HRESULT Status() const { return status_; }
    IQComponent& Component() const { return *component_; }
    const TestModule& Module() const { return module_; }

  private:
    TestModule module_;
    TestHost& host_;
    IQComponent* component_;
    HRESULT status_;
};

std::string BinDirectory();

}  // namespace kvx::test
