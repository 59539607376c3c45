#pragma once
// The parts of the resource table, one file each.

#include <span>

#include "platform/base/Resources.h"

namespace kvx::resources {

std::span<const StringResource> Strings();
std::span<const MenuResource> Menus();
std::span<const ToolbarResource> Toolbars();
std::span<const DialogResource> Dialogs();
std::span<const CursorResource> Cursors();
// A menu's keys have the menu's id.
std::span<const AcceleratorTableResource> Accelerators();

// All of them.
const ResourceTable& Table();

}  // namespace kvx::resources
