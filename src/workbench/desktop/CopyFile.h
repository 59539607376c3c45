#pragma once
// Copies a file.

#include <QString>

namespace kvx::desktop {

// A file that is there already is replaced only when all is written. A text that says what failed,
// or an empty one.
QString CopyFile(const QString& from, const QString& to);

}  // namespace kvx::desktop
