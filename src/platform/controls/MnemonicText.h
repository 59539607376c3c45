#pragma once
// Texts that mark their access key with "&".

#include "platform/base/Types.h"

namespace kvx {

// The text as it is shown: "&x" is x, "&&" is &.
CString WithoutMnemonics(const CString& text);

}  // namespace kvx
