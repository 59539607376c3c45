// The module in a process whose toolkit shows no windows: it says so and does not start.

#include <gtest/gtest.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QGuiApplication>
#include <filesystem>

#include "host/Component.h"
#include "host/Identifiers.h"
#include "platform/Backend.h"
#include "platform/base/Module.h"

namespace kvx::test {
namespace {

namespace fs = std::filesystem;

// Has nothing to give.
class EmptyHost final : public IQHost {
  public:
    HRESULT KVX_CALL QueryInterface(const GUID&, void**) override { return E_NOINTERFACE; }
    std::uint32_t KVX_CALL AddRef() override { return 1; }
    std::uint32_t KVX_CALL Release() override { return 1; }
    HRESULT KVX_CALL BroadcastEvent(const EventRecord*) override { return S_OK; }
    HRESULT KVX_CALL GetService(const GUID&, void**) override { return E_NOINTERFACE; }
    HRESULT KVX_CALL Advise(const GUID&, void*) override { return ++advised, S_OK; }
    HRESULT KVX_CALL AddService(const GUID&, void*) override { return ++advised, S_OK; }
    HRESULT KVX_CALL Unadvise(const GUID&, void*) override { return --advised, S_OK; }
    HRESULT KVX_CALL RemoveService(const GUID&, void*) override { return --advised, S_OK; }
    int advised = 0;
};

class BareProcess : public testing::Test {
  protected:
    BareProcess() { fs::create_directories(folder_); }
    ~BareProcess() override { fs::remove_all(folder_); }

    // Starts the module with or without its resource library; what it said.
    std::string Start(bool withResources) {
        const fs::path from = std::getenv("KVX_BIN_DIR");
        fs::path directory = from;
        if (!withResources) {
            directory = folder_;
            fs::copy_file(from / "libKvxOSTrace.so", folder_ / "libKvxOSTrace.so",
                          fs::copy_options::overwrite_existing);
        }
        const HMODULE module = LoadLibrary((directory / "KvxOSTrace.dll").string());
        EXPECT_NE(module, nullptr);
        testing::internal::CaptureStderr();
        EXPECT_EQ(GetProcAddress<CreateInstanceFn>(module, "CreateInstance")(1), S_OK);
        void* out = nullptr;
        EXPECT_EQ(GetProcAddress<QueryInterface2Fn>(module, "QueryInterface2")(1, &host::kComponent,
                                                                               &out),
                  S_OK);
        auto* const component = static_cast<IQComponent*>(out);
        EmptyHost host;
        EXPECT_EQ(component->Initialize(&host, -1), E_FAIL);
        EXPECT_EQ(component->Terminate(-1), E_FAIL) << "nothing was connected";
        EXPECT_EQ(host.advised, 0);
        EXPECT_EQ(GetProcAddress<DestroyInstanceFn>(module, "DestroyInstance")(1), S_OK);
        FreeLibrary(module);
        return testing::internal::GetCapturedStderr();
    }
    void ExpectAWordAndNoStart() {
        EXPECT_EQ(Start(true),
                  "OS Trace needs a QApplication: this process can show no windows.\n");
        EXPECT_EQ(Start(false), "Error loading resource DLL " +
                                    (folder_ / "KvxOSTraceExtRes.dll").string() + "\n");
    }

    int count_ = 1;
    char name_[5] = "bare";
    char* arguments_[2] = {name_, nullptr};

  private:
    const fs::path folder_ = fs::temp_directory_path() / ("kvx_bare_" + std::to_string(::getpid()));
};

TEST_F(BareProcess, WithACoreApplication) {
    const QCoreApplication application(count_, arguments_);
    ExpectAWordAndNoStart();
}

TEST_F(BareProcess, WithAGuiApplication) {
    const QGuiApplication application(count_, arguments_);
    ExpectAWordAndNoStart();
}

TEST(ModuleAlone, BringsTheToolkitInAndTakesItOutAgain) {
    const fs::path from = std::getenv("KVX_BIN_DIR");
    const HMODULE module = LoadLibrary((from / "KvxOSTrace.dll").string());
    ASSERT_NE(module, nullptr);
    const auto create = GetProcAddress<CreateInstanceFn>(module, "CreateInstance");
    const auto destroy = GetProcAddress<DestroyInstanceFn>(module, "DestroyInstance");
    EXPECT_EQ(InstalledBackend(), nullptr);
    create(1);
    EXPECT_NE(InstalledBackend(), nullptr) << "with its first instance";
    create(2);
    destroy(1);
    EXPECT_NE(InstalledBackend(), nullptr);
    destroy(2);
    EXPECT_EQ(InstalledBackend(), nullptr) << "with its last one";
    FreeLibrary(module);
}

}  // namespace
}  // namespace kvx::test
