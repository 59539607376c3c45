#pragma once
// Smaller services of the test host.

#include <map>
#include <string>
#include <vector>

#include "component/Counted.h"
#include "host/Services.h"
#include "platform/base/Module.h"

namespace kvx::test {

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

// Performs debugger functions and writes their names down.
class TestDebuggerCalls : public Counted<IQDebuggerCalls> {
  public:
    std::vector<std::string> called;
    std::uintptr_t first = 0;  // arguments of the latest call
    std::uintptr_t second = 0;
    std::intptr_t answer = 0;
    std::intptr_t KVX_CALL Call(const char* function, const std::uintptr_t* arguments,
                                std::uint32_t) override {
        called.emplace_back(function);
        first = arguments[0];
        second = arguments[1];
        return answer;
    }
};

class TestErrors : public Counted<IQErrorService> {
  public:
    std::vector<std::uintptr_t> reported;
    HRESULT KVX_CALL ReportError(std::uintptr_t a, std::uintptr_t b) override {
        reported = {a, b};
        return S_FALSE;
    }
};

class TestStore : public Counted<IQWorkspaceStoreService> {
  public:
    std::map<std::string, std::string> texts;  // of the workspace
    std::map<std::string, std::string> own;    // of the user, outside any workspace
    std::string where;                         // "a b workspace d" of the latest text written
    bool failing = false;
    HRESULT KVX_CALL WriteText(const WorkspaceKey* key, BSTR name, BSTR text) override;
    HRESULT KVX_CALL ReadText(const WorkspaceKey* key, BSTR name, BSTR* text) override;

  private:
    std::map<std::string, std::string>& Of(const WorkspaceKey& key);
};

class TestProperties : public Counted<IQPropertyStore> {
  public:
    std::map<std::string, std::int32_t> numbers;
    std::map<std::string, std::string> texts;
    std::vector<std::string> asked;  // keys, in the order in which they were read or written
    bool failing = false;  // every operation fails, after it wrote something into what it gives
    HRESULT KVX_CALL SetNumber(BSTR key, std::int32_t value) override;
    HRESULT KVX_CALL SetText(BSTR key, BSTR text) override;
    HRESULT KVX_CALL GetNumber(BSTR key, std::int32_t* value) override;
    HRESULT KVX_CALL GetText(BSTR key, BSTR* text) override;
};

// The names of the workspace: "_long" and "_short".
class TestNaming : public Counted<IQNamingService> {
  public:
    bool failing = false;
    HRESULT KVX_CALL GetLongName(std::uintptr_t a, std::uintptr_t b, std::uintptr_t d,
                                 BSTR* name) override;
    HRESULT KVX_CALL GetShortName(std::uintptr_t a, std::uintptr_t b, BSTR* name) override;
};

// A host without an open project: every question fails.
class TestProject : public Counted<IQProjectInformation> {
  public:
    HRESULT KVX_CALL GetHomeDirectory(BSTR*) override { return E_FAIL; }
    HRESULT KVX_CALL GetTemporaryDirectory(BSTR*) override { return E_FAIL; }
    HRESULT KVX_CALL GetWorkspaceName(BSTR*) override { return E_FAIL; }
    HRESULT KVX_CALL GetProjectName(BSTR*) override { return E_FAIL; }
    HRESULT KVX_CALL GetConfigurationName(BSTR*) override { return E_FAIL; }
    HRESULT KVX_CALL GetWorkspaceDirectory(BSTR, BSTR*) override { return E_FAIL; }
    HRESULT KVX_CALL GetProjectDirectory(BSTR, BSTR, BSTR*) override { return E_FAIL; }
    HRESULT KVX_CALL GetConfigurationDirectory(BSTR, BSTR, BSTR, BSTR*) override { return E_FAIL; }
};

class TestPlaceholders : public Counted<IQCustomPlaceholders> {
  public:
    HRESULT KVX_CALL GetValue(BSTR, BSTR*) override { return E_FAIL; }
};

// Forbids opening an OS Trace window, or not.
class TestBlocker : public Counted<IQOpenBlocker> {
  public:
    std::int16_t flag = 0;
    HRESULT status = S_OK;
    int asked = 0;
    HRESULT KVX_CALL IsOpenBlocked(std::int16_t* out) override {
        ++asked;
        *out = flag;
        return status;
    }
};

}  // namespace kvx::test
