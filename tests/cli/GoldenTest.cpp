// Golden cases: each folder below tests/golden/<format>/ with a file "command" holds the files that
// the command reads and what it answers.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "support/GoldenText.h"
#include "workbench/cli/SubCommands.h"

namespace kvx::cli {
namespace {

namespace fs = std::filesystem;

fs::path GoldenFolder() {
    const char* source = std::getenv("KVX_SOURCE_DIR");
    return fs::path(source ? source : ".") / "tests/golden";
}

std::vector<std::string> Cases() {
    std::vector<std::string> cases;
    for (const auto& entry : fs::recursive_directory_iterator(GoldenFolder()))
        if (entry.path().filename() == "command")
            cases.push_back(fs::relative(entry.path().parent_path(), GoldenFolder()).string());
    std::ranges::sort(cases);
    return cases;
}

std::string ReadFile(const fs::path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

// What the command writes, and its exit status.
std::string AnswerTo(const std::string& command) {
    std::istringstream words(command);
    std::vector<std::string> arguments = {"kvxostrace"};
    for (std::string word; words >> word;) arguments.push_back(word);
    std::vector<const char*> argv;
    for (const auto& argument : arguments) argv.push_back(argument.c_str());
    std::ostringstream out;
    std::ostringstream error;
    const int status = RunSubCommand(static_cast<int>(argv.size()), argv.data(), {out, error});
    std::ostringstream answer;
    answer << out.str() << "--- standard error\n"
           << error.str() << "--- exit status " << status << '\n';
    return answer.str();
}

class Golden : public testing::TestWithParam<std::string> {};

TEST_P(Golden, AnswersAsExpected) {
    const auto folder = GoldenFolder() / GetParam();
    const auto before = fs::current_path();
    fs::current_path(folder);  // so that the answer names files as the command does
    const auto answer = AnswerTo(ReadFile("command"));
    fs::current_path(before);
    test::ExpectGolden(GetParam() + "/expected", answer);
}

INSTANTIATE_TEST_SUITE_P(Cases, Golden, testing::ValuesIn(Cases()), [](const auto& each) {
    std::string name = each.param;
    for (char& c : name)
        if (c == '/') c = '_';
    return name;
});

// Without its folder the suite would be empty and pass.
TEST(GoldenFolder, HasCases) {
    EXPECT_GE(Cases().size(), 10u);
}

}  // namespace
}  // namespace kvx::cli
