#pragma once
// What a walk comes across that people should see, before it is put into words.

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "workbench/timing/Walk.h"

namespace kvx::timing {

enum class FindingKind : std::uint8_t {
    PriorityInversion,
    Deadlock,
    Starvation,
    LateJob,
    Overload,
    HandlerLoad,
    CallErrors,
    LockHeldAtEnd,
    UnlockWithoutLock,
    Overrun,
    LostStretch,
    // Of rules only.
    Period,
    CoreTime,
    Pending,
    Blocked,
    Load,
    Chain
};
inline constexpr int kFindingKinds = 17;
// "priority_inversion".
std::string_view FindingKindName(FindingKind kind);
std::optional<FindingKind> FindingKindOf(std::string_view name);

struct Incident {
    FindingKind kind = FindingKind::PriorityInversion;
    std::vector<ContextId> contexts;  // whom it is about first
    std::optional<std::uint32_t> timeline;
    std::int64_t start = 0;
    std::int64_t end = 0;
    std::int64_t measured = 0;  // counts of time, or how often
    ObjectId object = kNoObject;
    std::uint32_t job = 0;  // number; 0: none
    bool goesOn = false;    // at the end of the recording still
    std::vector<EventRef> evidence;
};

using Incidents = std::vector<Incident>;

}  // namespace kvx::timing
