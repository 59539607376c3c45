// The window-free libraries hold no symbol of the toolkit.
#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>

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

// Of a library or an object file.
Symbols SymbolsOf(const std::filesystem::path& file) {
    const std::string command = "nm -C '" + file.string() + "' 2>/dev/null";
    const std::unique_ptr<std::FILE, ClosePipe> pipe(popen(command.c_str(), "r"));
    Symbols symbols;
    char line[4096];
    while (pipe && std::fgets(line, sizeof(line), pipe.get())) {
        ++symbols.all;
        symbols.ofToolkit += NamesToolkit(line);
    }
    return symbols;
}

std::filesystem::path Built(const char* name) {
    const char* const bin = std::getenv("KVX_BIN_DIR");
    return std::filesystem::path(bin ? bin : ".") / ".." / "src" / name;
}

// The platform layer is one library with its back-end, so its rooms are looked at one by one.
Symbols SymbolsOfRoom(const std::string& room) {
    Symbols symbols;
    const auto folder = Built("platform/CMakeFiles/KvxPlatform.dir") / room;
    if (!std::filesystem::exists(folder)) return symbols;
    for (const auto& object : std::filesystem::directory_iterator(folder)) {
        const Symbols more = SymbolsOf(object.path());
        symbols.all += more.all;
        symbols.ofToolkit += more.ofToolkit;
    }
    return symbols;
}

TEST(WindowFreeCore, HoldsNoToolkitSymbol) {
    for (const char* name : {"libkvx_host.a", "libkvx_core.a"}) {
        const Symbols symbols = SymbolsOf(Built(name));
        EXPECT_EQ(symbols.ofToolkit, 0) << name;
        EXPECT_GT(symbols.all, 50) << name;
    }
}

TEST(PlatformLayer, HoldsToolkitSymbolsInItsBackEndOnly) {
    for (const char* room : {"base", "windows", "controls", "drawing", "dialogs"}) {
        const Symbols symbols = SymbolsOfRoom(room);
        EXPECT_EQ(symbols.ofToolkit, 0) << room;
        EXPECT_GT(symbols.all, 50) << room;
    }
    EXPECT_GT(SymbolsOfRoom("qt").ofToolkit, 0);
}

}  // namespace
