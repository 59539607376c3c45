#pragma once
// Interfaces of the component object, and the types of the five entry points.

#include "host/Host.h"

class IQRegistryClient : public IQUnknown {
  public:
    virtual HRESULT KVX_CALL RegistryChanged(std::uintptr_t argument) = 0;

  protected:
    ~IQRegistryClient() = default;
};

class IQComponent : public IQUnknown {
  public:
    virtual HRESULT KVX_CALL Notify(const EventRecord* record) = 0;
    // flag not zero: start-up. E_FAIL when it fails; the object can then only be destroyed.
    virtual HRESULT KVX_CALL Initialize(IQHost* host, std::int16_t flag) = 0;
    virtual HRESULT KVX_CALL Reserved3() = 0;
    virtual HRESULT KVX_CALL Reserved4() = 0;
    virtual HRESULT KVX_CALL Terminate(std::int16_t flag) = 0;

  protected:
    ~IQComponent() = default;
};

class IQErrorReporter : public IQUnknown {
  public:
    virtual HRESULT KVX_CALL ReportError(std::uintptr_t a, std::uintptr_t b) = 0;

  protected:
    ~IQErrorReporter() = default;
};

// Called by the host around stepping of the target program.
class IQSteppingClient : public IQUnknown {
  public:
    virtual HRESULT KVX_CALL StepBegin(std::uint32_t count, std::int32_t reason) = 0;
    virtual HRESULT KVX_CALL StepDone() = 0;
    virtual HRESULT KVX_CALL StepEnd() = 0;

  protected:
    ~IQSteppingClient() = default;
};

// Entry points; a module exports them under these names, and as ordinals counted from 1.
extern "C" {
using LibraryRegister2Fn = HRESULT(KVX_CALL*)(IQLibraryRegistration* registry);
using QueryInterface2Fn = HRESULT(KVX_CALL*)(std::uintptr_t key, const GUID* riid, void** ppv);
using CreateInstanceFn = HRESULT(KVX_CALL*)(std::uintptr_t key);
using DestroyInstanceFn = HRESULT(KVX_CALL*)(std::uintptr_t key);
using GetComponentVersionFn = HRESULT(KVX_CALL*)(std::int32_t* major, std::int32_t* minor);
}
