#pragma once
// Smaller services of the host. Only the operations that the component calls are given; each stands
// at the position that the component relies on. Texts handed out are the receiver's to free.

#include "host/Host.h"

class IQRunState : public IQUnknown {
  public:
    // Not negative while the target program runs.
    virtual HRESULT KVX_CALL IsRunning() = 0;

  protected:
    ~IQRunState() = default;
};

class IQErrorService : public IQUnknown {
  public:
    virtual HRESULT KVX_CALL ReportError(std::uintptr_t a, std::uintptr_t b) = 0;

  protected:
    ~IQErrorService() = default;
};

class IQDebuggerLibrary : public IQUnknown {
  public:
    // Module handle of the debugger library (kvx::Module), or null.
    virtual HRESULT KVX_CALL GetModule(void** module) = 0;
    // Directory and base name of the debugger's own files.
    virtual HRESULT KVX_CALL GetDirectory(BSTR* directory) = 0;
    virtual HRESULT KVX_CALL GetBaseName(BSTR* name) = 0;

  protected:
    ~IQDebuggerLibrary() = default;
};

// Host properties, kept for the user.
class IQPropertyStore : public IQUnknown {
  public:
    virtual HRESULT KVX_CALL SetNumber(BSTR key, std::int32_t value) = 0;
    virtual HRESULT KVX_CALL SetText(BSTR key, BSTR text) = 0;
    virtual HRESULT KVX_CALL GetNumber(BSTR key, std::int32_t* value) = 0;
    virtual HRESULT KVX_CALL GetText(BSTR key, BSTR* text) = 0;

  protected:
    ~IQPropertyStore() = default;
};

// Whose texts a store call means: four values that the host gave with a workspace notification and
// the owner. All of them empty: the user's own settings, outside any workspace.
struct WorkspaceKey {
    std::uintptr_t a = 0;
    std::uintptr_t b = 0;
    BSTR workspace = nullptr;  // borrowed
    std::uintptr_t d = 0;
    GUID owner;
};

class IQWorkspaceStoreService : public IQUnknown {
  public:
    virtual HRESULT KVX_CALL WriteText(const WorkspaceKey* where, BSTR key, BSTR text) = 0;
    // Negative when nothing is stored under the key.
    virtual HRESULT KVX_CALL ReadText(const WorkspaceKey* where, BSTR key, BSTR* text) = 0;

  protected:
    ~IQWorkspaceStoreService() = default;
};

// Names that tell the windows of one workspace from those of another.
class IQNamingService : public IQUnknown {
  public:
    virtual HRESULT KVX_CALL GetLongName(std::uintptr_t a, std::uintptr_t b, std::uintptr_t d,
                                         BSTR* name) = 0;
    virtual HRESULT KVX_CALL GetShortName(std::uintptr_t a, std::uintptr_t b, BSTR* name) = 0;

  protected:
    ~IQNamingService() = default;
};

class IQProjectInformation : public IQUnknown {
  public:
    virtual HRESULT KVX_CALL GetHomeDirectory(BSTR* directory) = 0;
    virtual HRESULT KVX_CALL GetTemporaryDirectory(BSTR* directory) = 0;
    virtual HRESULT KVX_CALL GetWorkspaceName(BSTR* name) = 0;
    virtual HRESULT KVX_CALL GetProjectName(BSTR* name) = 0;
    virtual HRESULT KVX_CALL GetConfigurationName(BSTR* name) = 0;
    virtual HRESULT KVX_CALL GetWorkspaceDirectory(BSTR workspace, BSTR* directory) = 0;
    virtual HRESULT KVX_CALL GetProjectDirectory(BSTR workspace, BSTR project, BSTR* directory) = 0;
    virtual HRESULT KVX_CALL GetConfigurationDirectory(BSTR workspace, BSTR project,
                                                       BSTR configuration, BSTR* directory) = 0;

  protected:
    ~IQProjectInformation() = default;
};

class IQCustomPlaceholders : public IQUnknown {
  public:
    virtual HRESULT KVX_CALL GetValue(BSTR name, BSTR* value) = 0;

  protected:
    ~IQCustomPlaceholders() = default;
};

// Services that may forbid opening an OS Trace window: flag -1 forbids.
class IQOpenBlocker : public IQUnknown {
  public:
    virtual HRESULT KVX_CALL IsOpenBlocked(std::int16_t* flag) = 0;

  protected:
    ~IQOpenBlocker() = default;
};

// Performs debugger functions that have no direct entry point. Arguments and result pass through.
class IQDebuggerCalls : public IQUnknown {
  public:
    virtual std::intptr_t KVX_CALL Call(const char* function, const std::uintptr_t* arguments,
                                        std::uint32_t count) = 0;

  protected:
    ~IQDebuggerCalls() = default;
};

// Offered by the component.
class IQEOSTraceWindow : public IQUnknown {
  public:
    // 0xFFFF while an OS Trace window is open, else 0.
    virtual HRESULT KVX_CALL IsOpen(std::uint16_t* flag) = 0;

  protected:
    ~IQEOSTraceWindow() = default;
};
