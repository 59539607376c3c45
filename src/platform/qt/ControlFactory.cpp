#include "platform/qt/ControlFactory.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>

#include "platform/base/Styles.h"
#include "platform/qt/Convert.h"
#include "platform/qt/NativeControl.h"
#include "platform/windows/Wnd.h"

namespace kvx::qt {

namespace {

void Notify(const QWidget* control, UINT code) {
    const OwnWindow::EventScope scope;
    SendMessage(ToHandle(control->parentWidget()), WM_COMMAND, MakeCommand(WindowId(control), code),
                reinterpret_cast<LPARAM>(control));
}

template <class Control, class Signal>
void NotifyOn(Control* control, Signal signal, UINT code) {
    QObject::connect(control, signal, control, [control, code] { Notify(control, code); });
}

// A radio button with WS_GROUP begins a group; the others join the one made last.
void JoinGroup(QRadioButton* button, bool first) {
    QButtonGroup* group = nullptr;
    if (!first)
        for (const auto* sibling : button->parentWidget()->findChildren<QRadioButton*>(
                 QString(), Qt::FindDirectChildrenOnly))
            if (sibling->group()) group = sibling->group();
    if (!group) group = new QButtonGroup(button->parentWidget());
    group->addButton(button);
}

QWidget* MakeButton(const WindowRequest& request, QWidget* parent, IWindowSink* sink) {
    QAbstractButton* button = nullptr;
    if (request.kind == WindowKind::CheckBox) {
        button = new NativeControl<QCheckBox>(parent, sink);
    } else if (request.kind == WindowKind::RadioButton) {
        auto* const radio = new NativeControl<QRadioButton>(parent, sink);
        JoinGroup(radio, (request.style & WS_GROUP) != 0);
        button = radio;
    } else {
        button = new NativeControl<QPushButton>(parent, sink);
    }
    NotifyOn(button, &QAbstractButton::clicked, BN_CLICKED);
    return button;
}

QWidget* MakeEdit(const WindowRequest& request, QWidget* parent, IWindowSink* sink) {
    if (request.kind == WindowKind::TextEdit) {
        auto* const edit = new NativeControl<QPlainTextEdit>(parent, sink);
        edit->setReadOnly((request.style & ES_READONLY) != 0);
        NotifyOn(edit, &QPlainTextEdit::textChanged, EN_CHANGE);
        return edit;
    }
    auto* const edit = new NativeControl<QLineEdit>(parent, sink);
    edit->setReadOnly((request.style & ES_READONLY) != 0);
    if (request.style & ES_NUMBER)
        edit->setValidator(
            new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), edit));
    NotifyOn(edit, &QLineEdit::textChanged, EN_CHANGE);
    return edit;
}

QWidget* MakeCombo(const WindowRequest& request, QWidget* parent, IWindowSink* sink) {
    auto* const combo = new NativeControl<QComboBox>(parent, sink);
    combo->setEditable((request.style & CBS_DROPDOWNLIST) == CBS_DROPDOWN);
    combo->setInsertPolicy(QComboBox::NoInsert);
    NotifyOn(combo, &QComboBox::currentIndexChanged, CBN_SELCHANGE);
    NotifyOn(combo, &QComboBox::editTextChanged, CBN_EDITCHANGE);
    return combo;
}

QWidget* MakeList(const WindowRequest& request, QWidget* parent, IWindowSink* sink) {
    auto* const list = new NativeControl<QListWidget>(parent, sink);
    if (request.style & LBS_EXTENDEDSEL)
        list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    else if (request.style & LBS_MULTIPLESEL)
        list->setSelectionMode(QAbstractItemView::MultiSelection);
    list->setSortingEnabled((request.style & LBS_SORT) != 0);
    list->setProperty("kvxCheckBoxes", (request.style & LBS_CHECKBOXES) != 0);
    NotifyOn(list, &QListWidget::itemSelectionChanged, LBN_SELCHANGE);
    NotifyOn(list, &QListWidget::itemDoubleClicked, LBN_DBLCLK);
    NotifyOn(list, &QListWidget::itemChanged, CLBN_CHKCHANGE);
    return list;
}

QWidget* MakeByKind(const WindowRequest& request, QWidget* parent, IWindowSink* sink) {
    switch (request.kind) {
        case WindowKind::Edit:
        case WindowKind::TextEdit:
            return MakeEdit(request, parent, sink);
        case WindowKind::ComboBox:
            return MakeCombo(request, parent, sink);
        case WindowKind::ListBox:
            return MakeList(request, parent, sink);
        case WindowKind::ProgressBar: {
            auto* const bar = new NativeControl<QProgressBar>(parent, sink);
            bar->setTextVisible(false);
            return bar;
        }
        default:
            return MakeButton(request, parent, sink);
    }
}

}  // namespace

QWidget* MakeControl(const WindowRequest& request, QWidget* parent, IWindowSink* sink) {
    QWidget* const control = MakeByKind(request, parent, sink);
    if (request.kind != WindowKind::ProgressBar)
        control->setFocusPolicy(request.style & WS_TABSTOP ? Qt::StrongFocus : Qt::ClickFocus);
    return control;
}

}  // namespace kvx::qt
