#pragma once
// What the decoder knows of one task while it walks through the records.

#include <cstdint>
#include <vector>

#include "host/TraceCodes.h"
#include "workbench/service/CallStack.h"
#include "workbench/service/Timeline.h"

namespace kvx::service {

// The state codes that are not waits, and those of waits that the decoder itself decides.
inline constexpr std::uint8_t kCodeReady = host::Code(host::StateCode::Ready);
inline constexpr std::uint8_t kCodeDormant = host::Code(host::StateCode::Dormant);
inline constexpr std::uint8_t kCodeSleeping = host::Code(host::StateCode::Sleeping);
inline constexpr std::uint8_t kCodeDelay = host::Code(host::StateCode::Delay);

// Away: it has given the processor up, and what it does since is not recorded.
enum class Activity : std::uint8_t { Unknown, Running, Ready, Waiting, Dormant, Away };

// What a task does apart from where it does it.
struct Condition {
    Activity activity = Activity::Unknown;
    bool suspended = false;
    std::uint8_t waitCode = 0;             // Waiting
    std::uint32_t waitRecord = kNoRecord;  // Waiting: the call that waits, if that is known
    friend bool operator==(const Condition&, const Condition&) = default;
    // Something keeps the task from running: it waits, is suspended or dormant.
    bool IsKept() const {
        return suspended || activity == Activity::Waiting || activity == Activity::Dormant;
    }
};

// A task on one processor.
struct Presence {
    Timeline* timeline = nullptr;  // null: the recording does not know the processor
    std::uint32_t context = kNoContext;
    std::uint32_t openEvent = host::kOpenEnd;  // its state event that has not ended
    bool away = false;                         // shown as being on another processor
};

struct Task {
    std::uint64_t id = 0;
    std::uint32_t processor = kAnyProcessor;    // where it belongs
    std::uint32_t runsOn = kAnyProcessor;       // while it runs
    std::uint32_t destination = kAnyProcessor;  // where it goes as soon as it stops running
    bool isKnown = false;                       // of the tracker
    Condition condition;
    CallStack calls;
    Presence here;                    // on processor
    std::vector<Presence> elsewhere;  // on those that it has left
};

}  // namespace kvx::service
