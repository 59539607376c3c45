#include "workbench/desktop/docking/CommandToolbar.h"

#include <QVariant>

#include "workbench/desktop/docking/ToolbarIcon.h"

namespace kvx::desktop {
namespace {

constexpr int kIconSide = 16;

}  // namespace

CommandToolbar::CommandToolbar(const QString& name, const QString& title, Settings& settings)
    : QToolBar(title), settings_(settings) {
    setObjectName(name);
    setIconSize({kIconSide, kIconSide});
    setVisible(settings_.Get("Toolbars/" + name + "/shown").toString() != "no");
}

void CommandToolbar::AddButtons(const ToolbarButton* buttons, std::uint32_t count,
                                IQCommandTarget* target, CommandSet& commands) {
    for (std::uint32_t i = 0; i < count; ++i) {
        offered_.push_back(buttons[i].command);
        if (buttons[i].command == 0) continue;
        QAction* action = commands.Action(target, buttons[i].command);
        SetPrompt(*action, buttons[i].prompt);
        if (buttons[i].pixels) action->setIcon(MakeToolbarIcon(buttons[i].pixels));
        actions_.emplace_back(action);
    }
    const QVariant chosen = settings_.Get("Toolbars/" + objectName() + "/buttons");
    if (!chosen.isValid()) return Show(offered_);
    Arrangement arrangement;
    for (const QString& id : chosen.toStringList()) arrangement.push_back(id.toUInt());
    Show(arrangement);
}

void CommandToolbar::SetShown(bool shown) {
    setVisible(shown);
    settings_.Set("Toolbars/" + objectName() + "/shown", shown ? "yes" : "no");
}

CommandToolbar::Arrangement CommandToolbar::Current() const {
    Arrangement current;
    for (const QAction* action : actions()) {
        current.push_back(action->isSeparator() ? 0 : action->data().toUInt());
    }
    return current;
}

void CommandToolbar::Arrange(const Arrangement& arrangement) {
    Show(arrangement);
    if (arrangement == offered_) {
        settings_.Set("Toolbars/" + objectName() + "/buttons", QVariant());
        return;
    }
    QStringList ids;
    for (const std::uint32_t command : arrangement) ids.append(QString::number(command));
    settings_.Set("Toolbars/" + objectName() + "/buttons", ids);
}

QAction* CommandToolbar::Find(std::uint32_t command) const {
    for (QAction* action : actions_) {
        if (action && action->data().toUInt() == command) return action;
    }
    return nullptr;
}

void CommandToolbar::Show(const Arrangement& arrangement) {
    clear();
    for (const std::uint32_t command : arrangement) {
        if (command == 0) {
            addSeparator();
        } else if (QAction* action = Find(command)) {
            addAction(action);
        }
    }
}

}  // namespace kvx::desktop
