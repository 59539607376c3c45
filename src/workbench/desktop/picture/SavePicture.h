#pragma once
// Makes a picture and writes it, in a program that has no window.

#include <string>

#include "workbench/cli/Streams.h"
#include "workbench/desktop/picture/Picture.h"

namespace kvx::desktop {

// Makes its own application object, so it is called at most once and from main. output "-" is
// standard output. Null: why is on the error stream.
std::optional<service::LossCounters> SavePicture(std::unique_ptr<service::TraceService> trace,
                                                 const PictureRequest& request,
                                                 const std::string& output,
                                                 const cli::Streams& streams);

}  // namespace kvx::desktop
