#pragma once
// The decoded events in columns. Names and parameter texts are not stored: they are made from the
// record when somebody asks.

#include <cstdint>
#include <string>
#include <vector>

#include "host/OSTraceColumns.h"
#include "workbench/service/Column.h"

namespace kvx::service {

inline constexpr std::uint32_t kNoRecord = 0xFFFFFFFFu;

class EventStore {
  public:
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
    void Close(std::uint32_t event, std::uint32_t by) { end_[event] = by; }
    // The system call of event returned with this record.
    void SetReturn(std::uint32_t event, std::uint32_t record) { end_[event] = record; }
    void Clear();

    std::uint32_t Count() const { return static_cast<std::uint32_t>(time_.size()); }
    std::int64_t Time(std::uint32_t event) const { return time_[event]; }
    int Kind(std::uint32_t event) const { return kind_[event]; }
    // Kinds 1 and 2: the event that ends the interval, or host::kOpenEnd.
    std::uint32_t EndEvent(std::uint32_t event) const { return end_[event]; }
    // Kind 3: the record of the return, or kNoRecord.
    std::uint32_t ReturnRecord(std::uint32_t event) const { return end_[event]; }
    // Kind 1: the context left; kind 2: the context changed; kind 3: the issuer.
    std::uint32_t Context(std::uint32_t event) const { return context_[event]; }
    // Kind 1: the context that starts; kind 2: the context changed.
    std::uint32_t Next(std::uint32_t event) const { return next_[event]; }
    // Kind 3: number of the call's name.
    std::uint32_t Call(std::uint32_t event) const { return next_[event]; }
    std::uint8_t Code(std::uint32_t event) const { return code_[event]; }
    std::uint8_t Flags(std::uint32_t event) const { return flags_[event]; }
    std::uint32_t RecordOf(std::uint32_t event) const { return record_[event]; }

    const Column<std::uint32_t>& Dispatches() const { return dispatches_; }
    const Column<std::uint32_t>& Calls() const { return calls_; }
    std::uint32_t StateCount() const {
        return Count() - static_cast<std::uint32_t>(dispatches_.size() + calls_.size());
    }
    // Empty for a context without state events.
    host::EventList StatesOf(std::uint32_t context) const;

    // Fills all but the line order. contextCount: as many lists as the caller has contexts.
    void Export(host::OSTraceColumns& out, std::uint32_t contextCount) const;
    std::size_t Bytes() const;
    // Looks for anything that cannot be; empty: all is well.
    std::string Check() const;

  private:
    std::uint32_t Add(std::int64_t time, std::uint8_t kind, std::uint32_t context,
                      std::uint32_t next, std::uint8_t code, std::uint8_t flags,
                      std::uint32_t record);
    using Lists = std::vector<Column<std::uint32_t>>;  // by context
    static void Append(Lists& lists, std::uint32_t context, std::uint32_t event);
    static host::EventList ListOf(const Lists& lists, std::uint32_t context);
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
    Lists states_;
    Lists entered_;                                  // dispatches to the context
    Lists issued_;                                   // its system calls
    mutable std::vector<host::EventList> exported_;  // what Export pointed to last
};

}  // namespace kvx::service
