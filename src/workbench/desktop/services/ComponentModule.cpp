#include "workbench/desktop/services/ComponentModule.h"

#include "host/Identifiers.h"
#include "workbench/desktop/QtText.h"

namespace kvx::desktop {
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
        name_ = FromBstr(name);
        identifier_ = *component;
        return S_OK;
    }
    QString name_;
    GUID identifier_;
};

template <class Function>
bool Find(void* module, const char* name, Function* function) {
    *function = reinterpret_cast<Function>(FindSymbol(module, name));
    return *function != nullptr;
}

}  // namespace

QString ComponentModule::Load(const QString& directory, const char* name) {
    const LoadedModule module = LoadModule(directory, name);
    if (!module.handle) return module.error;
    const bool complete = Find(module.handle, "LibraryRegister2", &register_) &&
                          Find(module.handle, "QueryInterface2", &query_) &&
                          Find(module.handle, "CreateInstance", &create_) &&
                          Find(module.handle, "DestroyInstance", &destroy_) &&
                          Find(module.handle, "GetComponentVersion", &version_);
    if (!complete) {
        create_ = nullptr;
        return QStringLiteral("%1 lacks an entry point of a component.").arg(name);
    }
    Registration registration;
    register_(&registration);
    name_ = registration.name_;
    identifier_ = registration.identifier_;
    if (name_.isEmpty()) return QStringLiteral("%1 registered no component.").arg(name);
    return {};
}

QString ComponentModule::Connect() {
    if (!create_ || component_) return QStringLiteral("There is no component to connect.");
    void* interface = nullptr;
    if (Failed(create_(kInstanceKey)) || Failed(query_(kInstanceKey, &identifier_, &interface)) ||
        !interface) {
        destroy_(kInstanceKey);
        return QStringLiteral("%1 could not be created.").arg(name_);
    }
    auto* component = static_cast<IQComponent*>(interface);
    if (Failed(component->Initialize(&host_, kYes))) {
        destroy_(kInstanceKey);
        return QStringLiteral("%1 could not be started.").arg(name_);
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

}  // namespace kvx::desktop
