#pragma once
// Bases of the component object: interfaces for the host, the host itself, and the command sink.

#include <memory>

#include "framework/CommandSink.h"
#include "host/Component.h"
#include "host/DebugInterfaces.h"
#include "host/NoRefCount.h"

class CKvxDataCtrl : public kvx::host::NoRefCount<IQRegistryClient>,
                     public kvx::host::NoRefCount<IQComponent>,
                     public kvx::host::NoRefCount<IQErrorReporter> {
  public:
    CKvxDataCtrl() = default;
    CKvxDataCtrl(const CKvxDataCtrl&) = delete;
    CKvxDataCtrl& operator=(const CKvxDataCtrl&) = delete;

    HRESULT KVX_CALL RegistryChanged(std::uintptr_t) override { return S_OK; }
    virtual ~CKvxDataCtrl();

    HRESULT KVX_CALL QueryInterface(const GUID& id, void** out) override;
    HRESULT KVX_CALL Notify(const EventRecord* record) override;
    HRESULT KVX_CALL Initialize(IQHost* host, std::int16_t flag) override;
    HRESULT KVX_CALL Reserved3() override { return S_OK; }
    HRESULT KVX_CALL Reserved4() override { return S_OK; }
    HRESULT KVX_CALL Terminate(std::int16_t flag) override;
    // Passes both arguments to the host's error service and its answer back.
    HRESULT KVX_CALL ReportError(std::uintptr_t a, std::uintptr_t b) override;

  protected:
    virtual bool CreateCommandSink() = 0;
    virtual void DestroyCommandSink();

    IQHost* host_ = nullptr;  // null until start-up
    IQUnknown* hostFrame_ = nullptr;
    IQErrorService* errorService_ = nullptr;
    IQUnknown* frameworkService_ = nullptr;
    std::unique_ptr<CUiCommandSink> sink_;  // null while not connected
};

// Adds the debugger-side services.
class CKvxDebugDataCtrl : public CKvxDataCtrl, public CDebugInterfaces {
  public:
    HRESULT KVX_CALL Notify(const EventRecord* record) override;
    HRESULT KVX_CALL Initialize(IQHost* host, std::int16_t flag) override;
    HRESULT KVX_CALL Terminate(std::int16_t flag) override;
};
