#pragma once
// The back-end on Qt 6 Widgets. Each module of a process installs its own copy; all share one
// application object.

namespace kvx {

// Makes the toolkit the back-end of this module's platform layer. Idempotent. Creates the
// application object when the process has none yet (with the platform that QT_QPA_PLATFORM names,
// offscreen when there is no display). False: the process has one that can show no windows, and
// there is no back-end.
bool InstallQtBackend();

// Forgets everything that this module keeps in the toolkit; its windows must be gone. The
// application object goes too when InstallQtBackend made it.
void RemoveQtBackend();

}  // namespace kvx
