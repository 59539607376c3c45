#pragma once
// Loops that dispatch the toolkit's events: modal ones, and the one that serves a single window
// while the rest of the program waits.

#include <QWidget>

namespace kvx::qt {

// Dispatches what waits for the window, its children and the windows it owns, without waiting for
// more. Input for other windows is put back into the queue, their timers come later, and windows of
// the platform layer among them get no message. Null: dispatches everything that waits.
void DispatchWaitingFor(QWidget* window);

// Whether events of the widget wait because another window alone is being served.
bool IsHeldBack(const QWidget* widget);

}  // namespace kvx::qt
