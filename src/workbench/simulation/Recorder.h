#pragma once
// The clock of the simulation and the recording of what happens in it.

#include "workbench/simulation/Random.h"
#include "workbench/simulation/TraceSink.h"

namespace kvx::simulation {

class Recorder {
  public:
    Recorder(ITraceSink& sink, Random& random) : sink_(sink), random_(random) {}

    Time Now() const { return now_; }
    void AdvanceTo(Time time) { now_ = time; }

    void Dispatch(TraceKind kind, std::int32_t task) { Write({.kind = kind, .id = task}); }
    void State(std::int32_t task, LoggedState state) {
        Write({.kind = TraceKind::TaskState, .state = state, .id = task});
    }
    void Handler(TraceKind kind, HandlerKind handler, std::int32_t id) {
        Write({.kind = kind, .handler = handler, .id = id});
    }
    void Call(const Service& service, const Arguments& arguments) {
        Write({.kind = TraceKind::CallEnter, .values = arguments, .service = &service});
    }
    void Return(const Service& service, const CallResult& result) {
        Write({.kind = TraceKind::CallLeave,
               .values = {result.ercd, result.value},
               .service = &service});
    }
    // text: a constant, with at most one %d for value.
    void Message(std::int32_t id, const char* text, std::int32_t value) {
        Write({.kind = TraceKind::Message, .id = id, .values = {value}, .text = text});
    }

  private:
    // What the kernel does up to a record, and the recording itself, take their time.
    void Write(TraceRecord record) {
        now_ += random_.Between(1, 3);
        record.time = now_;
        sink_.Write(record);
    }

    ITraceSink& sink_;
    Random& random_;
    Time now_ = 0;
};

}  // namespace kvx::simulation
