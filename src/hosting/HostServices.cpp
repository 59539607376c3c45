#include "hosting/HostServices.h"

#include <filesystem>

#include "platform/base/Automation.h"
#include "platform/os/Environment.h"

namespace kvx::hosting {
namespace {

constexpr char kDebuggerLibraryName[] = "KvxDebugger";

HRESULT Give(const CString& text, BSTR* out) {
    if (!out) return E_POINTER;
    *out = ToBstr(text);
    return *out ? S_OK : E_OUTOFMEMORY;
}

}  // namespace

DebuggerLibrary::DebuggerLibrary(const CString& directory)
    : directory_(directory),
      module_(LoadLibrary(directory + "/" + kDebuggerLibraryName + ".dll")) {}

void DebuggerLibrary::SetMeasurementAvailable(bool available) {
    using SetFn = void (*)(int);
    if (const auto set = GetProcAddress<SetFn>(module_, "SetMeasurementAvailable")) {
        set(available ? 1 : 0);
    }
}

HRESULT DebuggerLibrary::GetModule(void** module) {
    if (!module) return E_POINTER;
    *module = module_;
    return module_ ? S_OK : E_FAIL;
}

HRESULT DebuggerLibrary::GetDirectory(BSTR* directory) {
    return Give(directory_, directory);
}

HRESULT DebuggerLibrary::GetBaseName(BSTR* name) {
    return Give(kDebuggerLibraryName, name);
}

HRESULT NamingService::GetLongName(std::uintptr_t, std::uintptr_t, std::uintptr_t, BSTR* name) {
    return Give({}, name);
}

HRESULT NamingService::GetShortName(std::uintptr_t, std::uintptr_t, BSTR* name) {
    return Give({}, name);
}

HRESULT ProjectInformation::GetHomeDirectory(BSTR* directory) {
    return Give(os::HomeFolder(), directory);
}

HRESULT ProjectInformation::GetTemporaryDirectory(BSTR* directory) {
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::temp_directory_path(error);
    return error ? E_FAIL : Give(folder.string(), directory);
}

void ProjectInformation::SetOpen(const CString& name, const CString& directory) {
    name_ = name;
    directory_ = directory;
}

HRESULT ProjectInformation::GetWorkspaceDirectory(BSTR, BSTR* directory) {
    return GiveDirectory(directory);
}

HRESULT ProjectInformation::GetProjectDirectory(BSTR, BSTR, BSTR* directory) {
    return GiveDirectory(directory);
}

HRESULT ProjectInformation::GetConfigurationDirectory(BSTR, BSTR, BSTR, BSTR* directory) {
    return GiveDirectory(directory);
}

HRESULT ProjectInformation::GiveName(BSTR* name) const {
    return Give(name_, name);
}

HRESULT ProjectInformation::GiveDirectory(BSTR* directory) const {
    return name_.empty() ? E_FAIL : Give(directory_, directory);
}

HostServices::HostServices(HostObject& host, const CString& directory)
    : host_(host), debuggerLibrary_(directory) {
    Add(host::kRunState, static_cast<IQRunState*>(&runState_));
    Add(host::kDebuggerLibrary, static_cast<IQDebuggerLibrary*>(&debuggerLibrary_));
    Add(host::kDebuggerCalls, static_cast<IQDebuggerCalls*>(&debuggerCalls_));
    Add(host::kErrorService, static_cast<IQErrorService*>(&errors_));
    Add(host::kNamingService, static_cast<IQNamingService*>(&naming_));
    Add(host::kProjectInformation, static_cast<IQProjectInformation*>(&project_));
    Add(host::kCustomPlaceholders, static_cast<IQCustomPlaceholders*>(&placeholders_));
    for (const GUID& id : {host::kHostFrame, host::kFrameworkA, host::kFrameworkB,
                           host::kFrameworkC, host::kDebugB, host::kDebugC, host::kDebugD,
                           host::kDebugE, host::kDebugF, host::kDebugG, host::kDebugH}) {
        Add(id, static_cast<IQUnknown*>(&kept_));
    }
}

HostServices::~HostServices() {
    for (const auto& [id, service] : added_) host_.RemoveService(id, service);
}

void HostServices::Add(const GUID& id, void* service) {
    host_.AddService(id, service);
    added_.emplace_back(id, service);
}

}  // namespace kvx::hosting
