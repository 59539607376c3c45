// Helpers that the module exports: profile files, paths, short texts, submenus.

#include <gtest/gtest.h>

#include <array>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/windows/Menu.h"
#include "utils/Path.h"
#include "utils/Profile.h"

namespace {

namespace fs = std::filesystem;

class Profile : public ::testing::Test {
  protected:
    Profile()
        : file_((fs::temp_directory_path() / ("kvx_profile_" + std::to_string(::getpid())))
                    .string()) {
        fs::remove(file_);
    }
    ~Profile() override { fs::remove(file_); }
    void Write(const std::string& text) const { std::ofstream(file_, std::ios::binary) << text; }
    std::string Text() const {
        std::ifstream in(file_, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    std::string file_;
};

TEST_F(Profile, ReadsWhatAnyEditorWrote) {
    Write(
        "; a comment\r\n[ View ]\r\nWidth = 12 px\r\nname= two words \r\n\r\n[Other]\nwidth=99\n"
        "empty=\nbig=99999999999\n[unfinished");
    EXPECT_EQ(AfxGetProfileString(file_, "view", "NAME", "?"), "two words");
    EXPECT_EQ(AfxGetProfileInt(file_, "VIEW", "width", 7), 12);
    EXPECT_EQ(AfxGetProfileInt(file_, "Other", "width", 7), 99);
    EXPECT_EQ(AfxGetProfileInt(file_, "Other", "big", 7), 7);
    EXPECT_EQ(AfxGetProfileString(file_, "Other", "empty", "?"), "");
    EXPECT_EQ(AfxGetProfileString(file_, "View", "big", "?"), "?");
    EXPECT_EQ(AfxGetProfileString(file_, "None", "big", "?"), "?");
    EXPECT_EQ(AfxGetProfileString(file_ + ".none", "View", "name", "?"), "?");
}

TEST_F(Profile, WritesOneLineAndKeepsTheOthers) {
    Write("; a comment\n[A]\nx=1\n\n[B]\ny=2\n");
    EXPECT_TRUE(AfxWriteProfileString(file_, "a", "X", "eins"));
    EXPECT_TRUE(AfxWriteProfileInt(file_, "A", "z", -3));
    EXPECT_TRUE(AfxWriteProfileString(file_, "C", "new", "section"));
    EXPECT_EQ(Text(), "; a comment\n[A]\nX=eins\nz=-3\n\n[B]\ny=2\n[C]\nnew=section\n");
    EXPECT_EQ(AfxGetProfileInt(file_, "A", "z", 0), -3);
    EXPECT_FALSE(AfxWriteProfileInt("/nonexistent/folder/file", "A", "z", 1));
    EXPECT_FALSE(AfxWriteProfileInt(fs::temp_directory_path().string(), "A", "z", 1));
    // What would read back as something else is not written.
    const std::string before = Text();
    EXPECT_FALSE(AfxWriteProfileString(file_, "A", "x", "1\n[B]\ny=3"));
    EXPECT_FALSE(AfxWriteProfileString(file_, "A", "x=y", "1"));
    EXPECT_FALSE(AfxWriteProfileString(file_, "A]\n[B", "y", "1"));
    EXPECT_EQ(Text(), before);
}

TEST_F(Profile, StructuresComeBackWholeOrNotAtAll) {
    const std::array<std::byte, 4> written{std::byte{0}, std::byte{0x7F}, std::byte{0x80},
                                           std::byte{0xFF}};
    std::array<std::byte, 4> read{};
    EXPECT_TRUE(AfxWriteProfileStruct(file_, "S", "bytes", written));
    EXPECT_TRUE(AfxGetProfileStruct(file_, "S", "bytes", read));
    EXPECT_EQ(read, written);
    const std::array<std::byte, 4> letters{std::byte{0xAB}, std::byte{0xCD}, std::byte{0xEF},
                                           std::byte{0x9A}};
    EXPECT_TRUE(AfxWriteProfileStruct(file_, "S", "letters", letters));
    const std::string text = AfxGetProfileString(file_, "S", "letters", "");
    for (int (*const other)(int) : {&::toupper, &::tolower}) {
        std::string changed = text;
        for (char& c : changed) c = static_cast<char>(other(c));
        EXPECT_TRUE(AfxWriteProfileString(file_, "S", "letters", changed));
        std::array<std::byte, 4> again{};
        EXPECT_TRUE(AfxGetProfileStruct(file_, "S", "letters", again)) << changed;
        EXPECT_EQ(again, letters);
    }
    std::array<std::byte, 3> shorter{};
    EXPECT_FALSE(AfxGetProfileStruct(file_, "S", "bytes", shorter));
    EXPECT_EQ(shorter, (std::array<std::byte, 3>{}));
    EXPECT_TRUE(AfxWriteProfileString(file_, "S", "bytes", "0g7f80ff"));
    EXPECT_FALSE(AfxGetProfileStruct(file_, "S", "bytes", read));
    EXPECT_EQ(read, written);
}

TEST(Helpers, FilesAndDirectories) {
    const std::string here = AfxGetModuleDirectory();
    EXPECT_TRUE(fs::is_directory(here));
    EXPECT_TRUE(AfxIsFileExist(here + "/test_utils"));
    EXPECT_FALSE(AfxIsFileExist(here));  // a folder is no file
    EXPECT_FALSE(AfxIsFileExist(here + "/none"));
    EXPECT_EQ(kvx::DirectoryOf("/a/b/c.txt"), "/a/b");
    EXPECT_EQ(kvx::DirectoryOf("c.txt"), ".");
    EXPECT_EQ(kvx::ExtensionOf("/a/b.c/d.csv"), "csv");
}

TEST(Helpers, ShortTextsNeverCutACharacter) {
    EXPECT_EQ(AfxMakeShortString("marker", 6), "marker");
    EXPECT_EQ(AfxMakeShortString("markers", 6), "mar...");
    EXPECT_EQ(AfxMakeShortString("äöüßäöü", 7), "äöüßäöü");
    EXPECT_EQ(AfxMakeShortString("äöüßäöüß", 7), "äöüß...");
    EXPECT_EQ(AfxMakeShortString("markers", 2), "..");
    EXPECT_EQ(AfxMakeShortString("markers", 0), "");
    EXPECT_EQ(AfxMakeShortString("", 0), "");
}

TEST(Helpers, SubmenusAreFoundByTheirExactText) {
    CMenu menu;
    menu.AppendMenu(MF_STRING, 2, "&View");  // a command of the same text
    menu.AppendPopup("&View")->AppendMenu(MF_STRING, 1, "OS Trace");
    CMenu* const found = AfxFindSubMenu(&menu, "&View");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->GetMenuItemCount(), 1);
    EXPECT_EQ(AfxFindSubMenu(&menu, "View"), nullptr);
    EXPECT_EQ(AfxFindSubMenu(nullptr, "&View"), nullptr);
}

}  // namespace
