#pragma once
// Searches of one list of events for many boundaries at once.

#include <cstdint>
#include <span>
#include <vector>

#include "host/OSTraceColumns.h"

namespace kvx {

// How many events of the list lie before each bound; bounds ascend. The way down the levels is
// taken for all bounds together, a level at a time, so that what one needs of the memory is fetched
// while others are looked at. Without levels each bound is looked for from the one before it.
std::vector<std::uint32_t> CountsBefore(const host::EventList& list,
                                        const host::EventListLevels& levels,
                                        std::span<const std::uint32_t> bounds);

// The list of one context; levels may be null.
inline std::vector<std::uint32_t> CountsBefore(const host::EventList* lists,
                                               const host::EventListLevels* levels,
                                               std::uint32_t context,
                                               std::span<const std::uint32_t> bounds) {
    return CountsBefore(lists[context], levels ? levels[context] : host::EventListLevels{}, bounds);
}

}  // namespace kvx
