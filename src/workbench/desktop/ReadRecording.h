#pragma once
// Reads a recording in the background, so that the window stays alive, with progress and cancel.

#include <QWidget>
#include <memory>

#include "workbench/formats/OpenRecording.h"

namespace kvx::desktop {

// Reads the file or folder. When that takes noticeable time, a dialog over the parent shows how far
// it is and lets the user cancel it; the error is then marked as cancelled.
Result<std::unique_ptr<service::Recording>> ReadRecording(const QString& path, QWidget* parent);

}  // namespace kvx::desktop
