#pragma once
// A picture of a recording as the OS Trace window paints it, made without a display.

#include <QImage>
#include <QSize>
#include <memory>
#include <optional>

#include "workbench/service/Result.h"
#include "workbench/service/TraceService.h"

namespace kvx::desktop {

struct PictureRequest {
    QSize size{1600, 900};  // pixels of the window's content
    // Counts within the recording, start before end. Without one: where the trace starts (ends).
    std::optional<std::int64_t> start;
    std::optional<std::int64_t> end;
};

// Chooses the toolkit's offscreen platform. To be called before the application object is made.
void PrepareOffscreen();

struct Picture {
    QImage image;
    service::LossCounters losses;  // found until it was painted
};

// Needs the application object. The user's settings play no part in the picture.
Result<Picture> MakePicture(std::unique_ptr<service::TraceService> trace,
                            const PictureRequest& request);

}  // namespace kvx::desktop
