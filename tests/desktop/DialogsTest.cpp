// The questions of the trace service, answered as a user would.

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "workbench/desktop/services/FindDialog.h"
#include "workbench/desktop/services/PickUpDialog.h"
#include "workbench/desktop/services/ServiceDialogs.h"
#include "workbench/desktop/window/ReadingDialog.h"

namespace kvx::desktop {
namespace {

template <class Button = QAbstractButton>
Button* Find(QWidget& dialog, const QString& text) {
    for (auto* button : dialog.findChildren<Button*>()) {
        if (button->text().remove('&') == text) return button;
    }
    ADD_FAILURE() << "no button " << text.toStdString();
    return nullptr;
}

// Runs the steps once a modal dialog is up.
template <class Steps>
void WhenAsked(Steps steps) {
    QTimer::singleShot(0, [steps] { steps(*QApplication::activeModalWidget()); });
}

TEST(ReadingDialog, WhatIsTypedIsUsedByEveryRecordingThatIsOpened) {
    Settings settings;
    EXPECT_EQ(ReadingOptions(settings).frequency, 0u);
    ReadingDialog dialog(settings, nullptr);
    auto* frequency = dialog.findChild<QLineEdit*>("frequency");
    auto* folder = dialog.findChild<QLineEdit*>("descriptions");
    QTest::keyClicks(frequency, "fast");
    WhenAsked([](QWidget& box) { static_cast<QDialog&>(box).accept(); });  // it is no frequency
    dialog.accept();
    EXPECT_EQ(dialog.result(), 0);
    frequency->setText("32.768 kHz");
    folder->setText("/nowhere at all");
    WhenAsked([](QWidget& box) { static_cast<QDialog&>(box).accept(); });
    dialog.accept();
    EXPECT_EQ(dialog.result(), 0);
    folder->setText(QDir::tempPath());
    dialog.findChild<QComboBox*>("calls")->setCurrentText("SEGGER");
    dialog.accept();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    const auto options = ReadingOptions(settings);
    EXPECT_EQ(options.frequency, 32768u);
    EXPECT_EQ(options.calls, "segger");
    EXPECT_EQ(options.descriptions, QDir::tempPath().toStdString());
    // The next time it stands as it was left.
    ReadingDialog again(settings, nullptr);
    EXPECT_EQ(again.findChild<QComboBox*>("calls")->currentText(), "SEGGER");
    EXPECT_EQ(again.findChild<QLineEdit*>("frequency")->text(), "32.768 kHz");
}

TEST(FindDialog, SixControlsMakeTheCondition) {
    Settings settings;
    ServiceDialogs dialogs(settings, nullptr);
    service::SearchCondition condition;
    WhenAsked([](QWidget& dialog) {
        EXPECT_FALSE(Find(dialog, "Find Next")->isEnabled()) << "nothing to find yet";
        EXPECT_TRUE(Find(dialog, "Down")->isChecked());
        QTest::keyClicks(dialog.findChild<QComboBox*>(), "wai_*");
        Find(dialog, "Match Case")->click();
        Find(dialog, "Wild Card")->click();
        Find(dialog, "Up")->click();
        Find(dialog, "Find Next")->click();
    });
    ASSERT_TRUE(dialogs.AskSearchCondition(condition));
    EXPECT_EQ(condition.text, "wai_*");
    EXPECT_TRUE(condition.matchCase && condition.wildCard && condition.upwards);

    // The next time it stands as it was left, with what was searched for before.
    service::SearchCondition next = condition;
    WhenAsked([](QWidget& dialog) {
        auto* text = dialog.findChild<QComboBox*>();
        EXPECT_EQ(text->currentText(), "wai_*");
        EXPECT_EQ(text->itemText(0), "wai_*");
        EXPECT_TRUE(Find(dialog, "Up")->isChecked());
        text->setCurrentText("ercd=-50");
        Find(dialog, "Down")->click();
        Find(dialog, "Find Next")->click();
    });
    ASSERT_TRUE(dialogs.AskSearchCondition(next));
    EXPECT_FALSE(next.upwards);

    WhenAsked([](QWidget& dialog) {
        auto* text = dialog.findChild<QComboBox*>();
        EXPECT_EQ(text->itemText(0), "ercd=-50");
        EXPECT_EQ(text->itemText(1), "wai_*");
        text->setCurrentText("given up");
        Find(dialog, "Close")->click();
    });
    EXPECT_FALSE(dialogs.AskSearchCondition(next));
    EXPECT_EQ(next.text, "ercd=-50") << "untouched when the user gives up";
}

// What was searched for before completes nothing, and the first Enter searches.
TEST(FindDialog, LooksForWhatIsTyped) {
    Settings settings;
    settings.Set("Find/history", QStringList({"wai_sem", "WAI_FLG"}));
    ServiceDialogs dialogs(settings, nullptr);
    service::SearchCondition condition;
    for (const QString typed : {"wai", "WAI"}) {
        WhenAsked([typed](QWidget& dialog) {
            auto* edit = dialog.findChild<QComboBox*>()->lineEdit();
            edit->clear();
            QTest::keyClicks(edit, typed);
            EXPECT_EQ(edit->text(), typed);
            QTest::keyClick(edit, Qt::Key_Return);
            if (dialog.isVisible()) {
                ADD_FAILURE() << "Enter was swallowed";
                static_cast<QDialog&>(dialog).reject();
            }
        });
        EXPECT_TRUE(dialogs.AskSearchCondition(condition));
        EXPECT_EQ(condition.text, typed.toStdString());
        EXPECT_EQ(dialogs.LastCondition().text, typed.toStdString());
    }
}

TEST(PickUpDialog, OffersCallsWithCountsToBeTicked) {
    Settings settings;
    ServiceDialogs dialogs(settings, nullptr);
    const std::vector<service::NameCount> calls = {
        {"act_tsk", 5}, {"sig_sem", 100}, {"wai_sem", 9}};
    service::PickUp chosen;
    WhenAsked([](QWidget& dialog) {
        auto* list = dialog.findChild<QTreeWidget*>();
        QAbstractButton* accept = Find(dialog, "Pick Up");
        EXPECT_FALSE(accept->isEnabled()) << "none ticked";
        list->sortByColumn(1, Qt::DescendingOrder);
        EXPECT_EQ(list->topLevelItem(0)->text(0), "sig_sem") << "100 is more than 9";
        // All and None mean what the filter shows.
        QTest::keyClicks(dialog.findChild<QLineEdit*>(), "SEM");
        Find(dialog, "All")->click();
        dialog.findChild<QLineEdit*>()->clear();
        list->topLevelItem(0)->setCheckState(0, Qt::Unchecked);
        EXPECT_TRUE(accept->isEnabled());
        accept->click();
    });
    ASSERT_TRUE(dialogs.AskPickUp(calls, chosen));
    EXPECT_EQ(chosen.names, std::vector<std::string>{"wai_sem"});

    WhenAsked([](QWidget& dialog) { Find(dialog, "Cancel")->click(); });
    EXPECT_FALSE(dialogs.AskPickUp(calls, chosen));
    EXPECT_EQ(chosen.names.size(), 1U);
}

}  // namespace
}  // namespace kvx::desktop
