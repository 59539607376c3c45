#include "platform/qt/Controls.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalBlocker>

#include "platform/qt/Convert.h"

namespace kvx::qt {

namespace {

constexpr int kNoLimit = 32767;

// The control as that class of the toolkit, or null.
template <class T>
T* As(HWND window) {
    return qobject_cast<T*>(ToWidget(window));
}

QListWidgetItem* ItemOf(HWND list, int index) {
    const auto* const widget = As<QListWidget>(list);
    return widget ? widget->item(index) : nullptr;
}

}  // namespace

void QtControls::SetCheck(HWND button, bool checked) {
    if (auto* widget = As<QAbstractButton>(button)) widget->setChecked(checked);
}

bool QtControls::Check(HWND button) const {
    const auto* const widget = As<QAbstractButton>(button);
    return widget && widget->isChecked();
}

void QtControls::SetDefault(HWND button, bool isDefault) {
    if (auto* widget = As<QPushButton>(button)) widget->setDefault(isDefault);
}

void QtControls::Click(HWND button) {
    if (auto* widget = As<QAbstractButton>(button)) widget->click();
}

void QtControls::SetTextLimit(HWND edit, int characters) {
    if (auto* line = As<QLineEdit>(edit))
        line->setMaxLength(characters > 0 ? characters : kNoLimit);
}

void QtControls::SetSelection(HWND edit, int start, int end) {
    if (auto* line = As<QLineEdit>(edit)) {
        const int length = static_cast<int>(line->text().size());
        const int stop = end < 0 ? length : std::min(end, length);
        line->setSelection(std::min(start, stop), stop - std::min(start, stop));
    } else if (auto* text = As<QPlainTextEdit>(edit)) {
        QTextCursor cursor = text->textCursor();
        const int length = static_cast<int>(text->toPlainText().size());
        cursor.setPosition(std::min(start, length));
        cursor.setPosition(end < 0 ? length : std::min(end, length), QTextCursor::KeepAnchor);
        text->setTextCursor(cursor);
    }
}

void QtControls::Selection(HWND edit, int& start, int& end) const {
    if (const auto* line = As<QLineEdit>(edit)) {
        start = line->hasSelectedText() ? line->selectionStart() : line->cursorPosition();
        end = line->hasSelectedText() ? line->selectionEnd() : start;
    } else if (const auto* text = As<QPlainTextEdit>(edit)) {
        start = text->textCursor().selectionStart();
        end = text->textCursor().selectionEnd();
    }
}

void QtControls::SetReadOnly(HWND edit, bool readOnly) {
    if (auto* line = As<QLineEdit>(edit)) line->setReadOnly(readOnly);
    if (auto* text = As<QPlainTextEdit>(edit)) text->setReadOnly(readOnly);
}

int QtControls::AddItem(HWND list, const CString& text) {
    const QSignalBlocker silent(ToWidget(list));
    if (auto* combo = As<QComboBox>(list)) {
        combo->addItem(ToQString(text));
        if (combo->count() == 1) combo->setCurrentIndex(-1);  // adding chooses nothing
        return combo->count() - 1;
    }
    auto* const widget = As<QListWidget>(list);
    if (!widget) return -1;
    auto* const item = new QListWidgetItem(ToQString(text));
    if (widget->property("kvxCheckBoxes").toBool()) item->setCheckState(Qt::Unchecked);
    widget->addItem(item);
    return widget->row(item);
}

void QtControls::RemoveItem(HWND list, int index) {
    const QSignalBlocker silent(ToWidget(list));
    if (auto* combo = As<QComboBox>(list)) combo->removeItem(index);
    if (auto* widget = As<QListWidget>(list)) delete widget->takeItem(index);
}

void QtControls::ClearItems(HWND list) {
    const QSignalBlocker silent(ToWidget(list));
    if (auto* combo = As<QComboBox>(list)) combo->clear();
    if (auto* widget = As<QListWidget>(list)) widget->clear();
}

int QtControls::ItemCount(HWND list) const {
    if (const auto* combo = As<QComboBox>(list)) return combo->count();
    const auto* const widget = As<QListWidget>(list);
    return widget ? widget->count() : 0;
}

CString QtControls::ItemText(HWND list, int index) const {
    if (const auto* combo = As<QComboBox>(list)) return ToCString(combo->itemText(index));
    const QListWidgetItem* const item = ItemOf(list, index);
    return item ? ToCString(item->text()) : CString();
}

int QtControls::CurrentItem(HWND list) const {
    if (const auto* combo = As<QComboBox>(list)) return combo->currentIndex();
    const auto* const widget = As<QListWidget>(list);
    return widget ? widget->currentRow() : -1;
}

void QtControls::SetCurrentItem(HWND list, int index) {
    const QSignalBlocker silent(ToWidget(list));
    if (auto* combo = As<QComboBox>(list)) combo->setCurrentIndex(index);
    if (auto* widget = As<QListWidget>(list)) widget->setCurrentRow(index);
}

bool QtControls::ItemSelected(HWND list, int index) const {
    const QListWidgetItem* const item = ItemOf(list, index);
    return item && item->isSelected();
}

void QtControls::SelectItem(HWND list, int index, bool selected) {
    const QSignalBlocker silent(ToWidget(list));
    if (QListWidgetItem* item = ItemOf(list, index)) item->setSelected(selected);
}

bool QtControls::ItemChecked(HWND list, int index) const {
    const QListWidgetItem* const item = ItemOf(list, index);
    return item && item->checkState() == Qt::Checked;
}

void QtControls::CheckItem(HWND list, int index, bool checked) {
    const QSignalBlocker silent(ToWidget(list));
    if (QListWidgetItem* item = ItemOf(list, index))
        item->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
}

void QtControls::SetProgress(HWND bar, int lower, int upper, int position) {
    auto* const widget = As<QProgressBar>(bar);
    if (!widget) return;
    widget->setRange(lower, std::max(upper, lower + 1));  // equal ends would mean "busy"
    widget->setValue(position);
}

}  // namespace kvx::qt
