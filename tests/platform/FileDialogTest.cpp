// What the file dialog makes of its arguments and of the user's answers.

#include "platform/dialogs/FileDialog.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "platform/base/Module.h"
#include "platform/dialogs/ColorDialog.h"
#include "platform/dialogs/MessageBox.h"
#include "platform/os/Module.h"
#include "platform/windows/DropTarget.h"
#include "support/FakeBackend.h"
#include "support/UnexpectedBoxes.h"

namespace fs = std::filesystem;

namespace {

constexpr char kFilter[] = "CSV(Comma separeted values)*.csv|*.csv|All Files(*.*)|*.*||";
constexpr DWORD kSaveFlags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST;

class FileDialogTest : public testing::Test {
  protected:
    void SetUp() override {
        folder = fs::path(testing::TempDir()) / ("kvx_file_dialog_" + std::to_string(::getpid()));
        fs::create_directories(folder);
    }
    void TearDown() override { fs::remove_all(folder); }
    CString Path(const char* name) const { return (folder / name).string(); }
    void Write(const char* name) const { std::ofstream(folder / name) << "x"; }
    fs::path folder;
    kvx::test::FakeBackend backend;
    kvx::test::UnexpectedBoxes boxes;
};

TEST_F(FileDialogTest, PatternNamesTheFolderAndTheExtensionIsAdded) {
    CFileDialog dialog(false, "csv", "C:\\config\\*.csv", kSaveFlags, kFilter);
    dialog.SetTitle("Save Analysis Data");
    boxes.ExpectFile(Path("table"));
    EXPECT_EQ(dialog.DoModal(), static_cast<int>(IDOK));
    EXPECT_EQ(dialog.GetPathName(), Path("table.csv"));
    const FileDialogRequest& asked = boxes.LastFile();
    EXPECT_FALSE(asked.open);
    EXPECT_EQ(asked.title, "Save Analysis Data");
    EXPECT_EQ(asked.directory, "C:/config");
    EXPECT_EQ(asked.name, "");
    ASSERT_EQ(asked.filters.size(), 2u);
    EXPECT_EQ(asked.filters[0].label, "CSV(Comma separeted values)*.csv");
    EXPECT_EQ(asked.filters[1].patterns, "*.*");
}

TEST_F(FileDialogTest, ExistingFilesAreReplacedOnlyOnRequest) {
    Write("old.csv");
    CFileDialog dialog(false, "csv", Path("old.csv"), kSaveFlags, kFilter);
    boxes.ExpectFile(Path("old.csv"));
    boxes.ExpectMessage("already exists", IDNO);
    boxes.ExpectFile(Path("old"));  // the same file, once the extension is added
    boxes.ExpectMessage("already exists", IDYES);
    EXPECT_EQ(dialog.DoModal(), static_cast<int>(IDOK));
    EXPECT_EQ(dialog.GetPathName(), Path("old.csv"));
    EXPECT_EQ(boxes.LastFile().name, "old.csv");
}

TEST_F(FileDialogTest, FoldersAndFilesMustExistWhereAsked) {
    CFileDialog save(false, "csv", "", kSaveFlags, "");
    boxes.ExpectFile(Path("missing/a.csv"));
    boxes.ExpectMessage("does not exist");
    boxes.ExpectFile("");
    EXPECT_EQ(save.DoModal(), static_cast<int>(IDCANCEL));
    EXPECT_EQ(save.GetPathName(), "");

    Write("a.log");
    CFileDialog open(true, "", Path("a.log"), OFN_FILEMUSTEXIST);
    boxes.ExpectFile(Path("b.log"));
    boxes.ExpectMessage("does not exist");
    boxes.ExpectFile(Path("a.log"));
    EXPECT_EQ(open.DoModal(), static_cast<int>(IDOK));

    CFileDialog any(true, "", Path("a.log"), 0);
    boxes.ExpectFile(Path("b.log"));
    EXPECT_EQ(any.DoModal(), static_cast<int>(IDOK)) << "nobody asked that it exists";
}

TEST_F(FileDialogTest, ColourIsTakenOnlyWhenConfirmed) {
    CColorDialog dialog(RGB(1, 2, 3));
    boxes.ExpectColour(std::nullopt);
    EXPECT_EQ(dialog.DoModal(), static_cast<int>(IDCANCEL));
    EXPECT_EQ(dialog.GetColor(), RGB(1, 2, 3));
    boxes.ExpectColour(RGB(9, 8, 7));
    EXPECT_EQ(dialog.DoModal(), static_cast<int>(IDOK));
    EXPECT_EQ(dialog.GetColor(), RGB(9, 8, 7));
}

// A message of no kind is a warning.
TEST_F(FileDialogTest, MessagesHaveAnIcon) {
    for (const auto& [type, icon] :
         {std::pair<UINT, UINT>{MB_OK, MB_ICONEXCLAMATION}, {MB_OK | MB_ICONERROR, MB_ICONERROR}}) {
        boxes.ExpectMessage("text");
        AfxMessageBox("text", type);
        EXPECT_EQ(boxes.LastMessage().type & MB_ICONMASK, icon);
    }
}

TEST(DropTest, HandleKeepsEveryPath) {
    const HDROP drop = CreateDrop({"/a/b.log", "", "/c d/\xC3\xA4.res"});
    EXPECT_EQ(DragQueryFileCount(drop), 3u);
    EXPECT_EQ(DragQueryFile(drop, 0), "/a/b.log");
    EXPECT_EQ(DragQueryFile(drop, 1), "");
    EXPECT_EQ(DragQueryFile(drop, 2), "/c d/\xC3\xA4.res");
    EXPECT_EQ(DragQueryFile(drop, 3), "");
    DragFinish(drop);
    EXPECT_EQ(DragQueryFileCount(nullptr), 0u);
}

TEST(ModuleTest, MissingModulesGiveTheReason) {
    CString error;
    EXPECT_EQ(LoadLibrary("/nowhere/KvxOSTraceExtRes.dll", &error), nullptr);
    EXPECT_NE(error.find("KvxOSTraceExtRes" + CString(kvx::os::kModuleSuffix)), CString::npos)
        << error;
    EXPECT_EQ(GetProcAddress(nullptr, "x"), nullptr);
    EXPECT_FALSE(FreeLibrary(nullptr));
}

TEST(ModuleTest, ThisProgramKnowsItsFile) {
    EXPECT_EQ(GetModuleFileName(nullptr), "");
    // The address of a function may be that of the way to it; its tables know the function itself.
    const CWnd window;
    const void* const function = **reinterpret_cast<void* const* const*>(&window);
    const CString file = GetModuleFileNameOf(function);
    EXPECT_TRUE(file.ends_with("KvxPlatform" + CString(kvx::os::kModuleSuffix))) << file;
}

}  // namespace
