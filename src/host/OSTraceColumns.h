#pragma once
// Bulk access to the decoded events, ours: a trace service that keeps its events in columns offers
// it by query-interface (kvx::host::kOSTraceColumns). A service without it is read by its plain
// operations, with the same result.

#include <atomic>

#include "host/Host.h"

namespace kvx::host {

inline constexpr std::uint32_t kOpenEnd = 0xFFFFFFFFu;
// What GetEventEndTime of a service with columns answers for an interval that ends at time 0, since
// an end of 0 means that it is open: a time just before, so that nothing of it is drawn or counted.
inline constexpr std::int64_t kEndAtZero = -1;
inline constexpr std::uint8_t kFlagSuspended = 1;
inline constexpr std::uint8_t kFlagPaused = 2;

// A list of event indexes in ascending order.
struct EventList {
    const std::uint32_t* events = nullptr;
    std::uint32_t count = 0;
};

// Coarser levels of such a list, for searches of lists of millions: level k = 1 to 4 holds the last
// event of every complete block of 16^k events, so count / 16^k of them. Null: not kept.
inline constexpr int kListLevels = 4;
inline constexpr std::uint32_t kListBlock = 16;
struct EventListLevels {
    const std::uint32_t* of[kListLevels] = {};  // of[k - 1] is level k
};

// Contexts are named here by their number in the service, which never changes; lineOfContext gives
// the line of each. What a reader may rely on: times are not negative; no interval of a dispatch
// reaches beyond the next dispatch, nor one of a state beyond the context's next state; each
// dispatch leaves the context that the one before it entered; GetSysCallEvent of a system call is
// the event itself. Every pointer is the service's and holds until its next AnalyzeRecords,
// DiscardData or change of the line order.
//
// A service may know more events than it shows (eventCount): then knownEvents says how many there
// are in the columns, and an interval may end with one of those. Others leave knownEvents at 0.
struct OSTraceColumns {
    std::uint32_t eventCount = 0;
    const std::int64_t* time = nullptr;       // count of each event, non-decreasing
    const std::uint32_t* endEvent = nullptr;  // kinds 1 and 2: the event that ends the interval, or
                                              // kOpenEnd; not meaningful for kind 3. May change
                                              // while it is read: see EndOf
    const std::uint32_t* context = nullptr;   // GetEventContext
    const std::uint32_t* next = nullptr;      // kind 1: GetEventNextContext; kind 2: state context
    const std::uint8_t* kind = nullptr;       // 1 dispatch, 2 state, 3 system call
    const std::uint8_t* code = nullptr;       // kind 2: state 1 to 13; kind 3: class 1 to 13
    const std::uint8_t* flags = nullptr;      // kind 2: kFlagSuspended, kFlagPaused

    std::uint32_t contextCount = 0;
    const std::uint32_t* lineOfContext = nullptr;

    EventList dispatches;                    // all events of kind 1
    EventList sysCalls;                      // all events of kind 3
    const EventList* stateEvents = nullptr;  // by context: its events of kind 2
    // By context: the events of kind 1 whose next it is, its events of kind 3. Either may be null;
    // the reader then finds them in the lists of all.
    const EventList* dispatchesTo = nullptr;
    const EventList* sysCallsOf = nullptr;

    std::uint32_t knownEvents = 0;

    // By context: the coarser levels of stateEvents, dispatchesTo and sysCallsOf. Each may be null.
    const EventListLevels* stateLevels = nullptr;
    const EventListLevels* dispatchesToLevels = nullptr;
    const EventListLevels* sysCallsOfLevels = nullptr;
};

// An element of endEvent. The service may write it at the same time: an interval that is open ends.
inline std::uint32_t EndOf(const std::uint32_t* endEvent, std::uint32_t event) {
    auto& element = const_cast<std::uint32_t&>(endEvent[event]);
    return std::atomic_ref(element).load(std::memory_order_relaxed);
}

class IQOSTraceColumns : public IQUnknown {
  public:
    virtual HRESULT KVX_CALL GetColumns(OSTraceColumns* out) = 0;
    // Decodes records from..to and stops after the first whose analysed-up-to time exceeds until,
    // so that a caller can decode in blocks what it would else ask for one by one. *last: the last
    // record decoded; a, b, c as AnalyzeRecords.
    virtual HRESULT KVX_CALL AnalyzeUntil(std::int32_t from, std::int32_t to, double until,
                                          std::int32_t* last, std::int64_t* a, std::int64_t* b,
                                          std::int64_t* c) = 0;

  protected:
    ~IQOSTraceColumns() = default;
};

}  // namespace kvx::host
