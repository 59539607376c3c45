// The libraries beside the component: a resource library that is refused, debugger libraries that
// lack a function or are not there.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "component/ModuleBoxes.h"
#include "component/SmallTrace.h"
#include "component/TestHost.h"
#include "platform/os/Module.h"

namespace kvx::test {
namespace {

namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::ElementsAre;

constexpr std::uint32_t kOpenOSTrace = 32770;
constexpr std::uint32_t kExpand = 47104;
constexpr std::uint32_t kTraceStop = 47402;
constexpr std::uint32_t kTraceRestart = 47403;

// The file of a module, as it is named here.
std::string FileOf(const std::string& module) {
    const std::string suffix(os::kModuleSuffix);
    return (suffix == ".so" ? "lib" : "") + module + suffix;
}

// The component in a folder of its own, with the resource library of a test or without one.
class CopiedModule {
  public:
    // length: of the module's path; 0: what comes.
    explicit CopiedModule(const std::string& resources, std::size_t length = 0) {
        top_ = fs::temp_directory_path() / ("kvx_component_" + std::to_string(::getpid()));
        folder_ = top_;
        const std::size_t shortest = (folder_ / FileOf("KvxOSTrace")).string().size();
        while (length > shortest + 202) {
            folder_ /= std::string(100, 'x');
            length -= 101;
        }
        if (length > shortest + 1) folder_ /= std::string(length - shortest - 1, 'x');
        fs::create_directories(folder_);
        const fs::path from = BinDirectory();
        fs::copy_file(from / FileOf("KvxOSTrace"), folder_ / FileOf("KvxOSTrace"));
        if (!resources.empty()) {
            fs::copy_file(from / FileOf("resource_" + resources),
                          folder_ / FileOf("KvxOSTraceExtRes"));
        }
    }
    ~CopiedModule() { fs::remove_all(top_); }
    std::string Folder() const { return folder_.string(); }

  private:
    fs::path top_;
    fs::path folder_;
};

TEST(Libraries, ARefusedResourceLibraryIsOneMessageAndNoStart) {
    struct Case {
        const char* resources;
        const char* message;
    };
    for (const Case& each : {Case{"product", "Incorrect version of Resources - exiting"},
                             {"ordinal", "Incorrect version of Resources - exiting"},
                             {"type", "is not a resources Dll"},
                             {"", "Error loading resource DLL "}}) {
        TestHost host;
        ModuleBoxes boxes;
        const CopiedModule copy(each.resources);
        const TestModule module(copy.Folder());
        module.Entry<CreateInstanceFn>("CreateInstance")(3);
        auto* const component = module.Query<IQComponent>(3, host::kComponent);
        EXPECT_EQ(component->Initialize(&host, 1), E_FAIL);
        EXPECT_THAT(boxes.Take(), ElementsAre(::testing::HasSubstr(each.message)));
        host.ExpectNothingLeft();
        EXPECT_EQ(component->Notify(nullptr), S_OK);
        EXPECT_EQ(component->Terminate(1), E_FAIL);
        module.Entry<DestroyInstanceFn>("DestroyInstance")(3);
    }
}

TEST(Libraries, APathThatNoModuleMayHaveIsTwoMessagesAndNoStart) {
    for (const std::size_t length : {260u, 261u}) {
        TestHost host;
        ModuleBoxes boxes;
        const CopiedModule copy("right", length);
        const TestModule module(copy.Folder());
        module.Entry<CreateInstanceFn>("CreateInstance")(3);
        auto* const component = module.Query<IQComponent>(3, host::kComponent);
        const bool tooLong = length > 260;
        EXPECT_EQ(component->Initialize(&host, 1), tooLong ? E_FAIL : S_OK) << length;
        if (tooLong) {
            EXPECT_THAT(boxes.Take(),
                        ElementsAre("Cannot obtain module. File name missing.\nPlease read User "
                                    "Guide to create/install a new version.",
                                    "Application will now exit."));
        }
        component->Terminate(1);
        module.Entry<DestroyInstanceFn>("DestroyInstance")(3);
    }
}

// Replaces the host's debugger library for the life of the object.
class OtherDebugger {
  public:
    OtherDebugger(TestHost& host, const std::string& name) : host_(host) {
        if (!name.empty()) module_ = LoadLibrary(BinDirectory() + "/" + name);
        right_ = std::exchange(host_.debugger.module, module_);
    }
    ~OtherDebugger() {
        host_.debugger.module = right_;
        if (module_) FreeLibrary(module_);
    }

  private:
    TestHost& host_;
    HMODULE module_ = nullptr;
    HMODULE right_ = nullptr;
};

TEST(Libraries, ADebuggerWithoutAFunctionIsOneMessageUntilTheNextConnection) {
    for (const auto& [library, function] :
         {std::pair{"debugger_no_eval.dll", "EXP_Eval"},
          std::pair{"KvxOSTraceExtRes.dll", "IN1_Get_mcu_info"}}) {
        TestHost host;
        ModuleBoxes boxes;
        host.trace.Load(SmallTrace());
        const Session session(host, false);
        {
            const OtherDebugger wrong(host, library);
            host.Send(host::kEventDebuggerConnected);
            EXPECT_THAT(boxes.Take(), ElementsAre("Can not get the address of the function " +
                                                  std::string(function) + "."));
            host.docking.Command(kOpenOSTrace);
            host.Send(host::kEventTargetConnected);
            host.Send(host::kEventTraceReady);
            EXPECT_FALSE(host.docking.StateOf(kExpand).enabled);
            EXPECT_EQ(host.trace.Decoded(), 0u);
        }
        host.SendConnected();
        EXPECT_TRUE(host.docking.StateOf(kExpand).enabled);
    }
}

TEST(Libraries, WithoutADebuggerLibraryTheHostPerformsTheFunctions) {
    TestHost host;
    ModuleBoxes boxes;
    host.trace.Load(SmallTrace());
    const OtherDebugger none(host, "");
    const Session session(host);
    host.docking.Command(kOpenOSTrace);
    host.Send(host::kEventTraceReady);
    EXPECT_TRUE(host.docking.StateOf(kExpand).enabled);
    host.runState.running = true;
    host.docking.StateOf(kTraceStop);
    EXPECT_THAT(host.debuggerCalls.called, Contains("IN1_Get_service_info"));
    EXPECT_EQ(host.debuggerCalls.first, 1050u);
    EXPECT_EQ(host.debuggerCalls.second, reinterpret_cast<std::uintptr_t>(&host.framework))
        << "the interface that the host gave for its frame";
    for (const std::intptr_t answer : {0, 1, 2}) {
        host.debuggerCalls.answer = answer;
        EXPECT_EQ(host.docking.StateOf(kTraceRestart).enabled, answer != 1) << answer;
    }
}

}  // namespace
}  // namespace kvx::test
