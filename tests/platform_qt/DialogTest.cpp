// Dialogs made from templates: places, texts, keys, modal life.

#include "platform/dialogs/Dialog.h"

#include <QMessageBox>
#include <QPushButton>

#include "platform/base/WinApp.h"
#include "platform/controls/Button.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/Edit.h"
#include "platform/controls/ListBox.h"
#include "platform/controls/ProgressCtrl.h"
#include "platform/controls/Static.h"
#include "platform_qt/QtFixture.h"
#include "platform_qt/SampleDialogs.h"

namespace {

using kvx::test::Log;

class ValueDialog : public CDialog {
  public:
    explicit ValueDialog(CWnd* parent = nullptr) : CDialog(9005, parent) {}
    Log log;
    bool staysOpen = false;

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

class DialogTest : public kvx::test::QtFixture {
  protected:
    void SetUp() override {
        SetResourceTable(&kvx::test::SampleTable());
        MakeTop(top);
    }
    void TearDown() override { SetResourceTable(nullptr); }
    template <class T>
    static T* Item(const CDialog& dialog, UINT id) {
        return dynamic_cast<T*>(dialog.GetDlgItem(id));
    }
    CWnd top;
};

TEST_F(DialogTest, EveryTextFitsItsControl) {
    ValueDialog dialog;
    ASSERT_TRUE(dialog.Create(9005, &top));
    for (const UINT id : {9000u, 1047u, 1050u, 1025u, 1060u, 1u, 2u}) {
        const CWnd* const item = dialog.GetDlgItem(id);
        ASSERT_NE(item, nullptr) << id;
        const QWidget* const widget = Widget(*item);
        const QFontMetrics metrics(widget->font());
        EXPECT_LE(metrics.horizontalAdvance(widget->windowTitle()), widget->width()) << id;
        EXPECT_LE(qobject_cast<const QPushButton*>(widget)
                      ? metrics.horizontalAdvance(QString::fromStdString(item->GetWindowText()))
                      : 0,
                  widget->width() - 4);
        EXPECT_LE(metrics.ascent() + metrics.descent(), widget->height() + 1) << id;
    }
    EXPECT_EQ(dialog.GetWindowText(), "Value...");
    const RECT client = dialog.GetClientRect();
    for (const QObject* child : Widget(dialog)->children()) {
        const auto* const widget = qobject_cast<const QWidget*>(child);
        if (!widget) continue;
        EXPECT_LE(widget->geometry().right(), client.right);
        EXPECT_LE(widget->geometry().bottom(), client.bottom);
    }
}

TEST_F(DialogTest, ControlsAnswerAndNotify) {
    ValueDialog dialog;
    ASSERT_TRUE(dialog.Create(9005, &top));
    ShowActive(dialog);
    auto* const hours = Item<CEdit>(dialog, 4068);
    ASSERT_NE(hours, nullptr);
    EXPECT_EQ(CWnd::GetFocus(), hours) << "the first that Tab reaches";
    hours->SetLimitText(4);
    for (const char digit : {'1', '2', '3', '4', '5'}) Type(dialog, digit);
    EXPECT_EQ(hours->GetWindowText(), "1234");
    EXPECT_EQ(dialog.log.size(), 4u);
    hours->SetSel(0, -1);
    int start = -1, end = -1;
    hours->GetSel(start, end);
    EXPECT_EQ(start, 0);
    EXPECT_EQ(end, 4);
    Type(dialog, '9');
    EXPECT_EQ(dialog.GetDlgItemText(4068), "9");

    auto* const matchCase = Item<CButton>(dialog, 1047);
    dialog.log.clear();
    matchCase->SetCheck(BST_CHECKED);
    EXPECT_TRUE(dialog.log.empty()) << "the program's own change is not told";
    Click(*matchCase, 8, 8);
    EXPECT_EQ(matchCase->GetCheck(), BST_UNCHECKED);
    EXPECT_EQ(dialog.log, (Log{"case"}));
}

TEST_F(DialogTest, RadioButtonsExcludeEachOtherInsideTheirGroup) {
    ValueDialog dialog;
    ASSERT_TRUE(dialog.Create(9005, &top));
    dialog.ShowWindow(SW_SHOW);
    auto* const up = Item<CButton>(dialog, 1050);
    auto* const down = Item<CButton>(dialog, 1025);
    auto* const full = Item<CButton>(dialog, 1060);
    full->SetCheck(1);
    up->SetCheck(1);
    EXPECT_EQ(full->GetCheck(), 1) << "another group";
    Click(*down, 8, 8);
    EXPECT_EQ(up->GetCheck(), 0);
    EXPECT_EQ(down->GetCheck(), 1);
    EXPECT_EQ(full->GetCheck(), 1);
    EXPECT_EQ(dialog.log, (Log{"radio 1025"}));
}

TEST_F(DialogTest, ListsHoldTheirItems) {
    ValueDialog dialog;
    ASSERT_TRUE(dialog.Create(9005, &top));
    auto* const combo = Item<CComboBox>(dialog, 1037);
    auto* const list = Item<CCheckListBox>(dialog, 1038);
    ASSERT_TRUE(combo && list);
    EXPECT_EQ(combo->AddString("slp_tsk"), 0);
    EXPECT_EQ(combo->AddString("wai_sem"), 1);
    EXPECT_EQ(combo->GetCurSel(), -1);
    combo->SetCurSel(1);
    EXPECT_EQ(combo->GetWindowText(), "wai_sem");
    EXPECT_EQ(combo->FindStringExact("slp_tsk"), 0);
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

TEST_F(DialogTest, ProgressFillsItsBar) {
    class Stop : public CDialog {
      public:
        CProgressCtrl bar;

      protected:
        void DoDataExchange(CDataExchange* exchange) override { DDX_Control(exchange, 9008, bar); }
    } dialog;
    ASSERT_TRUE(dialog.Create(9014, &top));
    EXPECT_TRUE(dialog.IsWindowVisible()) << "the template says visible";
    EXPECT_EQ(dialog.GetDlgItem(9008), &dialog.bar);
    const auto filled = [&] {
        const QImage picture = Widget(dialog.bar)->grab().toImage();
        const QRgb highlight = QApplication::palette().highlight().color().rgb();
        int count = 0;
        for (int x = 0; x < picture.width(); ++x) {
            const QColor pixel = picture.pixelColor(x, picture.height() / 2);
            count += qAbs(pixel.blue() - qBlue(highlight)) < 60 && pixel.blue() > pixel.red() + 40;
        }
        return 100 * count / picture.width();
    };
    dialog.bar.SetRange(0, 100);
    dialog.bar.SetPos(0);
    EXPECT_LT(filled(), 5);
    dialog.bar.SetPos(50);
    EXPECT_NEAR(filled(), 50, 8);
    EXPECT_EQ(dialog.bar.SetPos(100), 50);
    EXPECT_GT(filled(), 90);
}

TEST_F(DialogTest, SwatchesKeepTheirFrameAroundAnyFill) {
    ValueDialog dialog;
    ASSERT_TRUE(dialog.Create(9005, &top));
    dialog.ShowWindow(SW_SHOW);
    Settle();
    auto* const swatch = Item<CStatic>(dialog, 4082);
    ASSERT_NE(swatch, nullptr);
    RECT inside = swatch->GetWindowRect();
    swatch->ScreenToClient(&inside);
    inside.DeflateRect(1, 1);
    CBrush green(RGB(0, 200, 0));
    CClientDC(swatch).FillRect(inside, &green);
    const QImage picture = Widget(dialog)->grab().toImage();
    const QRect place = Widget(*swatch)->geometry();
    EXPECT_EQ(picture.pixel(place.topLeft()), qRgb(0, 0, 0));
    EXPECT_EQ(picture.pixel(place.bottomRight()), qRgb(0, 0, 0));
    EXPECT_EQ(picture.pixel(place.topLeft() + QPoint(1, 1)), qRgb(0, 200, 0));
    EXPECT_EQ(picture.pixel(place.bottomRight() - QPoint(1, 1)), qRgb(0, 200, 0));
}

TEST_F(DialogTest, ModalDialogsBlockTheirOwner) {
    boxes.LeaveToTheUser();
    ValueDialog dialog(&top);
    bool looked = false;
    Soon([&] {
        looked = true;
        EXPECT_TRUE(dialog.IsWindowVisible());
        EXPECT_FALSE(top.IsWindowEnabled());
        EXPECT_TRUE(dialog.IsWindowEnabled());
        Click(*dialog.GetDlgItem(IDOK), 5, 5);
    });
    EXPECT_EQ(dialog.DoModal(), static_cast<int>(IDOK));
    EXPECT_TRUE(looked);
    EXPECT_TRUE(top.IsWindowEnabled());
    EXPECT_FALSE(dialog.IsWindow());
}

TEST_F(DialogTest, EnterAndEscape) {
    boxes.LeaveToTheUser();
    ValueDialog dialog(&top);
    dialog.staysOpen = true;
    Soon([&] {
        Type(dialog, Qt::Key_Return);  // in the edit field: the default button
        dialog.GetDlgItem(1047)->SetFocus();
        Type(dialog, Qt::Key_Enter);
        EXPECT_EQ(dialog.log, (Log{"ok", "ok"}));
        dialog.GetDlgItem(IDCANCEL)->SetFocus();
        Type(dialog, Qt::Key_Return);  // the button that has the focus
    });
    EXPECT_EQ(dialog.DoModal(), static_cast<int>(IDCANCEL));
    Soon([&] { Type(dialog, Qt::Key_Escape); });
    EXPECT_EQ(dialog.DoModal(), static_cast<int>(IDCANCEL));
    Soon([&] { Widget(dialog)->close(); });
    EXPECT_EQ(dialog.DoModal(), static_cast<int>(IDCANCEL)) << "the caption's close button";
}

TEST_F(DialogTest, TabWalksInTheOrderOfTheTemplate) {
    ValueDialog dialog;
    ASSERT_TRUE(dialog.Create(9005, &top));
    ShowActive(dialog);
    std::vector<UINT> order;
    for (int i = 0; i < 7; ++i) {
        order.push_back(CWnd::GetFocus() ? CWnd::GetFocus()->GetDlgCtrlID() : 0);
        Type(dialog, Qt::Key_Tab);
    }
    EXPECT_EQ(order, (std::vector<UINT>{4068, 1047, 1050, 1037, 1038, IDOK, IDCANCEL}));
}

TEST_F(DialogTest, MessageBoxesNestAndAnswer) {
    boxes.LeaveToTheUser();
    ValueDialog dialog(&top);
    int answer = 0;
    Soon([&] {
        Soon([&] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->text(), "Replace <it>?");
            EXPECT_EQ(box->windowTitle(), "Error");
            EXPECT_EQ(box->icon(), QMessageBox::Warning);
            EXPECT_EQ(box->defaultButton(), box->button(QMessageBox::No));
            EXPECT_FALSE(dialog.IsWindowEnabled());
            box->button(QMessageBox::Yes)->click();
        });
        answer = dialog.MessageBox("Replace <it>?", "Error",
                                   MB_YESNO | MB_ICONEXCLAMATION | MB_DEFBUTTON2);
        dialog.EndDialog(42);
    });
    EXPECT_EQ(dialog.DoModal(), 42);
    EXPECT_EQ(answer, static_cast<int>(IDYES));
}

TEST_F(DialogTest, OpeningADialogTakesTheMouseAway) {
    top.SetCapture();
    boxes.ExpectDialog([](CDialog&) { EXPECT_EQ(CWnd::GetCapture(), nullptr); });
    ValueDialog dialog(&top);
    dialog.DoModal();
}

}  // namespace
