#include "workbench/desktop/timing/TableDock.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QMessageBox>
#include <QVBoxLayout>
#include <algorithm>
#include <fstream>

#include "workbench/cli/TableOutput.h"
#include "workbench/desktop/QtText.h"

namespace kvx::desktop {
namespace {

constexpr int kMargin = 4;
constexpr int kWidest = 40;         // characters that a column is made wide for by itself
constexpr int kRowsLookedAt = 100;  // for that

}  // namespace

TableDock::TableDock(const QString& name, const AnalysisForm& form, QWidget* parent)
    : QDockWidget(FromUtf8(form.title), parent),
      model_(form),
      bar_(new QHBoxLayout),
      rows_(new QSplitter),
      filter_(new QLineEdit),
      count_(new QLabel),
      range_(new QLabel),
      words_(new QLabel),
      view_(new QTableView) {
    setObjectName(name);
    filter_->setPlaceholderText("Filter");
    filter_->setClearButtonEnabled(true);
    filter_->setMaximumWidth(260);
    bar_->addWidget(filter_);
    bar_->addWidget(count_);
    bar_->addWidget(range_);
    bar_->addStretch();
    words_->setAlignment(Qt::AlignCenter);
    words_->setWordWrap(true);
    view_->setModel(&model_);
    view_->setSelectionBehavior(QAbstractItemView::SelectRows);
    view_->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    view_->setSortingEnabled(true);
    view_->setWordWrap(false);
    view_->setAlternatingRowColors(true);
    view_->setContextMenuPolicy(Qt::CustomContextMenu);
    view_->horizontalHeader()->setHighlightSections(false);
    view_->verticalHeader()->hide();
    view_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kMargin);
    view_->horizontalHeader()->setResizeContentsPrecision(kRowsLookedAt);
    SetWidths(form);
    view_->horizontalHeader()->setStretchLastSection(form.columns.back().kind == ValueKind::Text);
    view_->installEventFilter(this);
    filter_->installEventFilter(this);

    rows_->addWidget(view_);
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    column->addLayout(bar_);
    column->addWidget(words_, 1);
    column->addWidget(rows_, 1);
    setWidget(content);
    setFocusProxy(view_);

    connect(view_->horizontalHeader(), &QHeaderView::sectionResized, this, [this](int section) {
        // The last one follows the room that there is.
        const bool follows = section == model_.columnCount() - 1;
        if (widths_ != Widths::BeingFitted && !follows) widths_ = Widths::Users;
    });
    connect(filter_, &QLineEdit::textChanged, this,
            [this](const QString& text) { model_.Filter(text); });
    connect(view_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& now) { Selected(now); });
    connect(view_, &QTableView::clicked, this, [this](const QModelIndex& at) { Selected(at); });
    connect(view_, &QTableView::activated, this, [this](const QModelIndex& index) {
        if (onOpened) onOpened(model_.RowOf(index));
    });
    connect(view_, &QTableView::customContextMenuRequested, this,
            [this](const QPoint& at) { ShowMenu(at); });
    model_.onRows = [this] {
        ShowCount();
        FitWidths();
    };
    Say({});
}

void TableDock::Show(std::shared_ptr<const Analysis> analysis) {
    Say({});
    model_.Show(std::move(analysis));
}

// As the columns ask for, until there are rows.
void TableDock::SetWidths(const AnalysisForm& form) {
    int section = 0;
    for (const AnalysisColumn& column : form.columns)
        view_->setColumnWidth(section++, (column.width + 2) * fontMetrics().averageCharWidth());
}

// Wide enough for the first rows of a recording, but for the last column, which has the rest of the
// room.
void TableDock::FitWidths() {
    if (widths_ != Widths::ToFit || model_.rowCount() == 0) return;
    widths_ = Widths::BeingFitted;
    const int widest = kWidest * fontMetrics().averageCharWidth();
    for (int section = 0; section < model_.columnCount() - 1; ++section) {
        view_->resizeColumnToContents(section);
        view_->setColumnWidth(section, std::min(view_->columnWidth(section), widest));
    }
    widths_ = Widths::Fitted;
}

void TableDock::Say(const QString& text) {
    words_->setText(text);
    words_->setVisible(!text.isEmpty());
    rows_->setVisible(text.isEmpty());
    filter_->setEnabled(text.isEmpty());
    if (text.isEmpty()) return;
    model_.Show(nullptr);
    if (widths_ == Widths::Fitted) widths_ = Widths::ToFit;
}

void TableDock::PutBeside(QWidget& choice, QWidget& picture) {
    bar_->addWidget(&choice);
    rows_->addWidget(&picture);
    rows_->setStretchFactor(0, 3);
    rows_->setStretchFactor(1, 1);
}

void TableDock::Select(int row) {
    const QModelIndex index = model_.Find(row);
    if (!index.isValid()) return;
    view_->setCurrentIndex(index);
    view_->selectRow(index.row());
    view_->scrollTo(index);
}

void TableDock::Selected(const QModelIndex& index) {
    if (index.isValid() && onSelected) onSelected(model_.RowOf(index), index.column());
}

void TableDock::ShowCount() {
    if (!model_.Shown()) return count_->clear();
    const int shown = model_.rowCount();
    const int all = model_.Shown()->RowCount();
    count_->setText(shown == all ? QStringLiteral("%L1").arg(all)
                                 : QStringLiteral("%L1 of %L2").arg(shown).arg(all));
}

// Keys of the table: copy; Esc in the filter clears it, and an arrow goes to the rows.
bool TableDock::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)
        return QDockWidget::eventFilter(watched, event);
    auto* key = static_cast<QKeyEvent*>(event);
    if (watched == view_ && key->matches(QKeySequence::Copy)) {
        if (event->type() == QEvent::KeyPress) Copy();
        event->accept();
        return true;
    }
    if (watched == filter_ && event->type() == QEvent::KeyPress) {
        if (key->key() == Qt::Key_Escape) filter_->clear();
        if (key->key() == Qt::Key_Down || key->key() == Qt::Key_Return) {
            view_->setFocus();
            if (!view_->currentIndex().isValid() && model_.rowCount() > 0) view_->selectRow(0);
        }
    }
    return QDockWidget::eventFilter(watched, event);
}

void TableDock::Copy() {
    std::vector<int> places;
    for (const QModelIndex& index : view_->selectionModel()->selectedRows())
        places.push_back(index.row());
    if (places.empty()) return;
    std::ranges::sort(places);
    QApplication::clipboard()->setText(model_.Texts(places));
}

void TableDock::Save() {
    const QString path = QFileDialog::getSaveFileName(this, "Save " + windowTitle() + " As",
                                                      objectName() + ".csv", "CSV (*.csv)");
    if (path.isEmpty()) return;
    std::ofstream file(QFile::encodeName(path).toStdString(), std::ios::binary);
    cli::WriteTableCsv(file, *model_.Shown(), model_.rowCount(),
                       [this](int k) { return model_.RowOf(model_.index(k, 0)); });
    file.close();
    if (!file) QMessageBox::warning(this, "Cannot Save Table", path + " cannot be written.");
}

void TableDock::ShowMenu(const QPoint& at) {
    QMenu menu;
    menu.addAction("&Copy", QKeySequence::Copy, this, [this] { Copy(); })
        ->setEnabled(view_->selectionModel()->hasSelection());
    menu.addAction("Select &All", QKeySequence::SelectAll, view_, &QTableView::selectAll);
    menu.addAction("Save as CS&V…", this, [this] { Save(); })->setEnabled(model_.Shown());
    menu.exec(view_->viewport()->mapToGlobal(at));
}

}  // namespace kvx::desktop
