// Dialogs on the toolkit's windows and controls: what the user's keys and mouse do in them, and
// modal life.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/base/Keys.h"
#include "platform/controls/Button.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/Edit.h"
#include "platform/controls/ListBox.h"
#include "platform/dialogs/Dialog.h"
#include "platform/dialogs/MessageBox.h"
#include "platform/windows/Menu.h"
#include "platform_qt/SampleDialogs.h"
#include "support/UnexpectedBoxes.h"
#include "support/toolkit/Toolkit.h"

namespace kvx::test {
namespace {

using Log = std::vector<std::string>;

class ValueDialog : public CDialog {
  public:
    explicit ValueDialog(CWnd* parent = nullptr) : CDialog(9005, parent) {}
    Log log;
    bool staysOpen = false;
    // Commands as the controls of the template give them.
    template <class T>
    T* Item(UINT id) const {
        return dynamic_cast<T*>(GetDlgItem(id));
    }

  protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageMapEntry kEntries[] = {
            ON_CONTROL<EN_CHANGE, 4068, &ValueDialog::OnHours>(),
            ON_BN_CLICKED<1047, &ValueDialog::OnCase>(),
            ON_COMMAND_RANGE<1025, 1060, &ValueDialog::OnRadio>(),
            ON_CONTROL<CBN_SELCHANGE, 1037, &ValueDialog::OnCombo>(),
            ON_CONTROL<CLBN_CHKCHANGE, 1038, &ValueDialog::OnList>(),
        };
        static const MessageMap kMap{&CDialog::GetMessageMap(), kEntries};
        return kMap;
    }
    void OnHours() { log.push_back("hours"); }
    void OnCase() { log.push_back("case"); }
    void OnRadio(UINT id) { log.push_back("radio " + std::to_string(id)); }
    void OnCombo() { log.push_back("combo"); }
    void OnList() { log.push_back("list"); }
    void OnOK() override {
        log.push_back("ok");
        if (!staysOpen) CDialog::OnOK();
    }
};

// Pixels that differ, of pictures of one size.
int CountOther(const Surface& one, const Surface& other) {
    int count = 0;
    for (int y = 0; y < one.DeviceSize().cy; ++y)
        for (int x = 0; x < one.DeviceSize().cx; ++x) count += one.At(x, y) != other.At(x, y);
    return count;
}

class DialogFlow : public testing::Test {
  protected:
    void SetUp() override {
        SetResourceTable(&SampleTable());
        ASSERT_TRUE(top.Create(WS_POPUP | WS_CAPTION | WS_SYSMENU, {0, 0, 400, 300}, nullptr, 0));
        top.ShowWindow(SW_SHOW);
        Settle();
    }
    void TearDown() override {
        top.DestroyWindow();
        SetResourceTable(nullptr);
    }
    static void Open(ValueDialog& dialog, CWnd& owner) {
        ASSERT_TRUE(dialog.Create(9005, &owner));
        dialog.ShowWindow(SW_SHOW);
        Settle();
    }
    UnexpectedBoxes boxes;
    CWnd top;
};

TEST_F(DialogFlow, FieldsAreTypedInAndTell) {
    ValueDialog dialog;
    Open(dialog, top);
    auto* const hours = dialog.Item<CEdit>(4068);
    ASSERT_NE(hours, nullptr);
    EXPECT_EQ(CWnd::GetFocus(), hours) << "the first that Tab reaches";
    hours->SetLimitText(4);
    for (const UINT digit : {0x31u, 0x32u, 0x33u, 0x34u, 0x35u}) TypeKey(digit);
    EXPECT_EQ(hours->GetWindowText(), "1234");
    EXPECT_GE(dialog.log.size(), 4u) << "a toolkit may tell of the refused digit as well";
    hours->SetSel(0, -1);
    int start = -1, end = -1;
    hours->GetSel(start, end);
    EXPECT_EQ(start, 0);
    EXPECT_EQ(end, 4);
    TypeKey(0x39);
    EXPECT_EQ(dialog.GetDlgItemText(4068), "9");
}

TEST_F(DialogFlow, ButtonsTellOfTheUserAlone) {
    ValueDialog dialog;
    Open(dialog, top);
    auto* const matchCase = dialog.Item<CButton>(1047);
    matchCase->SetCheck(BST_CHECKED);
    EXPECT_TRUE(dialog.log.empty()) << "the program's own change is not told";
    ClickMouse(matchCase->m_hWnd, {8, 8});
    EXPECT_EQ(matchCase->GetCheck(), BST_UNCHECKED);
    EXPECT_EQ(dialog.log, (Log{"case"}));

    auto* const up = dialog.Item<CButton>(1050);
    auto* const down = dialog.Item<CButton>(1025);
    auto* const full = dialog.Item<CButton>(1060);
    full->SetCheck(1);
    up->SetCheck(1);
    EXPECT_EQ(full->GetCheck(), 1) << "another group";
    ClickMouse(down->m_hWnd, {8, 8});
    EXPECT_EQ(up->GetCheck(), 0);
    EXPECT_EQ(down->GetCheck(), 1);
    EXPECT_EQ(full->GetCheck(), 1);
    EXPECT_EQ(dialog.log.back(), "radio 1025");
}

TEST_F(DialogFlow, ListsHoldTheirItems) {
    ValueDialog dialog;
    ASSERT_TRUE(dialog.Create(9005, &top));
    auto* const combo = dialog.Item<CComboBox>(1037);
    auto* const list = dialog.Item<CCheckListBox>(1038);
    ASSERT_TRUE(combo && list);
    EXPECT_EQ(combo->AddString("slp_tsk"), 0);
    EXPECT_EQ(combo->AddString("wai_sem"), 1);
    EXPECT_EQ(combo->GetCurSel(), -1);
    combo->SetCurSel(1);
    EXPECT_EQ(combo->GetWindowText(), "wai_sem");
    EXPECT_EQ(combo->FindStringExact("slp"), -1);
    combo->SetWindowText("typed");
    EXPECT_EQ(combo->GetWindowText(), "typed");
    combo->ResetContent();
    EXPECT_EQ(combo->GetCount(), 0);

    for (const char* name : {"one", "two", "three"}) list->AddString(name);
    list->SetCheck(1, 1);
    list->SetCurSel(2);
    list->DeleteString(0);
    EXPECT_EQ(list->GetCount(), 2);
    EXPECT_EQ(list->GetText(0), "two");
    EXPECT_EQ(list->GetCheck(0), 1);
    EXPECT_EQ(list->GetCheck(1), 0);
    EXPECT_EQ(list->GetCurSel(), 1);
    EXPECT_TRUE(list->GetSel(1));
    EXPECT_EQ(list->GetText(7), "");
    EXPECT_TRUE(dialog.log.empty());
}

TEST_F(DialogFlow, BoxesOfAListAreTurnedByTheUser) {
    ValueDialog dialog;
    Open(dialog, top);
    auto* const list = dialog.Item<CCheckListBox>(1038);
    list->AddString("one");
    list->AddString("two");
    list->SetFocus();
    list->SetCurSel(1);
    Settle();
    const Surface unchecked = ScreenOf(list->m_hWnd);
    TypeKey(VK_SPACE);
    EXPECT_GT(CountOther(unchecked, ScreenOf(list->m_hWnd)), 0) << "the mark is seen";
    EXPECT_EQ(list->GetCheck(0), 0);
    EXPECT_EQ(list->GetCheck(1), 1);
    EXPECT_EQ(dialog.log, (Log{"list"}));
    list->SetCheck(1, 0);
    EXPECT_EQ(dialog.log, (Log{"list"})) << "the program's own change is not told";
}

TEST_F(DialogFlow, TabWalksInTheOrderOfTheTemplate) {
    ValueDialog dialog;
    Open(dialog, top);
    std::vector<UINT> order;
    for (int i = 0; i < 7; ++i) {
        order.push_back(CWnd::GetFocus() ? CWnd::GetFocus()->GetDlgCtrlID() : 0);
        TypeKey(VK_TAB);
    }
    EXPECT_EQ(order, (std::vector<UINT>{4068, 1047, 1050, 1037, 1038, IDOK, IDCANCEL}));
}

TEST_F(DialogFlow, ModalDialogsBlockTheirOwner) {
    boxes.LeaveToTheUser();
    ValueDialog dialog(&top);
    bool looked = false;
    Soon([&] {
        looked = true;
        EXPECT_TRUE(dialog.IsWindowVisible());
        EXPECT_FALSE(top.IsWindowEnabled());
        EXPECT_TRUE(dialog.IsWindowEnabled());
        ClickMouse(dialog.GetDlgItem(IDOK)->m_hWnd, {5, 5});
    });
    EXPECT_EQ(dialog.DoModal(), static_cast<int>(IDOK));
    EXPECT_TRUE(looked);
    EXPECT_TRUE(top.IsWindowEnabled());
    EXPECT_FALSE(dialog.IsWindow());
}

TEST_F(DialogFlow, EnterAndEscapeAnswerIt) {
    boxes.LeaveToTheUser();
    ValueDialog dialog(&top);
    dialog.staysOpen = true;
    Soon([&] {
        Settle();
        TypeKey(VK_RETURN);  // in the edit field: the default button
        dialog.GetDlgItem(1047)->SetFocus();
        TypeKey(VK_RETURN);
        EXPECT_EQ(dialog.log, (Log{"ok", "ok"}));
        dialog.GetDlgItem(IDCANCEL)->SetFocus();
        TypeKey(VK_RETURN);  // the button that has the focus
    });
    EXPECT_EQ(dialog.DoModal(), static_cast<int>(IDCANCEL));
    Soon([&] {
        Settle();
        TypeKey(VK_ESCAPE);
    });
    EXPECT_EQ(dialog.DoModal(), static_cast<int>(IDCANCEL));
}

TEST_F(DialogFlow, MessageBoxesNestAndAnswer) {
    boxes.LeaveToTheUser();
    ValueDialog dialog(&top);
    int answer = 0;
    Soon([&] {
        Soon([&] {
            EXPECT_FALSE(dialog.IsWindowEnabled());
            AnswerBox(IDYES);
        });
        answer = dialog.MessageBox("Replace <it>?", "Error",
                                   MB_YESNO | MB_ICONEXCLAMATION | MB_DEFBUTTON2);
        EXPECT_TRUE(dialog.IsWindowEnabled());
        dialog.EndDialog(42);
    });
    EXPECT_EQ(dialog.DoModal(), 42);
    EXPECT_EQ(answer, static_cast<int>(IDYES));
}

TEST_F(DialogFlow, PopupMenusAnswerTheCommand) {
    boxes.LeaveToTheUser();
    CMenu menu;
    menu.CreatePopupMenu();
    menu.AppendMenu(0, 101, "One");
    menu.AppendMenu(MF_SEPARATOR);
    menu.AppendMenu(MF_CHECKED, 40000, "Two");
    Soon([] { ChooseInMenu(1); });
    EXPECT_EQ(Backend().Dialogs().PopupMenu(menu, {20, 20}), 40000u);
}

}  // namespace
}  // namespace kvx::test
