#pragma once
// A picture of a recording as the OS Trace window paints it, made without a display.

#include <QImage>
#include <QSize>
#include <memory>
#include <optional>

#include "workbench/service/Recording.h"
#include "workbench/service/Result.h"

namespace kvx::desktop {

struct PictureRequest {
    QSize size{1600, 900};  // pixels of the window's content
    // Counts within the recording, start before end. Without one: where the trace starts (ends).
    std::optional<std::int64_t> start;
    std::optional<std::int64_t> end;
};

// Chooses the toolkit's offscreen platform. To be called before the application object is made.
void PrepareOffscreen();

// Needs the application object. The user's settings play no part in the picture.
Result<QImage> MakePicture(std::unique_ptr<service::Recording> recording,
                           const PictureRequest& request);

}  // namespace kvx::desktop
