#pragma once
// The decoded events of one processor in columns. Names and parameter texts are not stored: they
// are made from the record when somebody asks.
//
// One thread adds events and publishes them; what is published never moves and never changes,
// except that intervals end and calls return.

#include <atomic>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "host/OSTraceColumns.h"
#include "workbench/service/Column.h"
#include "workbench/service/EventLists.h"
#include "workbench/service/Record.h"

namespace kvx::service {

// State events, dispatches to and system calls of each context, one kind behind the other.
struct ContextLists {
    std::vector<host::EventList> events;
    std::vector<host::EventListLevels> levels;
};

class EventStore {
  public:
    // most: events that ever fit. More end in std::length_error.
    explicit EventStore(std::uint32_t most);

    // For the thread that adds.
    //
    // Contexts are numbers below 2^32 - 1; they grow with whatever is added. Times must not go
    // back.
    std::uint32_t AddDispatch(std::int64_t time, std::uint32_t from, std::uint32_t to,
                              std::uint32_t record);
    // record: what explains the state, for a wait the call that waits; kNoRecord: nothing does.
    std::uint32_t AddState(std::int64_t time, std::uint32_t context, std::uint8_t code,
                           std::uint8_t flags, std::uint32_t record);
    std::uint32_t AddCall(std::int64_t time, std::uint32_t context, std::uint8_t cls,
                          std::uint32_t call, std::uint32_t record);
    // The interval that event opened ends with event `by`. Kinds 1 and 2.
    void Close(std::uint32_t event, std::uint32_t by) { SetEnd(event, by); }
    // The system call of event returned with this record.
    void SetReturn(std::uint32_t event, std::uint32_t record) { SetEnd(event, record); }
    std::uint32_t Added() const { return static_cast<std::uint32_t>(time_.size()); }
    bool HasDispatches() const { return !dispatches_.empty(); }
    // Shows what was added to whoever reads.
    void Publish();

    // For everyone. event must be below Count.
    std::uint32_t Count() const { return count_.load(std::memory_order_acquire); }
    std::int64_t Time(std::uint32_t event) const { return time_[event]; }
    int Kind(std::uint32_t event) const { return kind_[event]; }
    // Kinds 1 and 2: the event that ends the interval, or host::kOpenEnd where it has not ended, or
    // where its end is not published yet.
    std::uint32_t EndEvent(std::uint32_t event) const {
        const auto by = host::EndOf(end_.data(), event);
        return by < Count() ? by : host::kOpenEnd;
    }
    // Kind 3: the record of the return, or kNoRecord.
    std::uint32_t ReturnRecord(std::uint32_t event) const {
        return host::EndOf(end_.data(), event);
    }
    // Kind 1: the context left; kind 2: the context changed; kind 3: the issuer.
    std::uint32_t Context(std::uint32_t event) const { return context_[event]; }
    // Kind 1: the context that starts; kind 2: the context changed.
    std::uint32_t Next(std::uint32_t event) const { return next_[event]; }
    // Kind 3: number of the call's name.
    std::uint32_t Call(std::uint32_t event) const { return next_[event]; }
    std::uint8_t Code(std::uint32_t event) const { return code_[event]; }
    std::uint8_t Flags(std::uint32_t event) const { return flags_[event]; }
    std::uint32_t RecordOf(std::uint32_t event) const { return record_[event]; }

    // The events of time and before.
    std::uint32_t CountUntil(std::int64_t time) const;
    // The dispatches and the system calls among the events below end.
    std::span<const std::uint32_t> Dispatches(std::uint32_t end) const;
    std::span<const std::uint32_t> Calls(std::uint32_t end) const;
    // The state events of a context among the events below end.
    host::EventList StatesOf(std::uint32_t context, std::uint32_t end) const {
        return states_.Of(context, end);
    }

    // Fills all but the lists by context and the line order, for the events below end.
    void Export(host::OSTraceColumns& out, std::uint32_t end) const;
    ContextLists ExportLists(std::uint32_t contextCount, std::uint32_t end) const;
    // The following two: when nothing is added any more.
    std::size_t Bytes() const;
    // Looks for anything that cannot be; empty: all is well.
    std::string Check() const;

  private:
    std::uint32_t Add(std::int64_t time, std::uint8_t kind, std::uint32_t context,
                      std::uint32_t next, std::uint8_t code, std::uint8_t flags,
                      std::uint32_t record);
    void SetEnd(std::uint32_t event, std::uint32_t end) {
        std::atomic_ref(end_[event]).store(end, std::memory_order_relaxed);
    }
    static std::span<const std::uint32_t> Below(const Column<std::uint32_t>& events,
                                                std::size_t count, std::uint32_t end);
    std::string CheckIntervals() const;
    std::string CheckLists() const;

    Column<std::int64_t> time_;
    Column<std::uint32_t> end_;
    Column<std::uint32_t> context_;
    Column<std::uint32_t> next_;
    Column<std::uint32_t> record_;
    Column<std::uint8_t> kind_;
    Column<std::uint8_t> code_;
    Column<std::uint8_t> flags_;
    Column<std::uint32_t> dispatches_;
    Column<std::uint32_t> calls_;
    EventLists states_;
    EventLists entered_;  // dispatches to the context
    EventLists issued_;   // its system calls

    // What is published.
    std::atomic<std::uint32_t> count_ = 0;
    std::atomic<std::uint32_t> dispatchCount_ = 0;
    std::atomic<std::uint32_t> callCount_ = 0;
};

}  // namespace kvx::service
