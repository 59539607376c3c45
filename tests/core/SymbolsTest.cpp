// The window-free libraries hold no symbol of the toolkit.
#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>

#include "support/Needs.h"

namespace {

struct ClosePipe {
    void operator()(std::FILE* pipe) const { pclose(pipe); }
};

// "QString::", "QWidget(" and the like at the start of a name, or "qt_".
bool NamesToolkit(const char* line) {
    if (std::strstr(line, " qt_")) return true;
    for (const char* at = line; (at = std::strchr(at, 'Q')) != nullptr; ++at) {
        const bool starts = at == line || !(std::isalnum(at[-1]) || at[-1] == '_');
        if (starts && std::isupper(at[1]) && std::islower(at[2])) return true;
    }
    return false;
}

struct Symbols {
    int all = 0;
    int ofToolkit = 0;
};

Symbols SymbolsOf(const std::filesystem::path& library) {
    const std::string command = "nm -C '" + library.string() + "' 2>/dev/null";
    const std::unique_ptr<std::FILE, ClosePipe> pipe(popen(command.c_str(), "r"));
    Symbols symbols;
    char line[4096];
    while (pipe && std::fgets(line, sizeof(line), pipe.get())) {
        ++symbols.all;
        symbols.ofToolkit += NamesToolkit(line);
    }
    return symbols;
}

std::filesystem::path Library(const char* name) {
    const char* const bin = std::getenv("KVX_BIN_DIR");
    return std::filesystem::path(bin ? bin : ".") / ".." / "src" / name;
}

TEST(WindowFreeCore, HoldsNoToolkitSymbol) {
    for (const char* name : {"libkvx_platform.a", "libkvx_host.a", "libkvx_core.a"}) {
        const auto library = Library(name);
        ASSERT_TRUE(std::filesystem::exists(library)) << library;
        const Symbols symbols = SymbolsOf(library);
        EXPECT_EQ(symbols.ofToolkit, 0) << name;
        EXPECT_GT(symbols.all, 50) << name;
    }
}

// What the test above looks for is there to be seen in the back-end.
TEST(WindowFreeCore, BackEndHoldsToolkitSymbols) {
    const auto backEnd = Library("libkvx_platform_qt.a");
    if (!std::filesystem::exists(backEnd)) KVX_SKIP("the back-end is not built here");
    EXPECT_GT(SymbolsOf(backEnd).ofToolkit, 0);
}

}  // namespace
