// Dialogs made from templates, as this toolkit shows them: places, pictures, boxes above them.

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

class ValueDialog : public CDialog {
  public:
    explicit ValueDialog(CWnd* parent = nullptr) : CDialog(9005, parent) {}
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

TEST_F(DialogTest, TheCaptionsCloseButtonCancels) {
    boxes.LeaveToTheUser();
    ValueDialog dialog(&top);
    Soon([&] { Widget(dialog)->close(); });
    EXPECT_EQ(dialog.DoModal(), static_cast<int>(IDCANCEL));
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
