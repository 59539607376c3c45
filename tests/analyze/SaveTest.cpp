// The save command: what it offers, what it writes, and what it says when it cannot.

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "analyze/AnalyzeWindow.h"
#include "support/Needs.h"

namespace kvx::test {
namespace {

namespace fs = std::filesystem;

class Save : public AnalyzeWindow {
  protected:
    Save() : folder_(fs::temp_directory_path() / ("kvx_save_" + std::to_string(getpid()))) {
        fs::create_directories(folder_);
    }
    ~Save() override { fs::remove_all(folder_); }

    std::string Path(const char* name) const { return (folder_ / name).string(); }
    static std::string Content(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        std::ostringstream text;
        text << file.rdbuf();
        return text.str();
    }
    void SaveTo(const std::string& path) {
        boxes.ExpectFile(path);
        Command(ids::kSave);
    }

    fs::path folder_;
};

TEST_F(Save, AsksForAFileAndWritesTheTableShown) {
    OpenTrace(AnalyzeTrace(3));
    OpenWindow();
    ClickCell(kRunTimeWidths, CRunTimeAnalysis::Total, -1);
    ClickCell(kRunTimeWidths, CRunTimeAnalysis::Total, -1);
    SaveTo(Path("run.csv"));
    EXPECT_EQ(boxes.LastFile().title, "Save Analysis Data");
    EXPECT_FALSE(boxes.LastFile().open);
    ASSERT_EQ(boxes.LastFile().filters.size(), 2u);
    EXPECT_EQ(boxes.LastFile().filters[0].patterns, "*.csv");
    EXPECT_EQ(boxes.LastFile().name, "");
    EXPECT_EQ(Content(Path("run.csv")),
              "VEC,table,ID,(name),Num,Max,Min,Avg,Total,Ratio %\r\n"
              ",,2,logger,3,40,40,40,120,42.86\r\n"
              ",,1,control,3,30,30,30,90,32.14\r\n"
              ",,,Idle,2,20,20,20,40,14.29\r\n"
              "3,001234,,timer,3,10,10,10,30,10.71\r\n"
              ",,,Unknown,0,0,0,0,0,0.00\r\n");

    Command(ids::kRdyToRun);
    SaveTo(Path("rdy"));  // the extension is added
    EXPECT_EQ(Content(Path("rdy.csv")),
              "Id,(name),Num,Max,Min,Avg\r\n"
              "1,control,3,5,5,5\r\n"
              "2,logger,3,34,34,34\r\n");
    Command(ids::kSystemCall);
    SaveTo(Path("calls.csv"));
    EXPECT_EQ(Content(Path("calls.csv")),
              "No,System Call,Parameter,Return Parameter,TIME\r\n"
              "1,sig_sem,semid=0,ercd=0,125\r\n"
              "2,wai_sem,semid=1,ercd=0,225\r\n"
              "3,sig_sem,semid=2,ercd=0,325\r\n");
}

TEST_F(Save, OffersTheFileWrittenLast) {
    OpenTrace(AnalyzeTrace(3));
    OpenWindow();
    SaveTo("");                                             // cancelled
    EXPECT_EQ(boxes.LastFile().directory, "$(CONFIGDIR)");  // no project is open
    SaveTo(Path("one.csv"));
    EXPECT_EQ(boxes.LastFile().directory, "$(CONFIGDIR)");
    SaveTo("");
    EXPECT_EQ(boxes.LastFile().name, "one.csv");
    EXPECT_EQ(boxes.LastFile().directory, folder_.generic_string());
    SaveTo("");
    EXPECT_EQ(boxes.LastFile().name, "one.csv");
    // A window of its own knows nothing of it.
    Close();
    OpenWindow();
    SaveTo("");
    EXPECT_EQ(boxes.LastFile().name, "");
}

TEST_F(Save, SaysWhyAFileIsNotWritten) {
    OpenTrace(AnalyzeTrace(3));
    OpenWindow();
    boxes.ExpectMessage("ERROR: Can not open file(/proc/none.csv).");
    SaveTo("/proc/none.csv");
    EXPECT_EQ(boxes.LastMessage().caption, "Error");
    EXPECT_EQ(boxes.LastMessage().type & MB_ICONMASK, MB_ICONEXCLAMATION);
    SaveTo("");
    EXPECT_EQ(boxes.LastFile().name, "");  // neither is offered again

    if (!fs::exists("/dev/full")) KVX_SKIP("no /dev/full to write to");
    boxes.ExpectMessage("/dev/full already exists", IDYES);
    boxes.ExpectMessage("ERROR: Can not write file(/dev/full). The disk may be full.");
    SaveTo("/dev/full");
    SaveTo("");
    EXPECT_EQ(boxes.LastFile().name, "");
}

TEST_F(Save, AnExistingFileIsReplacedOnlyWhenTheUserSaysSo) {
    OpenTrace(AnalyzeTrace(3));
    OpenWindow();
    std::ofstream(Path("old.csv")) << "kept";
    boxes.ExpectMessage("already exists", IDNO);
    boxes.ExpectFile(Path("old.csv"));
    SaveTo("");  // then cancelled
    EXPECT_EQ(Content(Path("old.csv")), "kept");
    boxes.ExpectMessage("already exists", IDYES);
    SaveTo(Path("old.csv"));
    EXPECT_EQ(Content(Path("old.csv")).substr(0, 4), "VEC,");
}

TEST_F(Save, NeedsATrace) {
    OpenWindow();
    EXPECT_FALSE(IsEnabled(ids::kSave));
    Command(ids::kSave);  // no dialog comes
}

}  // namespace
}  // namespace kvx::test
