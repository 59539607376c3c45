#include "workbench/desktop/WorkspaceStore.h"

#include "workbench/desktop/QtText.h"

namespace kvx::desktop {
namespace {

bool IsUsersOwn(const WorkspaceKey& where) {
    return where.a == 0 && where.b == 0 && where.d == 0 && SysStringLen(where.workspace) == 0;
}

QString NameOf(BSTR key) {
    return "View/" + FromBstr(key);
}

}  // namespace

HRESULT WorkspaceStore::WriteText(const WorkspaceKey* where, BSTR key, BSTR text) {
    if (!where || !key) return E_POINTER;
    if (!IsUsersOwn(*where)) return E_FAIL;
    return Guarded([&] {
        settings_.Set(NameOf(key), FromBstr(text));
        return S_OK;
    });
}

HRESULT WorkspaceStore::ReadText(const WorkspaceKey* where, BSTR key, BSTR* text) {
    if (!where || !key || !text) return E_POINTER;
    if (!IsUsersOwn(*where)) return E_FAIL;
    return Guarded([&] {
        const QVariant value = settings_.Get(NameOf(key));
        if (!value.isValid()) return E_FAIL;
        *text = NewBstr(value.toString());
        return *text ? S_OK : E_OUTOFMEMORY;
    });
}

}  // namespace kvx::desktop
