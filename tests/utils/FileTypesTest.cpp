// Which window a dropped file goes to: the debugger's table of file types.

#include "utils/FileTypes.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "host/NoRefCount.h"
#include "host/Services.h"
#include "support/ScriptedHost.h"

namespace kvx::test {
namespace {

namespace fs = std::filesystem;

class Library final : public host::NoRefCount<IQDebuggerLibrary> {
  public:
    fs::path directory;
    HRESULT KVX_CALL QueryInterface(const GUID&, void**) override { return E_NOINTERFACE; }
    HRESULT KVX_CALL GetModule(void**) override { return E_FAIL; }
    HRESULT KVX_CALL GetDirectory(BSTR* text) override {
        *text = ToBstr(directory.string());
        return S_OK;
    }
    HRESULT KVX_CALL GetBaseName(BSTR* text) override {
        *text = ToBstr("Debugger");
        return S_OK;
    }
};

TEST(FileTypes, TheTableNamesTheWindowOfAnExtension) {
    Library library;
    library.directory = fs::temp_directory_path() / ("kvx_types_" + std::to_string(::getpid()));
    fs::create_directories(library.directory);
    ScriptedHost host;
    host.services[host::kDebuggerLibrary] = static_cast<IQDebuggerLibrary*>(&library);
    const auto file = [&](const char* name, const std::string& content) {
        const fs::path path = library.directory / name;
        std::ofstream(path, std::ios::binary) << content;
        return path.string();
    };
    const std::string text = file("a.txt", "text");
    EXPECT_EQ(WindowNameOfFile(text), "") << "no table yet";
    file("Debugger.fef", "[txt]\nWindowName=Editor\nIsText=1\n[bin]\nWindowName=Memory\n");
    EXPECT_EQ(WindowNameOfFile(text), "Editor");
    EXPECT_EQ(WindowNameOfFile(file("b.txt", std::string(3000, 'x') + '\0')), "")
        << "a text holds no zero byte";
    EXPECT_EQ(WindowNameOfFile(file("c.bin", std::string(2, '\0'))), "Memory");
    EXPECT_EQ(WindowNameOfFile(file("d.log", "")), "");
    fs::remove_all(library.directory);
    EXPECT_EQ(WindowNameOfFile(text), "");
}

}  // namespace
}  // namespace kvx::test
