#include "workbench/desktop/services/PickUpDialog.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QVBoxLayout>

#include "workbench/desktop/QtText.h"

namespace kvx::desktop {
namespace {

constexpr int kNameRole = Qt::UserRole;

// Sorts counts as numbers.
class CallItem final : public QTreeWidgetItem {
  public:
    explicit CallItem(const service::NameCount& call) : count_(call.count) {
        setText(0, FromUtf8(call.name));
        setText(1, CountText(call.count));
        setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
        setData(0, kNameRole, QByteArray::fromStdString(call.name));
        setCheckState(0, Qt::Unchecked);
    }
    bool operator<(const QTreeWidgetItem& other) const override {
        if (treeWidget()->sortColumn() != 1) return QTreeWidgetItem::operator<(other);
        return count_ < static_cast<const CallItem&>(other).count_;
    }

  private:
    std::uint32_t count_;
};

}  // namespace

PickUpDialog::PickUpDialog(const std::vector<service::NameCount>& calls, QWidget* parent)
    : QDialog(parent), filter_(new QLineEdit), list_(new QTreeWidget) {
    setWindowTitle("Pick Up System Call");
    filter_->setPlaceholderText("Show only names with…");
    filter_->setClearButtonEnabled(true);
    Fill(calls);

    auto* all = new QPushButton("&All");
    auto* none = new QPushButton("&None");
    connect(all, &QPushButton::clicked, this, [this] { TickVisible(true); });
    connect(none, &QPushButton::clicked, this, [this] { TickVisible(false); });
    auto* top = new QHBoxLayout;
    top->addWidget(filter_, 1);
    top->addWidget(all);
    top->addWidget(none);

    auto* box = new QDialogButtonBox(QDialogButtonBox::Cancel);
    accept_ = box->addButton("&Pick Up", QDialogButtonBox::AcceptRole);
    connect(box, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(filter_, &QLineEdit::textChanged, this,
            [this](const QString& text) { ShowMatching(text); });
    connect(list_, &QTreeWidget::itemChanged, this, [this] { CountTicked(); });
    CountTicked();

    auto* column = new QVBoxLayout(this);
    column->addWidget(new QLabel("The history shows only the system calls that are ticked."));
    column->addLayout(top);
    column->addWidget(list_, 1);
    column->addWidget(box);
    resize(420, 460);
}

void PickUpDialog::Fill(const std::vector<service::NameCount>& calls) {
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setAlternatingRowColors(true);
    list_->setHeaderLabels({"System Call", "Count"});
    list_->headerItem()->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
    list_->header()->setStretchLastSection(false);
    list_->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    for (const service::NameCount& call : calls) list_->addTopLevelItem(new CallItem(call));
    list_->sortByColumn(0, Qt::AscendingOrder);
    list_->setSortingEnabled(true);
}

void PickUpDialog::ShowMatching(const QString& text) {
    for (int i = 0; i < list_->topLevelItemCount(); ++i) {
        QTreeWidgetItem* item = list_->topLevelItem(i);
        item->setHidden(!item->text(0).contains(text, Qt::CaseInsensitive));
    }
}

void PickUpDialog::TickVisible(bool tick) {
    for (int i = 0; i < list_->topLevelItemCount(); ++i) {
        QTreeWidgetItem* item = list_->topLevelItem(i);
        if (!item->isHidden()) item->setCheckState(0, tick ? Qt::Checked : Qt::Unchecked);
    }
}

void PickUpDialog::CountTicked() {
    accept_->setEnabled(!Chosen().names.empty());
}

service::PickUp PickUpDialog::Chosen() const {
    service::PickUp chosen;
    for (int i = 0; i < list_->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* item = list_->topLevelItem(i);
        if (item->checkState(0) != Qt::Checked) continue;
        chosen.names.push_back(item->data(0, kNameRole).toByteArray().toStdString());
    }
    return chosen;
}

}  // namespace kvx::desktop
