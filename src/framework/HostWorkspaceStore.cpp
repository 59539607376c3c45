#include "framework/HostWorkspaceStore.h"

#include "host/Identifiers.h"

using kvx::Bstr;

CWorkspaceStore::CWorkspaceStore(IQHost* host) : CWorkspaceStore(host, WorkspaceKey{}) {}

CWorkspaceStore::CWorkspaceStore(IQHost* host, const WorkspaceKey& key)
    : service_(kvx::host::Service<IQWorkspaceStoreService>(host, kvx::host::kWorkspaceStore)),
      where_(key) {
    where_.owner = kvx::host::kFrameworkOwner;
}

void CWorkspaceStore::WriteText(const CString& key, const CString& text) {
    if (service_) service_->WriteText(&where_, Bstr(key).Get(), Bstr(text).Get());
}

CString CWorkspaceStore::ReadText(const CString& key, const CString& fallback) {
    Bstr text;
    if (!service_ || Failed(service_->ReadText(&where_, Bstr(key).Get(), text.Receive()))) {
        return fallback;
    }
    return text.Utf8();
}
