// Look-ups in a resource table, and what is made of them: menus, dialogs, cursors.

#include <gtest/gtest.h>

#include "platform/controls/Button.h"
#include "platform/controls/Static.h"
#include "platform/windows/Cursor.h"
#include "platform/windows/Menu.h"
#include "support/FakeBackend.h"
#include "support/UnexpectedBoxes.h"

namespace {

constexpr StringResource kStrings[] = {{101, "OS Trace"}, {47100, "Move\nStart Marker"}};
constexpr MenuItemResource kRange[] = {{"&Full", 47106}, {"F&ree", 47107}};
constexpr MenuItemResource kTrace[] = {
    {"&Start Marker", 47100}, {nullptr, 0}, {"Trace &Range", 0, kRange, 2}, {"&Color...", 47111}};
constexpr MenuResource kMenus[] = {{202, kTrace, 4}};
constexpr UINT kButtons[] = {47100, 0, 47111};
constexpr ToolbarResource kToolbars[] = {{204, kButtons, 3, 16, 16, nullptr, 2}};
constexpr std::uint32_t kPixels[4] = {1, 2, 3, 4};
constexpr CursorResource kCursors[] = {{9012, 2, 2, 1, 0, kPixels}};
constexpr ControlResource kControls[] = {
    {ControlClass::Static, 9007, "Label", 7, 7, 40, 8, 0},
    {ControlClass::Button, 50, "Frame", 0, 0, 100, 40, BS_GROUPBOX},
    {ControlClass::Button, IDOK, "OK", 7, 25, 50, 14, WS_TABSTOP | BS_DEFPUSHBUTTON},
    {ControlClass::Button, IDCANCEL, "Cancel", 60, 25, 50, 14, WS_TABSTOP},
};
constexpr DialogResource kDialogs[] = {
    {9000, "Color...", 120, 40, "MS Sans Serif", 8, WS_POPUP | WS_CAPTION, kControls, 4}};

ResourceTable MakeTable() {
    ResourceTable table;
    table.strings = kStrings;
    table.stringCount = 2;
    table.menus = kMenus;
    table.menuCount = 1;
    table.toolbars = kToolbars;
    table.toolbarCount = 1;
    table.cursors = kCursors;
    table.cursorCount = 1;
    table.dialogs = kDialogs;
    table.dialogCount = 1;
    return table;
}

class ResourcesTest : public testing::Test {
  protected:
    ResourcesTest() { SetResourceTable(&table); }
    ~ResourcesTest() override { SetResourceTable(nullptr); }
    ResourceTable table = MakeTable();
    kvx::test::FakeBackend backend;
    kvx::test::UnexpectedBoxes boxes;
};

TEST_F(ResourcesTest, LookUps) {
    EXPECT_EQ(LoadString(101), "OS Trace");
    EXPECT_EQ(LoadString(102), "");
    EXPECT_EQ(FindString(102), nullptr);
    EXPECT_EQ(FindMenu(202).size(), 4u);
    EXPECT_TRUE(FindMenu(203).empty());
    ASSERT_NE(FindToolbar(204), nullptr);
    EXPECT_EQ(FindToolbar(204)->buttons[2], 47111u);
    EXPECT_EQ(FindBitmap(1), nullptr);
    EXPECT_TRUE(FindAccelerators(1).empty());
    ResourceTable newer = table;
    newer.version = kResourceTableVersion + 1;
    SetResourceTable(&newer);
    EXPECT_EQ(LoadString(101), "") << "a table of another version is not read";
}

TEST_F(ResourcesTest, MenusAreReadByPositionAndByCommand) {
    CMenu menu;
    EXPECT_FALSE(menu.LoadMenu(1));
    ASSERT_TRUE(menu.LoadMenu(202));
    EXPECT_EQ(menu.GetMenuItemCount(), 4);
    EXPECT_EQ(menu.GetMenuItemID(0), 47100u);
    EXPECT_EQ(menu.GetMenuItemID(1), 0u);
    EXPECT_EQ(menu.GetMenuItemID(2), 0xFFFFFFFFu);
    EXPECT_EQ(menu.GetMenuItemID(9), 0xFFFFFFFFu);
    CString text;
    EXPECT_EQ(menu.GetMenuString(2, text, MF_BYPOSITION), 12);
    EXPECT_EQ(text, "Trace &Range");
    EXPECT_EQ(menu.GetMenuString(47107, text, MF_BYCOMMAND), 5) << "inside the popup";
    EXPECT_EQ(menu.GetMenuString(4711, text, MF_BYCOMMAND), 0);
    EXPECT_EQ(text, "");
    ASSERT_NE(menu.GetSubMenu(2), nullptr);
    EXPECT_EQ(menu.GetSubMenu(2)->GetMenuItemCount(), 2);
    EXPECT_EQ(menu.GetSubMenu(0), nullptr);
    EXPECT_TRUE(menu.DeleteMenu(47106, MF_BYCOMMAND));
    EXPECT_TRUE(menu.DeleteMenu(1, MF_BYPOSITION));
    EXPECT_FALSE(menu.DeleteMenu(47106, MF_BYCOMMAND));
    EXPECT_EQ(menu.GetMenuItemCount(), 3);
    EXPECT_EQ(menu.GetSubMenu(1)->GetMenuItemCount(), 1);
}

class Commands : public CWnd {
  public:
    std::vector<UINT> ran;

  protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageMapEntry kEntries[] = {
            ON_COMMAND_RANGE<47100, 47110, &Commands::OnRun>(),
            ON_UPDATE_COMMAND_UI<47106, &Commands::OnUpdateFull>(),
        };
        static const MessageMap kMap{&CWnd::GetMessageMap(), kEntries};
        return kMap;
    }
    void OnRun(UINT id) { ran.push_back(id); }
    void OnUpdateFull(CCmdUI& ui) {
        ui.SetCheck();
        ui.SetText("All");
    }
};

TEST_F(ResourcesTest, PopupMenusShowTheStateOfTheirCommands) {
    Commands window;
    ASSERT_TRUE(window.Create(WS_POPUP, {0, 0, 9, 9}, nullptr, 0));
    CMenu menu;
    ASSERT_TRUE(menu.LoadMenu(202));
    boxes.ExpectMenu(47107);
    EXPECT_EQ(menu.TrackPopupMenu({0, 0}, &window), 47107u);
    EXPECT_EQ(boxes.LastMenu(), "&Start Marker\n\nTrace &Range\nAll *\nF&ree\n&Color... (off)\n");
    EXPECT_EQ(window.ran, std::vector<UINT>{47107});
    boxes.ExpectMenu(0);
    EXPECT_EQ(menu.TrackPopupMenu({0, 0}, &window), 0u);
    EXPECT_EQ(window.ran.size(), 1u);
}

TEST_F(ResourcesTest, CursorsOutliveTheirTable) {
    const HCURSOR cursor = LoadCursor(9012);
    ASSERT_NE(cursor, nullptr);
    EXPECT_EQ(LoadCursor(9012), cursor);
    EXPECT_NE(cursor->image->pixels, kPixels);
    EXPECT_EQ(cursor->image->pixels[3], 4u);
    EXPECT_EQ(LoadCursor(1), nullptr);
    EXPECT_EQ(LoadStandardCursor(IDC_SIZEWE), LoadStandardCursor(IDC_SIZEWE));
}

TEST_F(ResourcesTest, DialogUnitsFollowTheFont) {
    CDialog dialog;
    EXPECT_FALSE(dialog.Create(1, nullptr));
    ASSERT_TRUE(dialog.Create(9000, nullptr));
    // Characters are 8 wide, lines 16 high: a unit is 2 x 2 pixels.
    EXPECT_EQ(dialog.GetClientRect().Size(), (SIZE{240, 80}));
    CWnd* const ok = dialog.GetDlgItem(IDOK);
    ASSERT_NE(ok, nullptr);
    EXPECT_NE(dynamic_cast<CButton*>(ok), nullptr);
    EXPECT_NE(dynamic_cast<CStatic*>(dialog.GetDlgItem(9007)), nullptr);
    EXPECT_EQ(backend.windows.Bounds(ok->m_hWnd), (RECT{14, 50, 114, 78}));
    EXPECT_EQ(dialog.GetDlgItemText(9007), "Label");
    EXPECT_EQ(dialog.GetWindowText(), "Color...");
    EXPECT_EQ(CWnd::GetFocus(), ok) << "the first control that Tab reaches";
    EXPECT_EQ(dialog.GetDefID(), IDOK);
}

class Answer : public CDialog {
  public:
    Answer() : CDialog(9000) {}
    CButton bound;
    bool saved = false;

  protected:
    void DoDataExchange(CDataExchange* exchange) override {
        DDX_Control(exchange, IDCANCEL, bound);
        saved = exchange->m_bSaveAndValidate;
    }
};

TEST_F(ResourcesTest, ModalDialogsAnswerWhatEndedThem) {
    Answer dialog;
    boxes.ExpectDialog([&](CDialog& shown) {
        EXPECT_EQ(&shown, &dialog);
        EXPECT_EQ(shown.GetDlgItem(IDCANCEL), &dialog.bound) << "taken over by the member";
        EXPECT_TRUE(shown.GetDlgItem(9007)->IsWindowVisible());
        shown.SendMessage(WM_COMMAND, MakeCommand(IDOK));
    });
    EXPECT_EQ(dialog.DoModal(), static_cast<int>(IDOK));
    EXPECT_TRUE(dialog.saved);
    EXPECT_FALSE(dialog.IsWindow());

    boxes.ExpectDialog([](CDialog&) {});
    EXPECT_EQ(dialog.DoModal(), static_cast<int>(IDCANCEL)) << "a dialog that nobody ended";
    SetResourceTable(nullptr);
    EXPECT_EQ(dialog.DoModal(), -1);
}

TEST_F(ResourcesTest, ModalLoopsRunInTheBackEnd) {
    boxes.LeaveToTheUser();
    CDialog dialog(9000);
    backend.dialogs.onModal = [&](HWND window) {
        EXPECT_EQ(window, dialog.m_hWnd);
        dialog.SendMessage(WM_KEYDOWN, 27);
    };
    EXPECT_EQ(dialog.DoModal(), static_cast<int>(IDCANCEL)) << "Escape cancels";
}

}  // namespace
