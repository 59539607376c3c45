#include "workbench/desktop/services/FindDialog.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "workbench/desktop/QtText.h"

namespace kvx::desktop {

FindDialog::FindDialog(const service::SearchCondition& condition, const QStringList& history,
                       QWidget* parent)
    : QDialog(parent),
      text_(new QComboBox),
      matchCase_(new QCheckBox("Match &Case")),
      wildCard_(new QCheckBox("Wild Card")),
      up_(new QRadioButton("&Up")),
      down_(new QRadioButton("&Down")) {
    setWindowTitle("Find");
    text_->setEditable(true);
    text_->setCompleter(nullptr);  // what is typed is what is looked for
    text_->setMinimumWidth(260);
    text_->lineEdit()->setPlaceholderText("In name, parameters or return");
    text_->addItems(history);
    text_->setCurrentText(FromUtf8(condition.text));
    text_->lineEdit()->selectAll();
    matchCase_->setChecked(condition.matchCase);
    wildCard_->setChecked(condition.wildCard);
    wildCard_->setToolTip("* stands for any characters, ? for one");
    (condition.upwards ? up_ : down_)->setChecked(true);

    auto* label = new QLabel("Find What:");
    label->setBuddy(text_);
    auto* group = new QGroupBox("Find Condition");
    auto* grid = new QGridLayout(group);
    grid->addWidget(label, 0, 0);
    grid->addWidget(text_, 0, 1, 1, 3);
    grid->addWidget(matchCase_, 1, 0, 1, 2);
    grid->addWidget(wildCard_, 2, 0, 1, 2);
    grid->addWidget(new QLabel("Direction:"), 1, 2);
    grid->addWidget(up_, 1, 3);
    grid->addWidget(down_, 2, 3);

    auto* box = new QDialogButtonBox(Qt::Vertical);
    QPushButton* find = box->addButton("&Find Next", QDialogButtonBox::AcceptRole);
    box->addButton("Close", QDialogButtonBox::RejectRole);
    find->setDefault(true);
    connect(box, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    const auto allow = [this, find] { find->setEnabled(!text_->currentText().isEmpty()); };
    connect(text_, &QComboBox::currentTextChanged, this, allow);
    allow();

    auto* row = new QHBoxLayout(this);
    row->addWidget(group, 1);
    row->addWidget(box);
}

service::SearchCondition FindDialog::Condition() const {
    return {text_->currentText().toStdString(), matchCase_->isChecked(), wildCard_->isChecked(),
            up_->isChecked()};
}

}  // namespace kvx::desktop
