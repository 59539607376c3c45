#include "workbench/desktop/docking/ToolbarDialog.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <algorithm>

namespace kvx::desktop {

ToolbarDialog::ToolbarDialog(CommandToolbar& toolbar, QWidget* parent)
    : QDialog(parent), toolbar_(toolbar), available_(new QListWidget), shown_(new QListWidget) {
    setWindowTitle("Customize Toolbar");
    auto* buttons = new QVBoxLayout;
    const auto button = [this, buttons](const QString& text, auto action) {
        auto* made = new QPushButton(text);
        connect(made, &QPushButton::clicked, this, action);
        buttons->addWidget(made);
    };
    buttons->addStretch();
    button("&Add", [this] { Add(); });
    button("&Remove", [this] { Remove(); });
    button("Move &Up", [this] { Move(-1); });
    button("Move &Down", [this] { Move(1); });
    buttons->addStretch();

    auto* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel |
                                     QDialogButtonBox::RestoreDefaults);
    connect(box, &QDialogButtonBox::accepted, this, &ToolbarDialog::accept);
    connect(box, &QDialogButtonBox::rejected, this, &ToolbarDialog::reject);
    connect(box->button(QDialogButtonBox::RestoreDefaults), &QPushButton::clicked, this,
            [this] { Fill(toolbar_.Offered()); });

    auto* grid = new QGridLayout(this);
    grid->addWidget(new QLabel("Available commands:"), 0, 0);
    grid->addWidget(new QLabel("On the toolbar:"), 0, 2);
    grid->addWidget(available_, 1, 0);
    grid->addLayout(buttons, 1, 1);
    grid->addWidget(shown_, 1, 2);
    grid->addWidget(box, 2, 0, 1, 3);
    connect(available_, &QListWidget::itemDoubleClicked, this, [this] { Add(); });
    connect(shown_, &QListWidget::itemDoubleClicked, this, [this] { Remove(); });
    Fill(toolbar_.Current());
    resize(560, 380);
}

QListWidgetItem* ToolbarDialog::MakeItem(std::uint32_t command) const {
    auto* item = new QListWidgetItem;
    item->setData(Qt::UserRole, command);
    if (const QAction* action = toolbar_.Find(command)) {
        item->setText(action->toolTip());
        item->setIcon(action->icon());
    } else {
        QPixmap blank(toolbar_.iconSize());
        blank.fill(Qt::transparent);
        item->setText("(separator)");
        item->setIcon(blank);
    }
    return item;
}

void ToolbarDialog::Fill(const CommandToolbar::Arrangement& shown) {
    available_->clear();
    shown_->clear();
    for (const std::uint32_t command : shown) shown_->addItem(MakeItem(command));
    available_->addItem(MakeItem(0));
    for (const std::uint32_t command : toolbar_.Offered()) {
        if (command != 0 && std::ranges::find(shown, command) == shown.end()) {
            available_->addItem(MakeItem(command));
        }
    }
}

void ToolbarDialog::Add() {
    const QListWidgetItem* item = available_->currentItem();
    if (!item) return;
    const std::uint32_t command = item->data(Qt::UserRole).toUInt();
    const int row = shown_->currentRow() < 0 ? shown_->count() : shown_->currentRow() + 1;
    shown_->insertItem(row, MakeItem(command));
    shown_->setCurrentRow(row);
    if (command != 0) delete item;  // a separator can be added again
}

void ToolbarDialog::Remove() {
    QListWidgetItem* item = shown_->takeItem(shown_->currentRow());
    if (!item) return;
    if (item->data(Qt::UserRole).toUInt() == 0) {
        delete item;
    } else {
        available_->addItem(item);
    }
}

void ToolbarDialog::Move(int by) {
    const int from = shown_->currentRow();
    const int to = from + by;
    if (from < 0 || to < 0 || to >= shown_->count()) return;
    shown_->insertItem(to, shown_->takeItem(from));
    shown_->setCurrentRow(to);
}

CommandToolbar::Arrangement ToolbarDialog::Chosen() const {
    CommandToolbar::Arrangement chosen;
    for (int i = 0; i < shown_->count(); ++i) {
        chosen.push_back(shown_->item(i)->data(Qt::UserRole).toUInt());
    }
    return chosen;
}

void ToolbarDialog::accept() {
    toolbar_.Arrange(Chosen());
    QDialog::accept();
}

}  // namespace kvx::desktop
