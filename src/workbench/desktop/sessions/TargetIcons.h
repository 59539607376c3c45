#pragma once
// The pictures of the target's toolbar, readable on light and dark.

#include <QIcon>

namespace kvx::desktop {

QIcon GoIcon();
QIcon StopIcon();
QIcon ResetIcon();

}  // namespace kvx::desktop
