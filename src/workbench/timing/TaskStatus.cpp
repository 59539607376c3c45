#include "workbench/timing/TaskStatus.h"

#include "host/TraceCodes.h"

namespace kvx::timing {

std::string_view CauseName(std::uint8_t code) {
    constexpr std::string_view kNames[] = {"unknown", "RDY", "DMT", "SLP", "DLY",
                                           "FLG",     "SEM", "MBX", "DTQ", "VSDTQ/VRDTQ",
                                           "MPF",     "MBF", "MTX", "MPL"};
    static_assert(std::size(kNames) == host::kStateCodes + 1);
    return code < std::size(kNames) ? kNames[code] : kNames[kCauseUnknown];
}

}  // namespace kvx::timing
