// What the system gives, by the same headers on each.

#include <gtest/gtest.h>

#include <clocale>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <thread>
#include <vector>

#include "platform/base/Text.h"
#include "platform/os/Descriptors.h"
#include "platform/os/Environment.h"
#include "platform/os/MappedFile.h"
#include "platform/os/MemoryFile.h"
#include "platform/os/Module.h"
#include "platform/os/ReservedMemory.h"

namespace kvx::os {
namespace {

namespace fs = std::filesystem;

class OsFiles : public testing::Test {
  protected:
    OsFiles() : folder_(MakeTemporaryFolder()) {}
    ~OsFiles() override { fs::remove_all(folder_); }
    // A name that no code page of one byte a character has.
    std::string Path() const { return (fs::path(folder_) / "записи 記録.log").string(); }

    const std::string folder_;
};

TEST_F(OsFiles, TemporaryFoldersAreNewEachTime) {
    const std::string other = MakeTemporaryFolder();
    EXPECT_TRUE(fs::is_directory(fs::path(folder_)));
    EXPECT_TRUE(fs::is_directory(fs::path(other)));
    EXPECT_NE(folder_, other);
    fs::remove(other);
}

TEST_F(OsFiles, WhatIsWrittenIsMappedUnchanged) {
    const std::string bytes("one\ntwo\r\n\x1A\0end", 15);
    const int file = OpenForWriting(Path());
    ASSERT_GE(file, 0);
    EXPECT_TRUE(IsRegularFile(file));
    EXPECT_FALSE(IsTerminal(file));
    EXPECT_EQ(WriteBytes(file, bytes.data(), bytes.size()),
              static_cast<std::ptrdiff_t>(bytes.size()));
    EXPECT_TRUE(CloseDescriptor(file));
    std::string reason;
    const auto map = MappedFile::Open(Path(), reason);
    ASSERT_TRUE(map) << reason;
    EXPECT_EQ(map->Text(), bytes);
    EXPECT_EQ(map->MemoryPath(), "");
}

TEST_F(OsFiles, OpeningForWritingEmptiesAFile) {
    for (const char* const text : {"long before", "now"}) {
        const int file = OpenForWriting(Path());
        WriteBytes(file, text, std::strlen(text));
        CloseDescriptor(file);
    }
    std::string reason;
    EXPECT_EQ(MappedFile::Open(Path(), reason)->Text(), "now");
}

TEST_F(OsFiles, AnEmptyFileIsMapped) {
    CloseDescriptor(OpenForWriting(Path()));
    std::string reason;
    const auto map = MappedFile::Open(Path(), reason);
    ASSERT_TRUE(map) << reason;
    EXPECT_EQ(map->Text(), "");
}

TEST_F(OsFiles, WhatIsNoFileHasAReason) {
    std::string reason;
    EXPECT_FALSE(MappedFile::Open(folder_, reason));
    EXPECT_EQ(reason, "not a file");
    EXPECT_FALSE(MappedFile::Open(Path(), reason));
    EXPECT_NE(reason, "not a file");
    EXPECT_NE(reason, "");
    EXPECT_LT(OpenForWriting((fs::path(folder_) / "none" / "file").string()), 0);
}

TEST(MemoryFile, IsReadAsItWasWritten) {
    std::string expected;
    MemoryFile file;
    for (int i = 0; i < 1000; ++i) {
        const std::string piece = std::to_string(i) + std::string(300, 'x');
        ASSERT_TRUE(file.Append(piece));
        expected += piece;
    }
    EXPECT_EQ(file.Size(), expected.size());
    std::string reason;
    auto map = file.Map(reason);
    ASSERT_TRUE(map) << reason;
    const MappedFile moved = std::move(*map);
    EXPECT_EQ(moved.Text(), expected);
}

TEST(MemoryFile, MayStayEmpty) {
    MemoryFile file;
    std::string reason;
    const auto map = file.Map(reason);
    ASSERT_TRUE(map) << reason;
    EXPECT_EQ(map->Text(), "");
}

TEST(ReservedMemory, IsZerosAndTakesWritesAnywhere) {
    constexpr std::size_t kBytes = std::size_t{1} << 28;
    ReservedMemory memory(kBytes);
    auto* const bytes = static_cast<char*>(memory.Data());
    for (std::size_t at = 0; at < kBytes; at += kBytes / 8) {
        EXPECT_EQ(bytes[at], 0);
        bytes[at] = static_cast<char>(at >> 25);
    }
    bytes[kBytes - 1] = 'e';
    const ReservedMemory moved = std::move(memory);
    EXPECT_EQ(moved.Data(), bytes);
    EXPECT_EQ(bytes[kBytes / 8], static_cast<char>(kBytes / 8 >> 25));
    EXPECT_EQ(bytes[kBytes - 1], 'e');
}

TEST(ReservedMemory, IsWrittenByManyThreadsAtOnce) {
    constexpr std::size_t kThreads = 4;
    constexpr std::size_t kEach = std::size_t{1} << 23;
    const ReservedMemory memory(kThreads * kEach);
    auto* const bytes = static_cast<unsigned char*>(memory.Data());
    std::vector<std::thread> threads;
    for (std::size_t thread = 0; thread < kThreads; ++thread)
        threads.emplace_back([=] {
            for (std::size_t i = 0; i < kEach; i += 512)
                bytes[i * kThreads + thread] = static_cast<unsigned char>(thread + 1);
        });
    for (std::thread& thread : threads) thread.join();
    for (std::size_t i = 0; i < kEach; i += 512)
        for (std::size_t thread = 0; thread < kThreads; ++thread)
            ASSERT_EQ(bytes[i * kThreads + thread], thread + 1) << i;
}

TEST(Module, IsFoundByWhatItHolds) {
    const fs::path own = PathOfAddress(reinterpret_cast<const void*>(&PathOfAddress));
    EXPECT_TRUE(fs::is_regular_file(own)) << own;  // on Windows the caller's: it has a thunk
    std::string reason;
    void* const again = LoadModule(own.string(), reason);
    ASSERT_NE(again, nullptr) << reason;
    EXPECT_EQ(FindExport(again, "no such name"), nullptr);
    std::error_code error;
    EXPECT_TRUE(fs::equivalent(PathOfModule(again), own, error)) << PathOfModule(again);
    EXPECT_TRUE(UnloadModule(again));
}

TEST(Module, ThatIsMissingHasAReason) {
    std::string reason;
    EXPECT_EQ(LoadModule("/no/such/module" + std::string(kModuleSuffix), reason), nullptr);
    EXPECT_NE(reason.find("module"), std::string::npos) << reason;
}

TEST(Environment, KnowsTheProgramAndTheMachine) {
    EXPECT_EQ(fs::path(ProgramFile()).stem().string(), "test_os");
    EXPECT_TRUE(IsExecutable(ProgramFile()));
    EXPECT_FALSE(IsExecutable(ProgramFile() + ".none"));
    EXPECT_EQ(FindInstalledProgram("kvx-no-such-program"), "");
    EXPECT_GT(PhysicalMemory(), std::uint64_t{1} << 28);
    EXPECT_TRUE(fs::is_directory(SystemFolder()));
    EXPECT_TRUE(fs::is_directory(SystemLibraryFolder()));
}

TEST(Environment, TellsTheTimeInUtc) {
    const std::tm parts = UtcTime(951'782'400);  // a leap day
    EXPECT_EQ(parts.tm_year, 100);
    EXPECT_EQ(parts.tm_mon, 1);
    EXPECT_EQ(parts.tm_mday, 29);
    EXPECT_EQ(parts.tm_hour, 0);
}

TEST(PlainNumbers, ComeAsTheStandardWritesThem) {
    EXPECT_EQ(FormatText("%zu %lld %.2f %5s", std::size_t{1} << 31, 1LL << 40, 0.5, "e"),
              "2147483648 1099511627776 0.50     e");
}

}  // namespace
}  // namespace kvx::os
