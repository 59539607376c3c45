#pragma once
// Writes events at the time of the record being decoded, and knows which context has the processor
// that is shown.

#include <cstdint>

#include "workbench/service/ContextTable.h"
#include "workbench/service/EventStore.h"

namespace kvx::service {

class EventWriter {
  public:
    EventWriter(ContextTable& contexts, EventStore& store) : contexts_(contexts), store_(store) {}

    // The record that everything is due to from now on. A time that steps back is held.
    void At(std::uint32_t record, std::int64_t time) {
        record_ = record;
        if (!begun_ || time > now_) now_ = time;
        begun_ = true;
    }
    // Stays at the time reached.
    void At(std::uint32_t record) { record_ = record; }
    std::int64_t Now() const { return now_; }
    std::uint32_t Record() const { return record_; }

    void Dispatch(std::uint32_t context) {
        store_.AddDispatch(now_, Current(), context, record_);
        current_ = context;
    }
    // Learns what has been running, as long as no dispatch says so.
    void LearnCurrent(std::uint32_t context) {
        if (store_.Dispatches().empty()) current_ = context;
    }
    // The context that has the processor; the unidentified one where that is not known.
    std::uint32_t Current() {
        if (current_ == kNoContext) current_ = Unknown();
        return current_;
    }
    std::uint32_t Unknown() { return contexts_.Add({ContextKind::Unknown, 0}); }
    std::uint32_t Idle() { return contexts_.Add({ContextKind::Task, 0}); }

    std::uint32_t Call(std::uint32_t context, std::uint8_t cls, std::uint32_t call) {
        return store_.AddCall(now_, context, cls, call, record_);
    }
    void Return(std::uint32_t event) { store_.SetReturn(event, record_); }
    std::uint32_t State(std::uint32_t context, std::uint8_t code, std::uint8_t flags,
                        std::uint32_t record) {
        return store_.AddState(now_, context, code, flags, record);
    }
    void CloseWithNext(std::uint32_t event) { store_.Close(event, store_.Count()); }

  private:
    ContextTable& contexts_;
    EventStore& store_;
    std::int64_t now_ = 0;
    std::uint32_t record_ = 0;
    bool begun_ = false;
    std::uint32_t current_ = kNoContext;
};

}  // namespace kvx::service
