#pragma once
// Writes events of one processor at the moment that is being decoded, and knows which context has
// the processor.

#include <cstdint>

#include "workbench/service/ContextTable.h"
#include "workbench/service/EventStore.h"

namespace kvx::service {

// The record that is being decoded and the time that has been reached, for all processors together.
// A time that steps back is held.
class Moment {
  public:
    void MoveTo(std::uint32_t record, std::int64_t time) {
        record_ = record;
        if (!begun_ || time > now_) now_ = time;
        begun_ = true;
    }
    // Stays at the time reached.
    void MoveTo(std::uint32_t record) { record_ = record; }
    std::int64_t Now() const { return now_; }
    // A time was reached at all.
    bool HasBegun() const { return begun_; }
    std::uint32_t Record() const { return record_; }

  private:
    std::int64_t now_ = 0;
    std::uint32_t record_ = 0;
    bool begun_ = false;
};

class EventWriter {
  public:
    EventWriter(const Moment& moment, ContextTable& contexts, EventStore& store)
        : moment_(moment), contexts_(contexts), store_(store) {}

    void Dispatch(std::uint32_t context) {
        store_.AddDispatch(moment_.Now(), Current(), context, moment_.Record());
        current_ = context;
    }
    // Learns what has been running, as long as no dispatch says so.
    void LearnCurrent(std::uint32_t context) {
        if (!store_.HasDispatches()) current_ = context;
    }
    // The context that has the processor; the unidentified one where that is not known.
    std::uint32_t Current() {
        if (current_ == kNoContext) current_ = Unknown();
        return current_;
    }
    std::uint32_t ContextOf(const ContextKey& key) {
        return contexts_.Add(key, store_.Added() + 1);
    }
    std::uint32_t Unknown() { return ContextOf({ContextKind::Unknown, 0}); }
    std::uint32_t Idle() { return ContextOf({ContextKind::Task, 0}); }

    std::uint32_t Call(std::uint32_t context, std::uint8_t cls, std::uint32_t call) {
        return store_.AddCall(moment_.Now(), context, cls, call, moment_.Record());
    }
    void Return(std::uint32_t event) { store_.SetReturn(event, moment_.Record()); }
    std::uint32_t State(std::uint32_t context, std::uint8_t code, std::uint8_t flags,
                        std::uint32_t record) {
        return store_.AddState(moment_.Now(), context, code, flags, record);
    }
    void CloseWithNext(std::uint32_t event) { store_.Close(event, store_.Added()); }

  private:
    const Moment& moment_;
    ContextTable& contexts_;
    EventStore& store_;
    std::uint32_t current_ = kNoContext;
};

}  // namespace kvx::service
