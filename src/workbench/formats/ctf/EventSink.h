#pragma once
// What a CTF trace holds, in neutral form: kinds of events with their fields, and events as values.

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "workbench/kernels/EventShape.h"

namespace kvx::formats::ctf {

// A value in the form of its field; a Label has a number, and a text where the number has a name.
struct Value {
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
    // nanoseconds: since the clock's origin; none where the trace has no clock. values: those of
    // the kind's fields. Events come in order of time. False: stop.
    virtual bool OnEvent(std::uint32_t kind, std::optional<std::int64_t> nanoseconds,
                         std::span<const Value> values) = 0;
    virtual void OnDiscarded(Discarded what, std::uint64_t count) = 0;
    // Now and then. False: stop.
    virtual bool OnBatch() = 0;
};

}  // namespace kvx::formats::ctf
