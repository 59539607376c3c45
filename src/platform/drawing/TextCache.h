#pragma once
// Text as the back-end renders it, kept for the next time: views draw the same texts again and
// again. Emptied when it is full. Without a back-end every character is an empty cell of 8 x 16.

#include <string_view>

#include "platform/Backend.h"

namespace kvx {

// ratio: device pixels a logical pixel. The reference holds until the next call.
const TextMask& RenderedText(const LOGFONT& font, std::string_view utf8, double ratio);
// Logical pixels, the same at every ratio; the one at which the text will be drawn is the fastest.
SIZE TextExtentOf(const LOGFONT& font, std::string_view utf8, double ratio = 1);
TEXTMETRIC MetricsOf(const LOGFONT& font);
// Forgets everything: the back-end changes, or its fonts did.
void ClearTextCache();

}  // namespace kvx
