#pragma once
// What a task does at a moment, on whichever processor.

#include <cstdint>
#include <string_view>

#include "workbench/timing/CallFacts.h"
#include "workbench/timing/Contexts.h"

namespace kvx::timing {

// An event of the recording.
struct EventRef {
    std::uint32_t timeline = 0;
    std::uint32_t event = 0;
    friend bool operator==(const EventRef&, const EventRef&) = default;
};

enum class Doing : std::uint8_t {
    Unknown,  // the recording does not tell
    Runs,
    Interrupted,  // it has the processor, on which a handler runs
    Ready,
    Waits,
    Dormant
};

// Causes of waits are state codes; this one stands for a wait of which the recording does not say
// for what.
inline constexpr std::uint8_t kCauseUnknown = 0;

// "SEM"; "unknown"; "DMT" for dormant.
std::string_view CauseName(std::uint8_t code);

struct Wait {
    std::uint8_t cause = kCauseUnknown;
    std::uint32_t record = service::kNoRecord;  // of the call that waits
    std::uint32_t call = service::kNoRecord;    // number of the call's name, if it is known
    ObjectId object = kNoObject;
    bool succeeds = false;  // the call returns later that it got what it waited for
    bool takes = false;     // ... a semaphore or a mutex
    friend bool operator==(const Wait&, const Wait&) = default;
};

struct TaskStatus {
    Doing doing = Doing::Unknown;
    bool suspended = false;
    bool beganUnseen = true;     // before the recording or in a stretch that is not told
    std::uint32_t timeline = 0;  // where it runs, or stands
    std::int64_t since = 0;
    EventRef event{};  // that began it
    Wait wait{};       // Waits

    bool Executes() const { return doing == Doing::Runs; }
    bool IsRunnable() const {
        return doing == Doing::Runs || doing == Doing::Interrupted || doing == Doing::Ready;
    }
};

}  // namespace kvx::timing
