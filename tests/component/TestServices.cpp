#include "component/TestServices.h"

#include <gtest/gtest.h>

#include "component/TestHost.h"
#include "platform/base/Text.h"

namespace kvx::test {

HRESULT TestDebuggerLibrary::GetDirectory(BSTR* directory) {
    *directory = ToBstr(BinDirectory());
    return S_OK;
}

HRESULT TestDebuggerLibrary::GetBaseName(BSTR* name) {
    *name = ToBstr("test");
    return S_OK;
}

std::map<std::string, std::string>& TestStore::Of(const WorkspaceKey& key) {
    EXPECT_EQ(key.owner, host::kFrameworkOwner);
    return key.a || key.b || key.workspace || key.d ? texts : own;
}

HRESULT TestStore::WriteText(const WorkspaceKey* key, BSTR name, BSTR text) {
    if (failing) return E_FAIL;
    Of(*key)[ToUtf8(name)] = ToUtf8(text);
    where = FormatText("%d %d %s %d", int(key->a), int(key->b), ToUtf8(key->workspace).c_str(),
                       int(key->d));
    return S_OK;
}

HRESULT TestStore::ReadText(const WorkspaceKey* key, BSTR name, BSTR* text) {
    const auto& from = Of(*key);
    const auto found = from.find(ToUtf8(name));
    if (failing || found == from.end()) return E_FAIL;
    *text = ToBstr(found->second);
    return S_OK;
}

HRESULT TestProperties::SetNumber(BSTR key, std::int32_t value) {
    asked.push_back(ToUtf8(key));
    if (failing) return E_FAIL;
    numbers[ToUtf8(key)] = value;
    return S_OK;
}

HRESULT TestProperties::SetText(BSTR key, BSTR text) {
    asked.push_back(ToUtf8(key));
    if (failing) return E_FAIL;
    texts[ToUtf8(key)] = ToUtf8(text);
    return S_OK;
}

HRESULT TestProperties::GetNumber(BSTR key, std::int32_t* value) {
    asked.push_back(ToUtf8(key));
    const auto found = numbers.find(ToUtf8(key));
    *value = failing ? -7 : *value;
    if (failing || found == numbers.end()) return E_FAIL;
    *value = found->second;
    return S_OK;
}

HRESULT TestProperties::GetText(BSTR key, BSTR* text) {
    asked.push_back(ToUtf8(key));
    const auto found = texts.find(ToUtf8(key));
    if (failing) *text = ToBstr("No such face");
    if (failing || found == texts.end()) return E_FAIL;
    *text = ToBstr(found->second);
    return S_OK;
}

HRESULT TestNaming::GetLongName(std::uintptr_t, std::uintptr_t, std::uintptr_t, BSTR* name) {
    if (failing) return E_FAIL;
    *name = ToBstr("_long");
    return S_OK;
}

HRESULT TestNaming::GetShortName(std::uintptr_t, std::uintptr_t, BSTR* name) {
    if (failing) return E_FAIL;
    *name = ToBstr("_short");
    return S_OK;
}

}  // namespace kvx::test
