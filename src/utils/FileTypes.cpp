#include "utils/FileTypes.h"

#include <algorithm>
#include <array>
#include <fstream>

#include "host/DebuggerFunctions.h"
#include "host/ModuleHost.h"
#include "utils/Path.h"
#include "utils/Profile.h"

namespace kvx {
namespace {

CString TablePath() {
    IQHost* const host = host::ModuleHost();
    return JoinPath(host::GetDebuggerDirectory(host), host::GetDebuggerBaseName(host) + ".fef");
}

bool HoldsZeroByte(const CString& path) {
    std::ifstream in(path, std::ios::binary);
    std::array<char, 1000> block{};
    while (in.read(block.data(), block.size()) || in.gcount() > 0) {
        const auto end = block.begin() + in.gcount();
        if (std::find(block.begin(), end, '\0') != end) return true;
    }
    return false;
}

}  // namespace

CString WindowNameOfFile(const CString& path) {
    static CString table;
    const CString extension = ExtensionOf(path);
    if (extension.empty()) return {};
    if (table.empty()) table = TablePath();
    if (!AfxIsFileExist(table)) {
        table.clear();
        return {};
    }
    const CString name = AfxGetProfileString(table, extension, "WindowName", "");
    const bool text = AfxGetProfileInt(table, extension, "IsText", 0) == 1;
    return text && HoldsZeroByte(path) ? CString() : name;
}

}  // namespace kvx
