#pragma once
// The picture by which the desktop shows the program, in every size.

#include <QIcon>

namespace kvx::desktop {

// Made from the same file as the icon that is installed for the desktop.
QIcon ApplicationIcon();

}  // namespace kvx::desktop
