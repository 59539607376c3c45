#include "framework/DataCtrl.h"

#include "host/DebuggerFunctions.h"
#include "host/Identifiers.h"
#include "host/ModuleHost.h"
#include "platform/base/Guarded.h"
#include "platform/base/SystemInfo.h"
#include "platform/base/Text.h"
#include "platform/dialogs/MessageBox.h"
#include "utils/ErrorMessage.h"

using kvx::Guarded;
using kvx::host::Service;

namespace {

void ReportMissingFunction(const char* name) {
    MessageBeep(MB_OK);
    MessageBox(nullptr, kvx::FormatText("Can not get the address of the function %s.", name),
               "Error", MB_OK);
}

}  // namespace

CKvxDataCtrl::~CKvxDataCtrl() = default;

HRESULT CKvxDataCtrl::QueryInterface(const GUID& id, void** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (id == IID_IUnknown || id == kvx::host::kRegistryClient) {
        *out = static_cast<IQRegistryClient*>(this);
    }
    if (id == kvx::host::kComponentInterface || id == kvx::host::kComponent) {
        *out = static_cast<IQComponent*>(this);
    }
    if (id == kvx::host::kErrorReporter) *out = static_cast<IQErrorReporter*>(this);
    return *out ? S_OK : E_NOINTERFACE;
}

// The framework's part of an event: the sink learns of the debugger.
HRESULT CKvxDataCtrl::Notify(const EventRecord* record) {
    if (!sink_ || !record) return S_OK;
    if (record->id == kvx::host::kEventDebuggerConnected) sink_->OnDebuggerConnected();
    if (record->id == kvx::host::kEventDebuggerDisconnected) sink_->OnDebuggerDisconnected();
    return S_OK;
}

HRESULT CKvxDataCtrl::Initialize(IQHost* host, std::int16_t flag) {
    if (!host) return E_FAIL;
    if (flag == 0) return S_OK;
    host_ = host;
    hostFrame_ = QueryHostFrame(host);
    errorService_ = Service<IQErrorService>(host, kvx::host::kErrorService);
    frameworkService_ = Service<IQUnknown>(host, kvx::host::kFrameworkA);
    CreateCommandSink();
    return S_OK;
}

HRESULT CKvxDataCtrl::Terminate(std::int16_t flag) {
    if (!host_) return E_FAIL;
    if (flag == 0) return S_OK;
    DestroyCommandSink();
    host_ = nullptr;
    hostFrame_ = nullptr;
    errorService_ = nullptr;
    frameworkService_ = nullptr;
    return S_OK;
}

HRESULT CKvxDataCtrl::ReportError(std::uintptr_t a, std::uintptr_t b) {
    return Guarded([&] { return errorService_ ? errorService_->ReportError(a, b) : E_FAIL; });
}

void CKvxDataCtrl::DestroyCommandSink() {
    if (!sink_) return;
    sink_->CloseAllInstances();
    sink_->DestroyWindow();
    sink_.reset();
}

HRESULT CKvxDebugDataCtrl::Notify(const EventRecord* record) {
    if (!host_ || !record) return S_OK;
    if (record->id == kvx::host::kEventDebuggerConnected) {
        kvx::host::ResolveDebuggerFunctions(host_, &ReportMissingFunction);
    }
    if (record->id == kvx::host::kEventDebuggerDisconnected) {
        kvx::host::ClearDebuggerFunctions(host_);
    }
    return CKvxDataCtrl::Notify(record);
}

HRESULT CKvxDebugDataCtrl::Initialize(IQHost* host, std::int16_t flag) {
    if (host && flag != 0) {
        Fill(host);
        OpenErrorRecord(host);
    }
    return CKvxDataCtrl::Initialize(host, flag);
}

HRESULT CKvxDebugDataCtrl::Terminate(std::int16_t flag) {
    IQHost* const host = host_;
    const HRESULT status = CKvxDataCtrl::Terminate(flag);
    if (flag == 0) return status;
    ClearInterfaces();
    if (!host || CloseErrorRecord(host)) return status;
    // What is kept of a host's debugger goes with the last object that is connected to it.
    kvx::host::ClearDebuggerFunctions(host);
    if (kvx::host::ModuleHost() == host) kvx::host::SetModuleHost(nullptr);
    return status;
}
