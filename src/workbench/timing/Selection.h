#pragma once
// What of a recording is looked at.

#include <cstdint>
#include <optional>

#include "workbench/timing/Walk.h"

namespace kvx::timing {

struct Selection {
    Span range;
    std::optional<std::uint32_t> timeline;  // none: all

    bool Has(std::int64_t from, std::int64_t to) const {
        return from >= range.start && to <= range.end;
    }
    bool HasTimeline(std::uint32_t number) const { return timeline.value_or(number) == number; }
};

}  // namespace kvx::timing
