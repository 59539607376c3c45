#pragma once
// Reads a recording on a thread of its own, so that the window stays alive, with progress and
// cancel.

#include <QWidget>
#include <functional>
#include <memory>

#include "workbench/formats/OpenRecording.h"

namespace kvx::desktop {

using OpenedRecording = Result<std::unique_ptr<service::Recording>>;
// Runs on the thread. It stops soon after the progress answers false; what it throws becomes an
// error.
using ReadRecording = std::function<OpenedRecording(formats::IOpenProgress& progress)>;

// Answers what read answers. When that takes noticeable time, a dialog over the parent shows the
// name and how far it is, and lets the user cancel it; the error is then marked as cancelled.
OpenedRecording ReadInBackground(const QString& name, const ReadRecording& read, QWidget* parent);

}  // namespace kvx::desktop
