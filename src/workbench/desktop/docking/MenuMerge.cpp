#include "workbench/desktop/docking/MenuMerge.h"

#include <algorithm>

#include "workbench/desktop/QtText.h"

namespace kvx::desktop {
namespace {

constexpr char kMerged[] = "kvxMerged";

QString Plain(QString text) {
    return text.remove('&');
}

QMenu* FindPopup(const QWidget& container, const QString& text) {
    for (const QAction* action : container.actions()) {
        if (action->menu() && Plain(action->text()) == Plain(text)) return action->menu();
    }
    return nullptr;
}

QMenu* Popup(QWidget& container, const QString& text, QAction* before) {
    if (QMenu* found = FindPopup(container, text)) return found;
    auto* menu = new QMenu(text, &container);
    menu->setProperty(kMerged, true);
    menu->setToolTipsVisible(true);
    container.insertAction(before, menu->menuAction());
    return menu;
}

QAction* Command(const MenuNode& node, IQCommandTarget* target, CommandSet& commands) {
    QAction* action = commands.Action(target, node.command);
    action->setText(FromBstr(node.text));
    SetPrompt(*action, node.prompt);
    return action;
}

}  // namespace

void MergeMenu(QWidget& container, const MenuNode* nodes, std::uint32_t count,
               IQCommandTarget* target, CommandSet& commands, QAction* before) {
    for (std::uint32_t i = 0; i < count; ++i) {
        const MenuNode& node = nodes[i];
        if (!node.text) {
            container.insertAction(before, commands.Separator());
        } else if (node.childCount > 0) {
            MergeMenu(*Popup(container, FromBstr(node.text), before), node.children,
                      node.childCount, target, commands);
        } else {
            container.insertAction(before, Command(node, target, commands));
        }
    }
}

void PruneMenus(QWidget& container) {
    for (QAction* action : container.actions()) {
        QMenu* menu = action->menu();
        if (!menu) continue;
        PruneMenus(*menu);
        if (!menu->actions().isEmpty() || !menu->property(kMerged).toBool()) continue;
        container.removeAction(action);
        menu->deleteLater();
    }
}

}  // namespace kvx::desktop
