#include "hosting/ComponentModule.h"

#include "host/Identifiers.h"
#include "platform/base/Automation.h"
#include "platform/base/Module.h"

namespace kvx::hosting {
namespace {

// The one instance; any number does.
constexpr std::uintptr_t kInstanceKey = 1;
constexpr std::int16_t kYes = -1;

// Takes down what the module says of itself.
class Registration final : public Implementation<IQLibraryRegistration, IID_IUnknown> {
  public:
    HRESULT KVX_CALL RegisterComponent(BSTR name, std::int32_t, std::int32_t, std::int32_t,
                                       const GUID* component) override {
        if (!name || !component) return E_POINTER;
        name_ = ToUtf8(name);
        identifier_ = *component;
        return S_OK;
    }
    CString name_;
    GUID identifier_;
};

template <class Function>
bool Find(HMODULE module, const char* name, Function* function) {
    *function = GetProcAddress<Function>(module, name);
    return *function != nullptr;
}

}  // namespace

CString ComponentModule::Load(const CString& directory, const CString& name) {
    CString error;
    const HMODULE module = LoadLibrary(directory + "/" + name + ".dll", &error);
    if (!module) return error;
    const bool complete =
        Find(module, "LibraryRegister2", &register_) && Find(module, "QueryInterface2", &query_) &&
        Find(module, "CreateInstance", &create_) && Find(module, "DestroyInstance", &destroy_) &&
        Find(module, "GetComponentVersion", &version_);
    if (!complete) {
        create_ = nullptr;
        return name + " lacks an entry point of a component.";
    }
    Registration registration;
    register_(&registration);
    name_ = registration.name_;
    identifier_ = registration.identifier_;
    if (name_.empty()) return name + " registered no component.";
    return {};
}

CString ComponentModule::Connect() {
    if (!create_ || component_) return "There is no component to connect.";
    void* interface = nullptr;
    if (Failed(create_(kInstanceKey)) || Failed(query_(kInstanceKey, &identifier_, &interface)) ||
        !interface) {
        destroy_(kInstanceKey);
        return name_ + " could not be created.";
    }
    auto* component = static_cast<IQComponent*>(interface);
    if (Failed(component->Initialize(&host_, kYes))) {
        destroy_(kInstanceKey);
        return name_ + " could not be started.";
    }
    component_ = component;
    host_.AddComponent(component_);
    host_.Broadcast(host::kEventDebuggerConnected);
    return {};
}

void ComponentModule::Disconnect() {
    if (!component_) return;
    // While the debugger is there, so that the windows keep their settings and leave the trace
    // service; still a component, for they may broadcast.
    component_->Terminate(kYes);
    host_.Broadcast(host::kEventDebuggerDisconnected);
    host_.RemoveComponent(component_);
    component_ = nullptr;
    destroy_(kInstanceKey);
}

std::optional<std::pair<int, int>> ComponentModule::Version() const {
    std::int32_t major = 0;
    std::int32_t minor = 0;
    if (!version_ || Failed(version_(&major, &minor))) return std::nullopt;
    return std::pair(major, minor);
}

}  // namespace kvx::hosting
