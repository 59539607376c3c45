#pragma once
// Texts under tests/golden that a result is compared with. With KVX_REWRITE_GOLDEN=1 in the
// environment they are written instead; what changed is then to be read in the difference.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace kvx::test {

// name: "analyze/run-time.txt".
inline void ExpectGolden(const std::string& name, const std::string& text) {
    const char* const source = std::getenv("KVX_SOURCE_DIR");
    ASSERT_NE(source, nullptr) << "KVX_SOURCE_DIR names the source tree";
    const auto path = std::filesystem::path(source) / "tests/golden" / name;
    const char* const rewrite = std::getenv("KVX_REWRITE_GOLDEN");
    if (rewrite && std::string(rewrite) == "1") {
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << text;
        return;
    }
    std::ifstream file(path, std::ios::binary);
    ASSERT_TRUE(file) << path << " is missing; KVX_REWRITE_GOLDEN=1 writes it";
    std::ostringstream expected;
    expected << file.rdbuf();
    EXPECT_EQ(text, expected.str()) << "differs from " << path;
}

}  // namespace kvx::test
