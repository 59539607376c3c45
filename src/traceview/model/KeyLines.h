#pragma once
// Keys as a user reads them.

#include <vector>

#include "platform/base/Types.h"

namespace kvx {

struct KeyLine {
    CString keyText;  // "Ctrl+F"
    CString meaning;
};

// The accelerator table of that id in the current resources; keys are letters, digits, + and - and
// F1 to F24, and mean the status text of their command.
std::vector<KeyLine> AcceleratorLines(UINT table);

// All keys of the OS Trace window: those of the view and those of its menu, each once.
std::vector<KeyLine> TraceKeyLines();

}  // namespace kvx
