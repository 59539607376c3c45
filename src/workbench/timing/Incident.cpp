#include "workbench/timing/Incident.h"

#include <algorithm>
#include <array>

namespace kvx::timing {
namespace {

constexpr std::array<std::string_view, kFindingKinds> kNames = {"priority_inversion",
                                                                "deadlock",
                                                                "starvation",
                                                                "late_job",
                                                                "overload",
                                                                "handler_load",
                                                                "call_errors",
                                                                "lock_held_at_end",
                                                                "unlock_without_lock",
                                                                "overrun",
                                                                "lost_stretch",
                                                                "period",
                                                                "cet",
                                                                "ipt",
                                                                "blocked",
                                                                "load",
                                                                "chain"};

}  // namespace

std::string_view FindingKindName(FindingKind kind) {
    return kNames[static_cast<std::size_t>(kind)];
}

std::optional<FindingKind> FindingKindOf(std::string_view name) {
    const auto at = std::ranges::find(kNames, name);
    if (at == kNames.end()) return std::nullopt;
    return static_cast<FindingKind>(at - kNames.begin());
}

}  // namespace kvx::timing
