#pragma once
// The marked range as both windows show it.

#include "platform/base/Types.h"

class COSTrace;
class COSMarker;

namespace kvx {

// "Mark: start - end = difference".
CString MarkText(const COSTrace& engine, const COSMarker& markers);

}  // namespace kvx
