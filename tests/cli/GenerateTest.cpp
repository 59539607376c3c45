// The sub-command generate, as a script uses it.

#include "workbench/cli/GenerateCommand.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <sstream>

#include "simulation/TemporaryFolder.h"
#include "support/Needs.h"

namespace kvx::cli {
namespace {

using simulation::TemporaryFolder;
using testing::HasSubstr;
using testing::IsEmpty;

struct Outcome {
    int status = 0;
    std::string out;
    std::string error;
};

Outcome Generate(std::vector<std::string> arguments, bool terminal = false) {
    std::vector<const char*> argv = {"kvxostrace", "generate"};
    for (const auto& argument : arguments) argv.push_back(argument.c_str());
    std::ostringstream out, error;
    Outcome outcome;
    outcome.status =
        RunSubCommand(static_cast<int>(argv.size()), argv.data(), {out, error, terminal});
    outcome.out = out.str();
    outcome.error = error.str();
    return outcome;
}

TEST(Generate, WritesALogAndItsResourceFile) {
    const TemporaryFolder folder;
    const auto done = Generate({"--events", "5000", "--seed", "7", "-o", folder.Path("a.b.log")});
    EXPECT_EQ(done.status, kExitDone);
    EXPECT_THAT(done.out + done.error, IsEmpty()) << "nothing to say, and no terminal";
    const std::string log = folder.Read("a.b.log");
    EXPECT_EQ(std::ranges::count(log, '\n'), 5000);
    const auto resource = nlohmann::json::parse(folder.Read("a.b.res"));
    EXPECT_EQ(resource.at("TimeScale"), "us");
    EXPECT_EQ(resource.at("TimeRadix"), 10);
    const auto& motor = resource.at("Resources").at("MOTOR_CTRL");
    EXPECT_EQ(motor.at("Type"), "Task");
    EXPECT_EQ(motor.at("Attributes").at("id"), 2);
    EXPECT_EQ(motor.at("Attributes").at("pri"), 3);
    EXPECT_EQ(motor.at("Attributes").at("state"), "RUNNABLE");

    const auto piped = Generate({"--events", "5000", "--seed", "7", "-o", "-"});
    EXPECT_EQ(piped.status, kExitDone);
    EXPECT_EQ(piped.out, log);
    EXPECT_NE(Generate({"--events", "5000", "-o", "-"}).out, log) << "another seed";
}

// Attributes and types are those that kernels' own resource files have.
TEST(Generate, ResourceFileHasTheShapeOfARealOne) {
    const std::string source = getenv("KVX_SOURCE_DIR") ? getenv("KVX_SOURCE_DIR") : "";
    std::ifstream file(source + "/../shared/traces/itron-log/asp/asp_long.res");
    if (!file) KVX_SKIP("the sample traces are not on this machine");
    const auto real = nlohmann::json::parse(file).at("Resources");
    const TemporaryFolder folder;
    ASSERT_EQ(Generate({"--events", "1", "-o", folder.Path("x.log")}).status, kExitDone);
    const auto keys = [](const nlohmann::json& resources) {
        std::map<std::string, std::set<std::string>> found;
        for (const auto& entry : resources)
            for (const auto& [key, value] : entry.at("Attributes").items())
                found[entry.at("Type")].insert(key);
        return found;
    };
    auto known = keys(real);
    known["ApplogString"] = {"id"};
    for (const auto& [type, attributes] :
         keys(nlohmann::json::parse(folder.Read("x.res")).at("Resources")))
        EXPECT_EQ(attributes, known[type]) << type;
}

TEST(Generate, WrongUsageIsRefused) {
    const TemporaryFolder folder;
    const std::string path = folder.Path("x.log");
    for (const auto& arguments : std::vector<std::vector<std::string>>{
             {"-o", path},
             {"--events", "10"},
             {"--events", "0", "-o", path},
             {"--events", "-3", "-o", path},
             {"--events", "many", "-o", path},
             {"--events", "1.5", "-o", path},

             {"--events", "99999999999999999999", "-o", "/dev/full"},
             {"--events", "10", "--seed", "x", "-o", path},
             {"--events", "10", "--seed", "-1", "-o", path},
             {"--events", "10", "-o", path, "more"}}) {
        const auto refused = Generate(arguments);
        EXPECT_EQ(refused.status, kExitUsage) << testing::PrintToString(arguments);
        EXPECT_THAT(refused.error, testing::Not(IsEmpty()));
    }
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_EQ(Generate({"--help"}).status, kExitDone);
}

TEST(Generate, WhatCannotBeWrittenIsNamedWithTheReason) {
    const TemporaryFolder folder;
    const std::string missing = folder.Path("missing/x.log");
    const auto noFolder = Generate({"--events", "10", "-o", missing});
    EXPECT_EQ(noFolder.status, kExitFailed);
    EXPECT_EQ(noFolder.error, "kvxostrace: " + missing + ": No such file or directory\n");

    std::filesystem::create_directory(folder.Path("d.log"));
    EXPECT_THAT(Generate({"--events", "10", "-o", folder.Path("d.log")}).error,
                HasSubstr("d.log: Is a directory"));

    std::filesystem::create_directory(folder.Path("y.res"));
    const auto noResource = Generate({"--events", "10", "-o", folder.Path("y.log")});
    EXPECT_EQ(noResource.status, kExitFailed);
    EXPECT_THAT(noResource.error, HasSubstr("y.res: Is a directory"));

    const auto sameName = Generate({"--events", "10", "-o", folder.Path("z.res")});
    EXPECT_EQ(sameName.status, kExitFailed);
    EXPECT_THAT(sameName.error, HasSubstr("z.res: "));
    EXPECT_FALSE(std::filesystem::exists(folder.Path("z.res")));
}

TEST(Generate, AFullDiskIsNoticed) {
    if (!std::filesystem::exists("/dev/full")) KVX_SKIP("/dev/full is not on this machine");
    for (const char* events : {"10", "100000"}) {
        const auto full = Generate({"--events", events, "-o", "/dev/full"});
        EXPECT_EQ(full.status, kExitFailed);
        EXPECT_EQ(full.error, "kvxostrace: /dev/full: No space left on device\n");
    }
    EXPECT_FALSE(std::filesystem::exists("/dev/full.res")) << "a device has no resource file";

    std::ofstream device("/dev/full");
    std::ostringstream error;
    const char* argv[] = {"kvxostrace", "generate", "--events", "100000", "-o", "-"};
    EXPECT_EQ(RunSubCommand(6, argv, {device, error, false}), kExitFailed);
    EXPECT_EQ(error.str(), "kvxostrace: standard output: No space left on device\n");
}

TEST(Generate, ShowsProgressOnATerminalOnly) {
    const TemporaryFolder folder;
    const std::vector<std::string> arguments = {"--events", "300000", "-o", folder.Path("x.log")};
    const auto shown = Generate(arguments, true);
    EXPECT_THAT(shown.error, HasSubstr("Generating: 43 %"));
    EXPECT_TRUE(shown.error.ends_with("\r\x1b[K")) << "it is wiped in the end";
    EXPECT_THAT(Generate(arguments, false).error, IsEmpty());
}

}  // namespace
}  // namespace kvx::cli
