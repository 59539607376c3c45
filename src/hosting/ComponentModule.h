#pragma once
// A component module, known through its five entry points alone, and the one component object that
// a host makes of it.

#include <optional>

#include "hosting/HostObject.h"
#include "platform/base/Types.h"

namespace kvx::hosting {

class ComponentModule {
  public:
    // host must outlive the module.
    explicit ComponentModule(HostObject& host) : host_(host) {}
    // Disconnects.
    ~ComponentModule() { Disconnect(); }
    ComponentModule(const ComponentModule&) = delete;
    ComponentModule& operator=(const ComponentModule&) = delete;

    // Loads the module and lets it register. A text that says what failed, or an empty one.
    // It stays loaded until the program ends: the toolkit keeps references to what modules
    // registered with it.
    CString Load(const CString& directory, const CString& name);
    // Makes the component object, starts it up and reports the debugger as connected.
    CString Connect();
    // The way back; does nothing when not connected.
    void Disconnect();

    // Registered by the component: its name.
    const CString& Name() const { return name_; }
    std::optional<std::pair<int, int>> Version() const;
    bool IsConnected() const { return component_ != nullptr; }

  private:
    HostObject& host_;
    LibraryRegister2Fn register_ = nullptr;
    QueryInterface2Fn query_ = nullptr;
    CreateInstanceFn create_ = nullptr;
    DestroyInstanceFn destroy_ = nullptr;
    GetComponentVersionFn version_ = nullptr;
    CString name_;
    GUID identifier_;
    IQComponent* component_ = nullptr;
};

}  // namespace kvx::hosting
