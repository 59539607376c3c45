#pragma once
// What a trace of self-describing events holds, in neutral form: kinds of events with their fields,
// and events as values.

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "workbench/kernels/EventShape.h"

namespace kvx::formats {

// A value in the form of its field; a Label has a number, and a text where the number has a name.
struct EventValue {
    std::uint64_t number = 0;
    std::string_view text;  // holds for the call
};

// What the tracer had to drop.
enum class Discarded : std::uint8_t { Events, Packets };

class IEventSink {
  public:
    virtual ~IEventSink() = default;
    // Kinds are numbered from 0; each comes before its first event. all: what its stream declares.
    virtual void OnKind(const kernels::EventShape& shape, const kernels::EventNames& all) = 0;
    // time: since the clock's origin, in nanoseconds where the clock is known; none where the trace
    // has no clock. values: those of the kind's fields. False: stop.
    virtual bool OnEvent(std::uint32_t kind, std::optional<std::int64_t> time,
                         std::span<const EventValue> values) = 0;
    virtual void OnDiscarded(Discarded what, std::uint64_t count) = 0;
    // Now and then. False: stop.
    virtual bool OnBatch() = 0;
};

}  // namespace kvx::formats
