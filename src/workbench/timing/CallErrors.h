#pragma once
// The errors that calls returned, grouped.

#include <vector>

#include "workbench/timing/Model.h"

namespace kvx::timing {

struct ErrorGroup {
    ContextId context = kNobody;
    std::uint32_t call = 0;   // number of the call's name
    std::uint32_t error = 0;  // number of the error's name
    std::uint64_t count = 0;
    std::int64_t first = 0;  // when the calls were issued
    std::int64_t last = 0;
    EventRef firstEvent;
    EventRef lastEvent;
};

// By context, call and error; calls that were issued in the selection.
std::vector<ErrorGroup> ErrorsOf(const Model& model, const Selection& selection);

}  // namespace kvx::timing
