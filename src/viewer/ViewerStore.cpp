#include "viewer/ViewerStore.h"

#include <charconv>
#include <filesystem>
#include <optional>

#include "platform/os/Environment.h"
#include "utils/Profile.h"

namespace kvx::viewer {
namespace {

constexpr const char* kTexts = "Texts";
constexpr const char* kProperties = "Properties";
// Tells a text that is not there from an empty one.
constexpr const char* kMark = "=";

HRESULT Write(const CString& file, const char* section, BSTR key, const CString& text) {
    if (!key) return E_POINTER;
    return Guarded([&] {
        if (file.empty()) return E_FAIL;
        return AfxWriteProfileString(file, section, ToUtf8(key), kMark + text) ? S_OK : E_FAIL;
    });
}

std::optional<CString> Read(const CString& file, const char* section, BSTR key) {
    const CString text = AfxGetProfileString(file, section, ToUtf8(key), {});
    if (!text.starts_with(kMark)) return std::nullopt;
    return text.substr(1);
}

HRESULT Give(const std::optional<CString>& text, BSTR* out) {
    if (!text) return E_FAIL;
    *out = ToBstr(*text);
    return *out ? S_OK : E_OUTOFMEMORY;
}

}  // namespace

CString UsersProfile() {
    const CString folder = os::UserDataFolder();
    if (folder.empty()) return {};
    const std::filesystem::path own = std::filesystem::path(folder) / "kvxostrace";
    std::error_code error;
    std::filesystem::create_directories(own, error);
    return error ? CString() : (own / "kvxview.ini").string();
}

HRESULT ViewerTexts::WriteText(const WorkspaceKey* where, BSTR key, BSTR text) {
    if (!where) return E_POINTER;
    return Write(file_, kTexts, key, ToUtf8(text));
}

HRESULT ViewerTexts::ReadText(const WorkspaceKey* where, BSTR key, BSTR* text) {
    if (!where || !key || !text) return E_POINTER;
    return Guarded([&] { return Give(Read(file_, kTexts, key), text); });
}

HRESULT ViewerProperties::SetNumber(BSTR key, std::int32_t value) {
    return Write(file_, kProperties, key, std::to_string(value));
}

HRESULT ViewerProperties::SetText(BSTR key, BSTR text) {
    return Write(file_, kProperties, key, ToUtf8(text));
}

HRESULT ViewerProperties::GetNumber(BSTR key, std::int32_t* value) {
    if (!key || !value) return E_POINTER;
    return Guarded([&] {
        const auto text = Read(file_, kProperties, key);
        std::int32_t number = 0;
        if (!text) return E_FAIL;
        const char* const end = text->data() + text->size();
        const auto [stop, error] = std::from_chars(text->data(), end, number);
        if (error != std::errc{} || stop != end) return E_FAIL;
        *value = number;
        return S_OK;
    });
}

HRESULT ViewerProperties::GetText(BSTR key, BSTR* text) {
    if (!key || !text) return E_POINTER;
    return Guarded([&] { return Give(Read(file_, kProperties, key), text); });
}

}  // namespace kvx::viewer
