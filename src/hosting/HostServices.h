#pragma once
// The smaller services of a host, but for its stores.

#include "host/Identifiers.h"
#include "host/Services.h"
#include "hosting/HostObject.h"
#include "platform/base/Module.h"

namespace kvx::hosting {

// Whether the target program runs; none does while a recorded file is shown.
class RunState final : public Implementation<IQRunState, host::kRunState> {
  public:
    void Set(bool running) { running_ = running; }
    HRESULT KVX_CALL IsRunning() override { return running_ ? S_OK : E_FAIL; }

  private:
    bool running_ = false;
};

// The debugger library and the folder of the debugger's own files.
class DebuggerLibrary final : public Implementation<IQDebuggerLibrary, host::kDebuggerLibrary> {
  public:
    // Loads the library from the directory; when that fails there is none.
    explicit DebuggerLibrary(const CString& directory);

    // Whether there is a target whose measurement can be stopped and started.
    void SetMeasurementAvailable(bool available);

    HRESULT KVX_CALL GetModule(void** module) override;
    HRESULT KVX_CALL GetDirectory(BSTR* directory) override;
    HRESULT KVX_CALL GetBaseName(BSTR* name) override;

  private:
    CString directory_;
    HMODULE module_ = nullptr;
};

// Debugger functions that the library does not export: there is no target to perform them on.
class DebuggerCalls final : public Implementation<IQDebuggerCalls, host::kDebuggerCalls> {
  public:
    std::intptr_t KVX_CALL Call(const char*, const std::uintptr_t*, std::uint32_t) override {
        return 0;
    }
};

// Errors that a component passes on; it has shown them already.
class ErrorService final : public Implementation<IQErrorService, host::kErrorService> {
  public:
    HRESULT KVX_CALL ReportError(std::uintptr_t, std::uintptr_t) override { return S_OK; }
};

// One workspace is open at a time, so that names need not tell them apart: they are empty.
class NamingService final : public Implementation<IQNamingService, host::kNamingService> {
  public:
    HRESULT KVX_CALL GetLongName(std::uintptr_t a, std::uintptr_t b, std::uintptr_t d,
                                 BSTR* name) override;
    HRESULT KVX_CALL GetShortName(std::uintptr_t a, std::uintptr_t b, BSTR* name) override;
};

// The trace that is open stands for workspace, project and configuration alike; their directory is
// where its user keeps files. While none is open, names are empty and directories fail.
class ProjectInformation final
    : public Implementation<IQProjectInformation, host::kProjectInformation> {
  public:
    // Empty: none is open.
    void SetOpen(const CString& name, const CString& directory);

    HRESULT KVX_CALL GetHomeDirectory(BSTR* directory) override;
    HRESULT KVX_CALL GetTemporaryDirectory(BSTR* directory) override;
    HRESULT KVX_CALL GetWorkspaceName(BSTR* name) override { return GiveName(name); }
    HRESULT KVX_CALL GetProjectName(BSTR* name) override { return GiveName(name); }
    HRESULT KVX_CALL GetConfigurationName(BSTR* name) override { return GiveName(name); }
    HRESULT KVX_CALL GetWorkspaceDirectory(BSTR workspace, BSTR* directory) override;
    HRESULT KVX_CALL GetProjectDirectory(BSTR workspace, BSTR project, BSTR* directory) override;
    HRESULT KVX_CALL GetConfigurationDirectory(BSTR workspace, BSTR project, BSTR configuration,
                                               BSTR* directory) override;

  private:
    HRESULT GiveName(BSTR* name) const;
    HRESULT GiveDirectory(BSTR* directory) const;

    CString name_;
    CString directory_;
};

// A host here defines no placeholders of its own.
class CustomPlaceholders final
    : public Implementation<IQCustomPlaceholders, host::kCustomPlaceholders> {
  public:
    HRESULT KVX_CALL GetValue(BSTR, BSTR*) override { return E_FAIL; }
};

// A service that components fetch and keep but never call.
class KeptService final : public Implementation<IQUnknown, IID_IUnknown> {};

// All of them, known to the host object from construction to destruction.
class HostServices {
  public:
    // host must outlive the services. directory: where the debugger library stands.
    HostServices(HostObject& host, const CString& directory);
    ~HostServices();
    HostServices(const HostServices&) = delete;
    HostServices& operator=(const HostServices&) = delete;

    RunState& Running() { return runState_; }
    DebuggerLibrary& Debugger() { return debuggerLibrary_; }
    ProjectInformation& Project() { return project_; }

    // Known to the host object for as long.
    void Add(const GUID& id, void* service);

  private:
    HostObject& host_;
    RunState runState_;
    DebuggerLibrary debuggerLibrary_;
    DebuggerCalls debuggerCalls_;
    ErrorService errors_;
    NamingService naming_;
    ProjectInformation project_;
    CustomPlaceholders placeholders_;
    KeptService kept_;
    std::vector<std::pair<GUID, void*>> added_;
};

}  // namespace kvx::hosting
