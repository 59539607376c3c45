#include "workbench/desktop/services/PropertyStore.h"

#include "workbench/desktop/QtText.h"

namespace kvx::desktop {
namespace {

QString NameOf(BSTR key) {
    return "Properties/" + FromBstr(key);
}

}  // namespace

HRESULT PropertyStore::SetNumber(BSTR key, std::int32_t value) {
    if (!key) return E_POINTER;
    return Guarded([&] {
        settings_.Set(NameOf(key), value);
        return S_OK;
    });
}

HRESULT PropertyStore::SetText(BSTR key, BSTR text) {
    if (!key) return E_POINTER;
    return Guarded([&] {
        settings_.Set(NameOf(key), FromBstr(text));
        return S_OK;
    });
}

HRESULT PropertyStore::GetNumber(BSTR key, std::int32_t* value) {
    if (!key || !value) return E_POINTER;
    return Guarded([&] {
        bool isNumber = false;
        const int number = settings_.Get(NameOf(key)).toInt(&isNumber);
        if (!isNumber) return E_FAIL;
        *value = number;
        return S_OK;
    });
}

HRESULT PropertyStore::GetText(BSTR key, BSTR* text) {
    if (!key || !text) return E_POINTER;
    return Guarded([&] {
        const QVariant value = settings_.Get(NameOf(key));
        if (!value.isValid()) return E_FAIL;
        *text = NewBstr(value.toString());
        return *text ? S_OK : E_OUTOFMEMORY;
    });
}

}  // namespace kvx::desktop
