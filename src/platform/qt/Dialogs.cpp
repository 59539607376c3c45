#include "platform/qt/Dialogs.h"

#include <QAction>
#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <QMenuBar>
#include <QMessageBox>

#include "platform/dialogs/MessageBox.h"
#include "platform/qt/Convert.h"
#include "platform/qt/PlainWindow.h"
#include "platform/windows/Menu.h"

namespace kvx::qt {

namespace {

struct BoxButton {
    UINT id;
    QMessageBox::StandardButton button;
};

std::vector<BoxButton> ButtonsOf(UINT type) {
    const BoxButton ok{IDOK, QMessageBox::Ok};
    const BoxButton cancel{IDCANCEL, QMessageBox::Cancel};
    const BoxButton yes{IDYES, QMessageBox::Yes};
    const BoxButton no{IDNO, QMessageBox::No};
    const BoxButton retry{IDRETRY, QMessageBox::Retry};
    switch (type & MB_TYPEMASK) {
        case MB_OKCANCEL:
            return {ok, cancel};
        case MB_YESNO:
            return {yes, no};
        case MB_YESNOCANCEL:
            return {yes, no, cancel};
        case MB_RETRYCANCEL:
            return {retry, cancel};
        case MB_ABORTRETRYIGNORE:
            return {{IDABORT, QMessageBox::Abort}, retry, {IDIGNORE, QMessageBox::Ignore}};
        default:
            return {ok};
    }
}

QMessageBox::Icon IconOf(UINT type) {
    switch (type & MB_ICONMASK) {
        case MB_ICONERROR:
            return QMessageBox::Critical;
        case MB_ICONQUESTION:
            return QMessageBox::Question;
        case MB_ICONEXCLAMATION:
            return QMessageBox::Warning;
        case MB_ICONINFORMATION:
            return QMessageBox::Information;
        default:
            return QMessageBox::NoIcon;
    }
}

QStringList NameFilters(const std::vector<FileFilter>& filters) {
    QStringList names;
    for (const FileFilter& filter : filters) {
        QString patterns = ToQString(filter.patterns);
        patterns.replace(';', ' ').replace(QLatin1String("*.*"), QLatin1String("*"));
        names << ToQString(filter.label).replace('(', '[').replace(')', ']') + " (" + patterns +
                     ")";
    }
    return names;
}

// The popup's actions carry their commands as data.
void Fill(QMenu& shown, const CMenu& menu) {
    for (const CMenu::Item& item : menu.Items()) {
        if (item.IsSeparator()) {
            shown.addSeparator();
        } else if (item.popup) {
            Fill(*shown.addMenu(ToQString(item.text)), *item.popup);
        } else {
            QAction* const action = shown.addAction(ToQString(item.text));
            action->setData(item.id);
            action->setEnabled(item.enabled);
            action->setCheckable(item.checked);
            action->setChecked(item.checked);
        }
    }
}

void Read(const QList<QAction*>& actions, CMenu& menu) {
    for (const QAction* action : actions) {
        const CString text = ToCString(action->text());
        if (action->isSeparator())
            menu.AppendMenu(MF_SEPARATOR);
        else if (const QMenu* popup = action->menu())
            Read(popup->actions(), *menu.AppendPopup(text));
        else
            menu.AppendMenu(
                (action->isEnabled() ? 0 : MF_GRAYED) | (action->isChecked() ? MF_CHECKED : 0),
                action->data().toUInt(), text);
    }
}

}  // namespace

int QtDialogs::MessageBox(const MessageBoxRequest& request) {
    QMessageBox box(IconOf(request.type), ToQString(request.caption), ToQString(request.text),
                    QMessageBox::NoButton, ToWidget(request.owner));
    box.setTextFormat(Qt::PlainText);
    const auto buttons = ButtonsOf(request.type);
    for (const BoxButton& each : buttons) box.addButton(each.button);
    const std::size_t first = request.type & MB_DEFBUTTON2 && buttons.size() > 1 ? 1 : 0;
    box.setDefaultButton(buttons[first].button);
    const int chosen = box.exec();
    for (const BoxButton& each : buttons)
        if (each.button == chosen) return static_cast<int>(each.id);
    return static_cast<int>(buttons.size() == 1 ? buttons[0].id : IDCANCEL);
}

CString QtDialogs::File(const FileDialogRequest& request) {
    QFileDialog dialog(ToWidget(request.owner), ToQString(request.title));
    dialog.setAcceptMode(request.open ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);  // asked by the layer above
    dialog.setNameFilters(NameFilters(request.filters));
    if (!request.directory.empty()) dialog.setDirectory(ToQString(request.directory));
    if (!request.name.empty()) dialog.selectFile(ToQString(request.name));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
    return ToCString(dialog.selectedFiles().constFirst());
}

std::optional<COLORREF> QtDialogs::Colour(COLORREF initial, HWND owner) {
    const QColor chosen = QColorDialog::getColor(ToQColor(initial), ToWidget(owner));
    return chosen.isValid() ? std::optional(ToColour(chosen)) : std::nullopt;
}

UINT QtDialogs::PopupMenu(const CMenu& menu, POINT screen) {
    QMenu shown;
    Fill(shown, menu);
    const QAction* const chosen = shown.exec(ToQPoint(screen));
    return chosen ? chosen->data().toUInt() : 0;
}

bool QtDialogs::ReadMenuBar(HWND window, CMenu& menu) {
    const auto* const bar =
        ToWidget(window)->findChild<QMenuBar*>(QString(), Qt::FindDirectChildrenOnly);
    if (bar) Read(bar->actions(), menu);
    return bar != nullptr;
}

void QtDialogs::RunModal(HWND window) {
    if (auto* plain = PlainWindow::Of(ToWidget(window))) plain->RunModal();
}

void QtDialogs::EndModal(HWND window) {
    if (auto* plain = PlainWindow::Of(ToWidget(window))) plain->EndModal();
}

}  // namespace kvx::qt
