#pragma once
// Menus described by a component, merged into menus of the toolkit.

#include <QMenu>

#include "host/DockingHost.h"
#include "workbench/desktop/docking/CommandSet.h"

namespace kvx::desktop {

// Appends the nodes to the container (a menu bar or a menu). A popup that the container has
// already, under the same text without "&", takes the node's children; a new one stands in before
// it, or at the end when before is null.
void MergeMenu(QWidget& container, const MenuNode* nodes, std::uint32_t count,
               IQCommandTarget* target, CommandSet& commands, QAction* before = nullptr);

// Removes the popups that MergeMenu made and that hold nothing any more.
void PruneMenus(QWidget& container);

}  // namespace kvx::desktop
