#pragma once
// The five texts of the OS Trace window's status bar.

#include <vector>

#include "platform/base/Types.h"

class COSTrace;
class COSMarker;
class ChartViewport;

namespace kvx {

// Marked range, indicator, scale, grid time, range condition.
std::vector<CString> ComposeStatusTexts(COSTrace& engine, const COSMarker& markers,
                                        const ChartViewport& viewport);

}  // namespace kvx
