#pragma once
// A component module, known through its five entry points alone, and the one component object that
// the Workbench makes of it.

#include <optional>

#include "workbench/desktop/services/HostObject.h"
#include "workbench/desktop/services/LoadedModule.h"

namespace kvx::desktop {

class ComponentModule {
  public:
    // host must outlive the module.
    explicit ComponentModule(HostObject& host) : host_(host) {}
    // Disconnects.
    ~ComponentModule() { Disconnect(); }
    ComponentModule(const ComponentModule&) = delete;
    ComponentModule& operator=(const ComponentModule&) = delete;

    // Loads the module and lets it register. A text that says what failed, or an empty one.
    QString Load(const QString& directory, const char* name);
    // Makes the component object, starts it up and reports the debugger as connected.
    QString Connect();
    // The way back; does nothing when not connected.
    void Disconnect();

    // Registered by the component: its name.
    const QString& Name() const { return name_; }
    std::optional<std::pair<int, int>> Version() const;
    bool IsConnected() const { return component_ != nullptr; }

  private:
    HostObject& host_;
    LibraryRegister2Fn register_ = nullptr;
    QueryInterface2Fn query_ = nullptr;
    CreateInstanceFn create_ = nullptr;
    DestroyInstanceFn destroy_ = nullptr;
    GetComponentVersionFn version_ = nullptr;
    QString name_;
    GUID identifier_;
    IQComponent* component_ = nullptr;
};

}  // namespace kvx::desktop
