// The toolkit's own dialogs and menus behind those of the platform layer.

#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <QMenu>

#include "platform/dialogs/ColorDialog.h"
#include "platform/dialogs/FileDialog.h"
#include "platform/windows/Menu.h"
#include "platform_qt/QtFixture.h"

namespace {

class StandardDialogTest : public kvx::test::QtFixture {
  protected:
    StandardDialogTest() { boxes.LeaveToTheUser(); }
    template <class T>
    static T* Modal() {
        return qobject_cast<T*>(QApplication::activeModalWidget());
    }
};

TEST_F(StandardDialogTest, FilesAreSavedWhereTheUserSays) {
    const QString folder = QDir::tempPath();
    CFileDialog dialog(false, "csv", folder.toStdString() + "/*.csv", OFN_PATHMUSTEXIST,
                       "CSV(Comma separeted values)*.csv|*.csv|All Files(*.*)|*.*||");
    dialog.SetTitle("Save Analysis Data");
    Soon([&] {
        auto* const shown = Modal<QFileDialog>();
        ASSERT_NE(shown, nullptr);
        EXPECT_EQ(shown->windowTitle(), "Save Analysis Data");
        EXPECT_EQ(shown->acceptMode(), QFileDialog::AcceptSave);
        EXPECT_EQ(shown->directory().absolutePath(), QDir(folder).absolutePath());
        ASSERT_EQ(shown->nameFilters().size(), 2);
        EXPECT_TRUE(shown->nameFilters()[0].endsWith("(*.csv)"));
        shown->selectFile("kvx_no_such_table");
        QMetaObject::invokeMethod(shown, "accept");
    });
    EXPECT_EQ(dialog.DoModal(), static_cast<int>(IDOK));
    EXPECT_EQ(dialog.GetPathName(), folder.toStdString() + "/kvx_no_such_table.csv");
    Soon([] { Modal<QFileDialog>()->reject(); });
    EXPECT_EQ(dialog.DoModal(), static_cast<int>(IDCANCEL));
}

TEST_F(StandardDialogTest, ColoursAreChosen) {
    CColorDialog dialog(RGB(10, 20, 30));
    Soon([] {
        auto* const shown = Modal<QColorDialog>();
        ASSERT_NE(shown, nullptr);
        EXPECT_EQ(shown->currentColor(), QColor(10, 20, 30));
        shown->setCurrentColor(QColor(200, 100, 50));
        shown->accept();
    });
    EXPECT_EQ(dialog.DoModal(), static_cast<int>(IDOK));
    EXPECT_EQ(dialog.GetColor(), RGB(200, 100, 50));
}

class Menus : public CWnd {
  public:
    UINT ran = 0;

  protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageMapEntry kEntries[] = {
            ON_COMMAND_RANGE<100, 109, &Menus::OnRun>(),
            ON_UPDATE_COMMAND_UI<101, &Menus::OnUpdate>(),
        };
        static const MessageMap kMap{&CWnd::GetMessageMap(), kEntries};
        return kMap;
    }
    void OnRun(UINT id) { ran = id; }
    void OnUpdate(CCmdUI& ui) { ui.SetCheck(); }
};

TEST_F(StandardDialogTest, PopupMenusRunTheChosenCommand) {
    Menus window;
    MakeTop(window);
    CMenu menu;
    menu.AppendMenu(MF_STRING, 100, "&First");
    menu.AppendMenu(MF_SEPARATOR);
    CMenu* const more = menu.AppendPopup("&More");
    more->AppendMenu(MF_STRING, 101, "&Second");
    more->AppendMenu(MF_STRING, 200, "Nobody's");
    Soon([] {
        auto* const shown = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(shown, nullptr);
        ASSERT_EQ(shown->actions().size(), 3);
        EXPECT_TRUE(shown->actions()[1]->isSeparator());
        QMenu* const inner = shown->actions()[2]->menu();
        ASSERT_NE(inner, nullptr);
        EXPECT_TRUE(inner->actions()[0]->isChecked());
        EXPECT_FALSE(inner->actions()[1]->isEnabled());
        shown->setActiveAction(shown->actions()[0]);
        QTest::keyClick(shown, Qt::Key_Return);
    });
    EXPECT_EQ(menu.TrackPopupMenu({10, 10}, &window), 100u);
    EXPECT_EQ(window.ran, 100u);
}

}  // namespace
