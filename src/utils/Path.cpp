#include "utils/Path.h"

#include <filesystem>

#include "platform/base/Module.h"
#include "platform/base/Text.h"
#include "platform/windows/Menu.h"

namespace kvx {

CString DirectoryOf(const CString& path) {
    const CString directory = std::filesystem::path(path).parent_path().string();
    return directory.empty() ? "." : directory;
}

CString FileNameOf(const CString& path) {
    return std::filesystem::path(path).filename().string();
}

CString ExtensionOf(const CString& path) {
    const auto dot = path.rfind('.');
    return dot == CString::npos ? path : path.substr(dot + 1);
}

CString JoinPath(const CString& directory, const CString& name) {
    return (std::filesystem::path(directory) / name).string();
}

}  // namespace kvx

bool AfxIsFileExist(const CString& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

CString AfxGetModuleDirectory() {
    const CString file = GetModuleFileNameOf(reinterpret_cast<const void*>(&AfxGetModuleDirectory));
    return file.empty() ? CString() : kvx::DirectoryOf(file);
}

CMenu* AfxFindSubMenu(CMenu* menu, const CString& text) {
    if (!menu) return nullptr;
    for (int i = 0; i < menu->GetMenuItemCount(); ++i) {
        CString item;
        menu->GetMenuString(static_cast<UINT>(i), item, MF_BYPOSITION);
        if (item == text && menu->GetSubMenu(i)) return menu->GetSubMenu(i);
    }
    return nullptr;
}

CString AfxMakeShortString(const CString& text, std::size_t characters) {
    constexpr std::string_view kDots = "...";
    if (kvx::Utf8Prefix(text, characters).size() == text.size()) return text;
    if (characters <= kDots.size()) return CString(kDots.substr(0, characters));
    return CString(kvx::Utf8Prefix(text, characters - kDots.size())) + CString(kDots);
}
