#pragma once
// One job taken apart: what it did and what kept it, one part behind the other.

#include <optional>
#include <string>
#include <vector>

#include "workbench/timing/Model.h"

namespace kvx::timing {

enum class PartKind : std::uint8_t {
    Runs,
    WaitsToStart,
    Preempted,
    Interrupted,
    Blocked,
    Suspended,
    Unknown
};
// "waits_to_start".
std::string_view PartKindName(PartKind kind);

// What the holder of a lock did meanwhile.
struct HolderLink {
    ContextId context = kNobody;
    Doing doing = Doing::Unknown;
    bool suspended = false;
    ContextId by = kNobody;       // Ready, Interrupted: who had the processor
    ObjectId object = kNoObject;  // Waits
    std::uint8_t cause = kCauseUnknown;
    friend bool operator==(const HolderLink&, const HolderLink&) = default;
};

struct Part {
    PartKind kind = PartKind::Unknown;
    ContextId by = kNobody;  // who had the processor that the job, or the holder, stood ready for
    std::uint8_t cause = kCauseUnknown;  // Blocked
    ObjectId object = kNoObject;         // Blocked
    std::vector<HolderLink> chain;  // the holder of the object, of what that one waits for, …
    bool deadlock = false;          // the chain leads back into itself
    bool inversion = false;         // see Inversions.h
    std::int64_t start = 0;
    std::int64_t end = 0;

    std::int64_t Time() const { return end - start; }
    // Whether other goes on with the same.
    bool IsLike(const Part& other) const;
};

struct Explanation {
    ContextId context = kNobody;
    Job job;
    std::vector<Part> parts;  // without gaps; those of a complete job sum up to its response time
};

// index: the number of the job - 1; there must be one.
Explanation Explain(const Model& model, ContextId context, std::size_t index);

// The job of the context that runs at a time; of several processors the first one's, unless one is
// chosen.
struct JobRef {
    ContextId context = kNobody;
    std::size_t index = 0;
};
// context: only its jobs, whether they execute then or not. None: there is none.
std::optional<JobRef> JobAt(const Model& model, std::int64_t time,
                            std::optional<std::uint32_t> timeline,
                            const std::vector<ContextId>& among);
// The longest response times among complete jobs, longest first.
std::vector<JobRef> WorstJobs(const Model& model, const std::vector<ContextId>& among,
                              std::optional<std::uint32_t> timeline, std::size_t count);

}  // namespace kvx::timing
