#include "trace/EventReader.h"

#include <algorithm>
#include <vector>

#include "host/Identifiers.h"

namespace kvx {

namespace {

bool AreEvents(const host::EventList& list, std::uint32_t events) {
    if (list.count == 0) return true;
    return list.events && list.count <= events && list.events[list.count - 1] < events;
}

bool AreEvents(const host::EventList* lists, const host::OSTraceColumns& columns) {
    const std::uint32_t events = std::max(columns.eventCount, columns.knownEvents);
    return std::all_of(lists, lists + columns.contextCount,
                       [events](const host::EventList& list) { return AreEvents(list, events); });
}

// Each level that is kept ends as the list does; levels may be null.
bool AreLevels(const host::EventListLevels* levels, const host::EventList* lists,
               std::uint32_t contexts) {
    for (std::uint32_t c = 0; levels && c < contexts; ++c) {
        std::uint32_t block = 1;
        for (const std::uint32_t* level : levels[c].of) {
            block *= host::kListBlock;
            const std::uint32_t count = lists[c].count / block;
            if (level && count && level[count - 1] != lists[c].events[count * block - 1])
                return false;
        }
    }
    return true;
}

bool AreLists(const host::EventList* lists, const host::EventListLevels* levels,
              const host::OSTraceColumns& columns) {
    return AreEvents(lists, columns) && AreLevels(levels, lists, columns.contextCount);
}

// Each context stands in a line of its own.
bool AreLines(const std::uint32_t* lines, std::uint32_t count) {
    std::vector<bool> taken(count);
    for (const std::uint32_t* line = lines; line != lines + count; ++line) {
        if (*line >= count || taken[*line]) return false;
        taken[*line] = true;
    }
    return true;
}

bool Keep(const host::OSTraceColumns& c) {
    const std::uint32_t events = std::max(c.eventCount, c.knownEvents);
    if (!AreEvents(c.dispatches, events) || !AreEvents(c.sysCalls, events)) return false;
    const bool arrays = c.time && c.endEvent && c.context && c.next && c.kind && c.code && c.flags;
    if (c.eventCount > 0 && (!arrays || c.contextCount == 0)) return false;
    if (c.contextCount == 0) return true;
    if (!c.lineOfContext || !c.stateEvents || !AreLines(c.lineOfContext, c.contextCount))
        return false;
    return AreLists(c.stateEvents, c.stateLevels, c) &&
           (!c.dispatchesTo || AreLists(c.dispatchesTo, c.dispatchesToLevels, c)) &&
           (!c.sysCallsOf || AreLists(c.sysCallsOf, c.sysCallsOfLevels, c));
}

}  // namespace

std::optional<host::OSTraceColumns> TakeColumns(IQOSTraceService& service) {
    host::OSTraceColumns columns;
    host::IQOSTraceColumns* const bulk = QueryColumns(service);
    if (!bulk || Failed(bulk->GetColumns(&columns)) || !Keep(columns)) return std::nullopt;
    return columns;
}

host::IQOSTraceColumns* QueryColumns(IQOSTraceService& service) {
    void* out = nullptr;
    if (Failed(service.QueryInterface(host::kOSTraceColumns, &out))) return nullptr;
    return static_cast<host::IQOSTraceColumns*>(out);
}

}  // namespace kvx
