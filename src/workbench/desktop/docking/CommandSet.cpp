#include "workbench/desktop/docking/CommandSet.h"

#include <QMenu>

#include "workbench/desktop/QtText.h"

namespace kvx::desktop {
namespace {

// A command may end its own registration, so its action outlives the signal that it sends.
void Discard(QAction* action) {
    for (QObject* object : action->associatedObjects()) {
        if (auto* widget = qobject_cast<QWidget*>(object)) widget->removeAction(action);
    }
    action->disconnect();
    action->deleteLater();
}

}  // namespace

CommandSet::~CommandSet() {
    for (const auto& [key, action] : actions_) Discard(action);
    for (QAction* separator : separators_) Discard(separator);
}

QAction* CommandSet::Action(IQCommandTarget* target, std::uint32_t command) {
    QAction*& action = actions_[{target, command}];
    if (action) return action;
    action = new QAction;
    action->setData(command);
    QObject::connect(action, &QAction::triggered,
                     [this, target, command] { run_(target, command); });
    return action;
}

IQCommandTarget* CommandSet::TargetOf(std::uint32_t command) const {
    for (const auto& [key, action] : actions_) {
        if (key.second == command) return key.first;
    }
    return nullptr;
}

QAction* CommandSet::Separator() {
    auto* separator = new QAction;
    separator->setSeparator(true);
    separators_.push_back(separator);
    return separator;
}

void CommandSet::Update() {
    // The answers first: asking must not meet a set that changes.
    std::vector<std::pair<QAction*, CommandState>> answers;
    for (const auto& [key, action] : actions_) {
        CommandState state;
        if (Failed(key.first->OnUpdateCommand(key.second, &state))) state = {0, 0};
        answers.emplace_back(action, state);
    }
    for (const auto& [action, state] : answers) {
        action->setEnabled(state.enabled != 0);
        if (state.checked != 0) action->setCheckable(true);
        action->setChecked(state.checked != 0);
    }
}

void SetPrompt(QAction& action, const char16_t* prompt) {
    if (!prompt) return;
    const QString text = FromBstr(prompt);
    const qsizetype newline = text.indexOf('\n');
    action.setStatusTip(text.left(newline));
    if (newline >= 0) action.setToolTip(text.mid(newline + 1));
}

}  // namespace kvx::desktop
