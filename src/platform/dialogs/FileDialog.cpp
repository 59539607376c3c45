#include "platform/dialogs/FileDialog.h"

#include <filesystem>
#include <string_view>

#include "platform/Backend.h"
#include "platform/base/WinApp.h"
#include "platform/dialogs/MessageBox.h"
#include "platform/windows/WindowState.h"

namespace fs = std::filesystem;

namespace {

// "Label|patterns|Label|patterns||".
std::vector<FileFilter> ParseFilter(std::string_view text) {
    std::vector<FileFilter> filters;
    std::vector<CString> parts;
    while (!text.empty()) {
        const auto bar = text.find('|');
        if (bar == 0) break;
        parts.emplace_back(text.substr(0, bar));
        text = bar == std::string_view::npos ? std::string_view{} : text.substr(bar + 1);
    }
    for (std::size_t i = 0; i + 1 < parts.size(); i += 2)
        filters.push_back({parts[i], parts[i + 1]});
    return filters;
}

bool Exists(const fs::path& path) {
    std::error_code ignored;
    return fs::exists(path, ignored);
}

}  // namespace

CFileDialog::CFileDialog(bool open, const CString& defaultExtension, const CString& fileName,
                         DWORD flags, const CString& filter, CWnd* parent)
    : defaultExtension_(defaultExtension), flags_(flags), parent_(parent) {
    request_.open = open;
    request_.title = open ? "Open" : "Save As";
    request_.filters = ParseFilter(filter);
    CString name = fileName;
    for (char& c : name)
        if (c == '\\') c = '/';
    const fs::path path(name);
    request_.directory = path.parent_path().string();
    request_.name = path.filename().string();
    // A pattern names the directory and what to list, not the file.
    if (request_.name.find_first_of("*?") != CString::npos) request_.name.clear();
}

int CFileDialog::DoModal() {
    kvx::EndCapture();
    const CWnd* const owner = parent_ ? parent_ : AfxGetMainWnd();
    request_.owner = owner ? owner->GetSafeHwnd() : nullptr;
    while (true) {
        CString path = kvx::Backend().Dialogs().File(request_);
        if (path.empty()) return IDCANCEL;
        if (Accept(path)) {
            path_ = path;
            return IDOK;
        }
        request_.directory = fs::path(path).parent_path().string();
        request_.name = fs::path(path).filename().string();
    }
}

// Completes the path; false, with a message, when it may not be taken.
bool CFileDialog::Accept(CString& path) const {
    fs::path file(path);
    if (!defaultExtension_.empty() && !file.has_extension() && !Exists(file))
        file.replace_extension(defaultExtension_);
    path = file.string();
    const auto refuse = [this](const CString& text) {
        ::MessageBox(request_.owner, text, request_.title, MB_OK | MB_ICONEXCLAMATION);
        return false;
    };
    if ((flags_ & OFN_PATHMUSTEXIST) && file.has_parent_path() && !Exists(file.parent_path()))
        return refuse("The folder " + file.parent_path().string() + " does not exist.");
    if (request_.open)
        return !(flags_ & OFN_FILEMUSTEXIST) || Exists(file) ||
               refuse("The file " + path + " does not exist.");
    if (!(flags_ & OFN_OVERWRITEPROMPT) || !Exists(file)) return true;
    return ::MessageBox(request_.owner, path + " already exists.\nDo you want to replace it?",
                        request_.title, MB_YESNO | MB_ICONEXCLAMATION | MB_DEFBUTTON2) == IDYES;
}
