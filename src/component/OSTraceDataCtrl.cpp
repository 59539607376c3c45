#include "component/OSTraceDataCtrl.h"

#include "component/OSTraceApp.h"
#include "framework/UpdateHints.h"
#include "platform/Backend.h"
#include "platform/base/Guarded.h"
#include "platform/base/Module.h"
#include "platform/base/WinApp.h"
#include "platform/dialogs/MessageBox.h"
#include "sink/OSTraceDataCommandSink.h"
#include "utils/Path.h"

using kvx::Guarded;

namespace {

constexpr char kResourceLibrary[] = "KvxOSTraceExtRes.dll";
constexpr std::size_t kLongestFileName = 260;

struct EventHint {
    GUID event;
    LPARAM hint;
};
constexpr EventHint kEventHints[] = {
    {kvx::host::kEventTargetConnected, kHintTargetConnected},
    {kvx::host::kEventTargetDisconnected, kHintTargetDisconnected},
    {kvx::host::kEventTraceReady, kHintTraceReady},
    {kvx::host::kEventTraceCleared, kHintTraceCleared},
    {kvx::host::kEventDisplayChanged, kHintDisplayChanged},
};

}  // namespace

CKvxOSTraceDataCtrl::~CKvxOSTraceDataCtrl() {
    if (host_) CKvxOSTraceDataCtrl::Terminate(-1);  // the host left the shut-down out
}

HRESULT CKvxOSTraceDataCtrl::QueryInterface(const GUID& id, void** out) {
    if (!out) return E_POINTER;
    if (id == kvx::host::kSteppingClient) {
        *out = static_cast<IQSteppingClient*>(this);
        return S_OK;
    }
    return CKvxDebugDataCtrl::QueryInterface(id, out);
}

HRESULT CKvxOSTraceDataCtrl::Notify(const EventRecord* record) {
    Guarded([&] {
        for (const EventHint& each : kEventHints) {
            if (record && traceSink_ && each.event == record->id) {
                traceSink_->UpdateWindows(each.hint, record->datum);
            }
        }
        CKvxDebugDataCtrl::Notify(record);
    });
    return S_OK;
}

HRESULT CKvxOSTraceDataCtrl::Initialize(IQHost* host, std::int16_t flag) {
    return Guarded([&] {
        if (flag == 0) return CKvxDebugDataCtrl::Initialize(host, flag);
        if (host_ && !host) return E_FAIL;
        if (host_) Terminate(flag);
        if (!LoadResources() || !CanShowWindows()) return E_FAIL;
        if (host) host->Advise(kvx::host::kSteppingClient, static_cast<IQSteppingClient*>(this));
        steppingHost_ = host;
        return CKvxDebugDataCtrl::Initialize(host, flag);
    });
}

// The toolkit is the host's: where it shows no windows there is nothing to start.
bool CKvxOSTraceDataCtrl::CanShowWindows() {
    if (kvx::InstalledBackend()) return true;
    AfxMessageBox(CString("OS Trace needs ") + kvx::WhatWindowsNeed() +
                  ": this process can show no windows.");
    return false;
}

bool CKvxOSTraceDataCtrl::LoadResources() {
    const HINSTANCE loaded = AfxGetResourceHandle();
    const CString file = loaded
                             ? GetModuleFileName(loaded)
                             : GetModuleFileNameOf(reinterpret_cast<const void*>(&GetOSTraceApp));
    if (file.empty() || file.size() > kLongestFileName) {
        MessageBox(nullptr,
                   "Cannot obtain module. File name missing.\nPlease read User Guide to "
                   "create/install a new version.",
                   "", MB_OK | MB_ICONERROR);
        AfxMessageBox("Application will now exit.");
        return false;
    }
    CString message;
    const CString path = kvx::JoinPath(kvx::DirectoryOf(file), kResourceLibrary);
    resources_ = CDllResource::Load(path, message);
    if (!resources_) AfxMessageBox(message);
    return resources_ != nullptr;
}

HRESULT CKvxOSTraceDataCtrl::Terminate(std::int16_t flag) {
    return Guarded([&] {
        if (flag == 0) return CKvxDebugDataCtrl::Terminate(flag);
        if (steppingHost_) {
            steppingHost_->Unadvise(kvx::host::kSteppingClient,
                                    static_cast<IQSteppingClient*>(this));
            steppingHost_ = nullptr;
        }
        resources_.reset();
        return CKvxDebugDataCtrl::Terminate(flag);
    });
}

bool CKvxOSTraceDataCtrl::CreateCommandSink() {
    if (!docking_) docking_ = std::make_unique<CDockingManager>();
    docking_->SetHost(host_);
    auto sink = std::make_unique<CKvxOSTraceDataCommandSink>(host_, docking_.get());
    traceSink_ = sink.get();
    sink_ = std::move(sink);
    return traceSink_->Create(WS_CHILD, RECT{}, AfxGetMainWnd(), 1);
}

void CKvxOSTraceDataCtrl::DestroyCommandSink() {
    CKvxDebugDataCtrl::DestroyCommandSink();
    traceSink_ = nullptr;
}
