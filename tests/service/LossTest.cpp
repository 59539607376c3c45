#include "workbench/service/Loss.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <set>
#include <string>

namespace kvx::service {
namespace {

TEST(Loss, EveryCounterHasANameOfItsOwnAndIsExplained) {
    const char* source = std::getenv("KVX_SOURCE_DIR");
    ASSERT_TRUE(source);
    std::ifstream file(std::string(source) + "/docs/FORMATS.md");
    const std::string document{std::istreambuf_iterator<char>(file), {}};
    std::set<std::string> names;
    for (int i = 0; i < static_cast<int>(Loss::Count); ++i) {
        const auto& info = GetLossInfo(static_cast<Loss>(i));
        const std::string name(info.name);
        EXPECT_TRUE(names.insert(name).second) << name;
        EXPECT_TRUE(info.help.ends_with('.')) << name;
        EXPECT_NE(document.find("| `" + name + "` |"), std::string::npos) << name;
    }
    // The table is in the order of the enumeration.
    EXPECT_EQ(GetLossInfo(Loss::UnreadableRecords).name, "unreadable_records");
    EXPECT_EQ(GetLossInfo(Loss::TimeStepsBack).name, "time_steps_back");
    EXPECT_FALSE(GetLossInfo(Loss::TimeStepsBack).isLoss);
    EXPECT_EQ(GetLossInfo(Loss::ResourceFileMended).name, "resource_file_mended");
}

}  // namespace
}  // namespace kvx::service
