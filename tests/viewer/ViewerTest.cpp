// The viewer as a user goes through it, with the real component.

#include "viewer/Viewer.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "host/CommandIds.h"
#include "platform/base/Keys.h"
#include "platform/controls/Button.h"
#include "platform/controls/ListBox.h"
#include "platform/os/Environment.h"
#include "support/DrawnWindow.h"
#include "support/UnexpectedBoxes.h"
#include "support/toolkit/Toolkit.h"
#include "workbench/simulation/Generate.h"

namespace kvx::viewer {
namespace {

namespace fs = std::filesystem;

CString Recording(const char* name) {
    return CString(std::getenv("KVX_SOURCE_DIR")) + "/tests/golden/itron_text/" + name +
           "/input.log";
}

class ViewerTest : public testing::Test {
  protected:
    ViewerTest() : folder_(os::MakeTemporaryFolder()) { Begin(); }
    ~ViewerTest() override {
        viewer_.reset();
        fs::remove_all(folder_);
    }
    CString Path(const char* name) const { return (folder_ / name).string(); }
    // A viewer of the same user.
    void Begin() {
        viewer_.reset();
        viewer_ = std::make_unique<Viewer>(Path("kvxview.ini"));
        ASSERT_EQ(viewer_->Start(std::getenv("KVX_BIN_DIR")), "");
        test::Settle();
    }
    void Open(const char* name) {
        ASSERT_TRUE(viewer_->Open(Recording(name)));
        test::Settle();
    }
    ViewerWindow& Window() { return viewer_->Window(); }
    std::size_t PaneCount() { return Window().Docking().Panes().size(); }
    Pane& PaneAt(std::size_t which) { return *Window().Docking().Panes()[which]; }
    // The innermost window of a pane's control: the view.
    HWND View(std::size_t which) {
        const CRect area = PaneAt(which).GetClientRect();
        return test::WindowAt(PaneAt(which).GetSafeHwnd(), {area.Width() / 2, area.Height() / 2});
    }
    // A key without modifiers goes down in the pane's view.
    void Press(std::size_t which, UINT key) { SendMessage(View(which), WM_KEYDOWN, key, 0); }
    template <class Strip>
    Strip& Find(const CWnd& parent) {
        for (const HWND child : Backend().Windows().Children(parent.GetSafeHwnd())) {
            if (auto* const strip = dynamic_cast<Strip*>(CWnd::FromHandle(child))) return *strip;
        }
        throw std::runtime_error("no such window");
    }
    // Opens the menu that starts at x, and chooses what stands there, counted from 1.
    CString OpenMenu(UINT letter, UINT choice) {
        boxes_.ExpectMenu(choice);
        EXPECT_TRUE(Find<MenuStrip>(Window()).Open(letter));
        test::Settle();
        return boxes_.LastMenu();
    }
    // The texts of the frame's status bar, above the view.
    CString Marks(std::size_t which) {
        test::Settle();
        CString texts;
        const auto& status = Find<CStatusBarCtrl>(*CWnd::FromHandle(View(which))->GetParent());
        for (int i = 0; i < status.GetParts(0, nullptr); ++i) texts += status.GetText(i) + "|";
        return texts;
    }

    test::UnexpectedBoxes boxes_;
    fs::path folder_;
    std::unique_ptr<Viewer> viewer_;
};

TEST_F(ViewerTest, ShowsBothWindowsSideBySide) {
    ASSERT_EQ(PaneCount(), 2U);
    Open("two_cores");
    EXPECT_EQ(Window().GetWindowText(), "input.log — KVX Viewer");
    EXPECT_EQ(Window().Status(1), "Processor 1   ITRON kernel text log");
    const CRect trace = PaneAt(0).GetWindowRect();
    const CRect analyze = PaneAt(1).GetWindowRect();
    EXPECT_EQ(trace.top, analyze.top);
    EXPECT_LT(trace.right, analyze.left);
    EXPECT_GT(trace.Width(), analyze.Width());
    EXPECT_NE(Marks(0).find("Mark: "), CString::npos) << Marks(0);
    // The bar between them moves both edges, and keeps the share when the window grows.
    CSizerBar& bar = Find<CSizerBar>(Window());
    bar.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MakePointParam(2, 50));
    bar.SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MakePointParam(-198, 50));
    bar.SendMessage(WM_LBUTTONUP, 0, MakePointParam(-198, 50));
    EXPECT_EQ(PaneAt(0).GetWindowRect().Width(), trace.Width() - 200);
    EXPECT_EQ(PaneAt(1).GetWindowRect().Width(), analyze.Width() + 200);
}

TEST_F(ViewerTest, KeysGoToThePaneThatHasTheKeyboard) {
    const CString log = Path("demonstration.log");
    ASSERT_EQ(simulation::WriteDemonstration(log), "");
    ASSERT_TRUE(viewer_->Open(log));
    boxes_.ExpectDialog([](CDialog& dialog) { EXPECT_EQ(dialog.GetWindowText(), "Value..."); });
    Press(0, 'V');
    Press(1, 'V');  // means nothing there
    const CString before = Marks(0);
    Press(0, VK_ADD);
    SendMessage(View(0), WM_CHAR, '+', 0);
    const CString once = Marks(0);
    EXPECT_NE(once, before);
    Press(0, VK_SUBTRACT);
    SendMessage(View(0), WM_CHAR, '-', 0);
    EXPECT_EQ(Marks(0), before) << "the character of a key that gave a command means nothing more";
}

TEST_F(ViewerTest, MarkersAreDraggedAndTheTableIsSaved) {
    Open("one_core");
    const CString before = Marks(1);
    auto& view = *CWnd::FromHandle(View(0));
    const CRect area = view.GetClientRect();
    const auto drag = [&](int from) {
        view.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MakePointParam(from, 30));
        view.SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MakePointParam(from + 5, 30));
        view.SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MakePointParam(from + 200, 30));
        view.SendMessage(WM_LBUTTONUP, 0, MakePointParam(from + 200, 30));
    };
    // The start marker stands at the left edge of the chart, wherever the columns end.
    for (int x = 150; x < area.right && Marks(1) == before; ++x) drag(x);
    EXPECT_NE(Marks(1), before) << "the other window follows the marker";
    const CString file = Path("table.csv");
    boxes_.ExpectFile(file);
    Press(1, 'A');
    std::ifstream saved(file);
    std::string header;
    std::getline(saved, header);
    EXPECT_EQ(header.substr(0, 12), "VEC,table,ID") << header;
}

TEST_F(ViewerTest, MenusShowStatesAndKeys) {
    EXPECT_EQ(OpenMenu('F', 0),
              "&Open...\tCtrl+O\n&Close\tCtrl+W (off)\nAbout This &Recording... "
              "(off)\n\nE&xit\tCtrl+Q\n");
    Open("two_cores");
    const CString trace = OpenMenu('V', 0);
    EXPECT_NE(trace.find("&OSTrace"), CString::npos) << trace;
    EXPECT_EQ(OpenMenu('P', 2), "Processor &1 *\nProcessor &2\n");
    EXPECT_EQ(Window().Status(1), "Processor 2   ITRON kernel text log");
    EXPECT_EQ(OpenMenu('P', 0), "Processor &1\nProcessor &2 *\n");
    OpenMenu('F', 2);
    EXPECT_EQ(Window().GetWindowText(), "KVX Viewer");
    EXPECT_FALSE(Find<MenuStrip>(Window()).Open('P')) << "there is no choice of processors";
}

TEST_F(ViewerTest, WhatWasLostIsTold) {
    Open("losses");
    viewer_->Trace().Check();  // waits for all of it
    Window().UpdateSoon();
    test::Settle();
    EXPECT_NE(Window().Status(1).find(" losses   "), CString::npos) << Window().Status(1);
    boxes_.ExpectMessage(": ");
    OpenMenu('F', 3);
    EXPECT_NE(boxes_.LastMessage().text.find("returns_without_call"), CString::npos)
        << boxes_.LastMessage().text;
    Open("one_core");
    EXPECT_EQ(Window().Status(1).find("loss"), CString::npos) << Window().Status(1);
}

TEST_F(ViewerTest, FindAndPickUpAskWithTheTemplates) {
    Open("one_core");
    const auto find = [&](const CString& shown, const CString& text) {
        boxes_.ExpectDialog([=](CDialog& dialog) {
            EXPECT_EQ(dialog.GetDlgItemText(ids::kFindText), shown);
            dialog.SetDlgItemText(ids::kFindText, text);
            dynamic_cast<CButton&>(*dialog.GetDlgItem(ids::kFindUp)).SetCheck(BST_CHECKED);
            dialog.SendMessage(WM_COMMAND, MakeCommand(ids::kFindNext));
        });
        CWnd::FromHandle(View(0))->OnCommand(ids::kSearch);
    };
    find("", "loc_mtx");
    boxes_.ExpectMessage("cannot be found");  // there is no other one before it
    find("loc_mtx", "loc");
    Press(1, 'S');
    boxes_.ExpectDialog([](CDialog& dialog) {
        auto& list = dynamic_cast<CCheckListBox&>(*dialog.GetDlgItem(ids::kPickUpList));
        ASSERT_GT(list.GetCount(), 0);
        dialog.SendMessage(WM_COMMAND, MakeCommand(IDOK));
        EXPECT_TRUE(dialog.IsWindowVisible()) << "nothing is ticked";
        list.SetCheck(0, 1);
        dialog.SendMessage(WM_COMMAND, MakeCommand(IDOK));
    });
    Press(1, 'P');
    VARIANT_BOOL active = VARIANT_FALSE;
    viewer_->Trace().IsPickUpActive(&active);
    EXPECT_EQ(active, VARIANT_TRUE);
}

TEST_F(ViewerTest, AWindowThatIsClosedLeavesItsRoomAndComesBack) {
    Open("one_core");
    const int whole = Window().GetClientRect().Width();
    const CRect area = PaneAt(0).GetClientRect();
    PaneAt(0).SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MakePointParam(area.right - 8, 10));
    ASSERT_EQ(PaneCount(), 1U);
    EXPECT_EQ(PaneAt(0).GetWindowRect().Width(), whole);
    ASSERT_TRUE(Window().Docking().GiveCommand(ids::kOpenOSTrace));
    test::Settle();
    ASSERT_EQ(PaneCount(), 2U);
    EXPECT_NE(Marks(1).find("Mark: "), CString::npos) << "it shows the recording";
}

TEST_F(ViewerTest, WhatCannotBeReadLeavesWhatIsOpen) {
    Open("one_core");
    boxes_.ExpectMessage("/nowhere.log");
    EXPECT_FALSE(viewer_->Open(Path("nowhere.log")));
    EXPECT_EQ(Window().GetWindowText(), "input.log — KVX Viewer");
}

TEST_F(ViewerTest, SettingsAreThereInTheNextRun) {
    Bstr text;
    const auto store = [&] {
        ViewerTexts texts(Path("kvxview.ini"));
        const WorkspaceKey users{};
        return texts.ReadText(&users, Bstr("OSTraceViewView").Get(), text.Receive());
    };
    EXPECT_NE(store(), S_OK);
    Open("one_core");
    Begin();
    EXPECT_EQ(store(), S_OK);
    EXPECT_NE(text.Utf8(), "");
    ViewerProperties properties(Path("kvxview.ini"));
    std::int32_t number = 7;
    EXPECT_NE(properties.GetNumber(Bstr("size").Get(), &number), S_OK);
    EXPECT_EQ(properties.SetText(Bstr("size").Get(), Bstr("").Get()), S_OK);
    EXPECT_NE(properties.GetNumber(Bstr("size").Get(), &number), S_OK) << "no number";
    EXPECT_EQ(properties.GetText(Bstr("size").Get(), text.Receive()), S_OK);
    EXPECT_EQ(properties.SetNumber(Bstr("size").Get(), -12), S_OK);
    EXPECT_EQ(properties.GetNumber(Bstr("size").Get(), &number), S_OK);
    EXPECT_EQ(number, -12);
}

}  // namespace
}  // namespace kvx::viewer
