// The command sink as workspace client: which windows are open, under which names, with which
// colours and settings.

#include <algorithm>

#include "framework/HostWorkspaceStore.h"
#include "platform/base/Guarded.h"
#include "platform/base/Resources.h"
#include "sink/OSTraceDataCommandSink.h"

using kvx::Bstr;
using kvx::Guarded;
using kvx::host::Service;

namespace {

constexpr char kControl[] = "OSTraceCtrl";
constexpr char kInstanceKey[] = "InstanceKey";
constexpr char kColorPrefix[] = "OSTraceWnd";

CString Numbered(const CString& prefix, std::size_t i) {
    return prefix + std::to_string(i);
}

}  // namespace

HRESULT CKvxOSTraceDataCommandSink::WorkspaceOpened(std::uintptr_t a, std::uintptr_t b,
                                                    BSTR workspace, std::uintptr_t d) {
    return Guarded([&] {
        auto* const naming = Service<IQNamingService>(Host(), kvx::host::kNamingService);
        if (!naming) return E_FAIL;
        Bstr longName;
        Bstr shortName;
        naming->GetLongName(a, b, d, longName.Receive());
        naming->GetShortName(a, b, shortName.Receive());
        for (WindowKind* kind : {&traceKind_, &analyzeKind_}) {
            kind->baseName = kind->plainName + longName.Utf8() + shortName.Utf8();
        }
        workspace_ = kvx::ToUtf8(workspace);
        if (!Service<IQUnknown>(Host(), kvx::host::kWorkspaceStore)) return S_OK;
        ForgetLostWindows();
        CWorkspaceStore store(Host(), {a, b, workspace, d, {}});
        for (WindowKind* kind : {&traceKind_, &analyzeKind_}) Restore(*kind, store);
        modified_ = false;
        return S_OK;
    });
}

// Windows beyond those that are open already come back under their names.
void CKvxOSTraceDataCommandSink::Restore(WindowKind& kind, IWorkspaceStore& store) {
    data_.colors.Load(store, kColorPrefix);
    const std::int32_t count =
        std::min(store.ReadNumber(kControl + kind.countKey, 0), kMostWindows);
    for (auto i = static_cast<std::int32_t>(kind.controls.size()); i < count; ++i) {
        const CString key = Numbered(kind.settingsPrefix + kInstanceKey, std::size_t(i));
        const CString name = store.ReadText(key, "");
        if (name.empty()) {
            Open(kind);
        } else {
            Reopen(kind, name);
        }
    }
    for (std::size_t i = 0; i < kind.controls.size(); ++i) {
        kind.controls[i]->LoadSettings(store, Numbered(kind.settingsPrefix, i));
    }
}

// The docking window keeps whatever state the host gives it.
void CKvxOSTraceDataCommandSink::Reopen(WindowKind& kind, const CString& name) {
    if (!Docking()) return;
    CString given;
    const HWND docking = Docking()->CreateDockingWindow(name, LoadString(kind.titleString),
                                                        kDockCreateFlags, kDockBottom, &given);
    if (docking) FillDocking(kind, docking, name);
}

HRESULT CKvxOSTraceDataCommandSink::WorkspaceSaving(std::uintptr_t a, std::uintptr_t b,
                                                    std::uintptr_t d) {
    return Guarded([&] {
        if (!Service<IQUnknown>(Host(), kvx::host::kProjectInformation) ||
            !Service<IQUnknown>(Host(), kvx::host::kWorkspaceStore)) {
            return S_OK;
        }
        ForgetLostWindows();
        const Bstr workspace(workspace_);
        CWorkspaceStore store(Host(), {a, b, workspace.Get(), d, {}});
        for (const WindowKind* kind : {&traceKind_, &analyzeKind_}) Save(*kind, store);
        modified_ = false;
        return S_OK;
    });
}

void CKvxOSTraceDataCommandSink::Save(const WindowKind& kind, IWorkspaceStore& store) const {
    data_.colors.Save(store, kColorPrefix);
    store.WriteNumber(kControl + kind.countKey, static_cast<std::int32_t>(kind.controls.size()));
    for (std::size_t i = 0; i < kind.controls.size(); ++i) {
        kind.controls[i]->SaveSettings(store, Numbered(kind.settingsPrefix, i));
        const auto name = nameOfControl_.find(kind.controls[i]);
        if (name == nameOfControl_.end()) continue;
        store.WriteText(Numbered(kind.settingsPrefix + kInstanceKey, i), name->second);
    }
}

HRESULT CKvxOSTraceDataCommandSink::QueryModified(std::uintptr_t, std::uintptr_t, std::uintptr_t,
                                                  std::int32_t* modified) {
    if (!modified) return E_POINTER;
    return Guarded([&] {
        bool any = modified_;
        ForEachWindow([&](CKvxDebugInstanceDataCtrl& control) {
            any = any || control.AreSettingsModified();
        });
        *modified = any ? 1 : 0;
        return S_OK;
    });
}
