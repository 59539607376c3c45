#include "workbench/desktop/services/TextsStore.h"

#include "workbench/desktop/QtText.h"

namespace kvx::desktop {
namespace {

bool IsUsersOwn(const WorkspaceKey& where) {
    return where.a == 0 && where.b == 0 && where.d == 0 && SysStringLen(where.workspace) == 0;
}

QString SettingOf(const WorkspaceKey& where, BSTR key) {
    return (IsUsersOwn(where) ? "View/" : "Workspace/") + FromBstr(key);
}

}  // namespace

HRESULT TextsStore::WriteText(const WorkspaceKey* where, BSTR key, BSTR text) {
    if (!where || !key) return E_POINTER;
    return Guarded([&] {
        if (texts_ && !IsUsersOwn(*where)) {
            texts_->insert_or_assign(FromBstr(key), FromBstr(text));
        } else {
            settings_.Set(SettingOf(*where, key), FromBstr(text));
        }
        return S_OK;
    });
}

HRESULT TextsStore::ReadText(const WorkspaceKey* where, BSTR key, BSTR* text) {
    if (!where || !key || !text) return E_POINTER;
    return Guarded([&] {
        if (texts_ && !IsUsersOwn(*where)) {
            const auto found = texts_->find(FromBstr(key));
            if (found == texts_->end()) return E_FAIL;
            *text = NewBstr(found->second);
        } else {
            const QVariant value = settings_.Get(SettingOf(*where, key));
            if (!value.isValid()) return E_FAIL;
            *text = NewBstr(value.toString());
        }
        return *text ? S_OK : E_OUTOFMEMORY;
    });
}

}  // namespace kvx::desktop
