#pragma once
// Lists of events by context, each with its coarser levels. One thread appends, another reads; what
// a reader was given stays good while the lists grow.

#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

#include "host/OSTraceColumns.h"
#include "platform/os/ReservedMemory.h"
#include "workbench/service/StableVector.h"

namespace kvx::service {

class EventLists {
  public:
    EventLists() : EventLists(host::kListLevels) {}

    // Events of a context come in ascending order. Contexts are numbers below 2^32 - 1.
    void Append(std::uint32_t context, std::uint32_t event);
    // The events of the context that lie below end; empty for a context without any.
    host::EventList Of(std::uint32_t context, std::uint32_t end) const;
    // Of the same list, or of a longer one of the context.
    host::EventListLevels LevelsOf(std::uint32_t context) const;
    // All room that was handed out and may have been written to.
    std::size_t Bytes() const;

  private:
    struct List {
        std::atomic<std::uint32_t*> events = nullptr;
        std::atomic<std::uint32_t> count = 0;
        std::uint32_t capacity = 0;  // of the appending thread
    };
    explicit EventLists(int levels);
    void Grow(List& list, std::uint32_t count);
    std::uint32_t* Take(std::size_t events);

    StableVector<List> lists_;
    std::unique_ptr<EventLists> coarser_;      // the next level; null above the last
    std::vector<os::ReservedMemory> regions_;  // of the last one, taken_ events are handed out
    std::size_t taken_ = 0;
    std::size_t used_ = 0;  // events in lists, and in places that lists have grown out of
};

}  // namespace kvx::service
