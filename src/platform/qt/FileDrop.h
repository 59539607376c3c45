#pragma once
// Dropped files for windows that know the toolkit's drops but not the platform layer's messages.

#include <QWidget>

#include "platform/windows/DropTarget.h"

namespace kvx::qt {

// Drops the files on the widget as if the user had; true when it accepted them. The handle stays
// the caller's.
bool DropFilesOn(QWidget* widget, HDROP drop);

}  // namespace kvx::qt
