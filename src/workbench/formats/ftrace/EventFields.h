#pragma once
// What stands behind the time of an event line: the event's name and its fields.

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "workbench/formats/events/EventSink.h"

namespace kvx::formats::ftrace {

struct EventText {
    enum class Form : std::uint8_t { Named, CallEntry, CallExit };
    std::string_view name;  // without the system before a colon
    std::string_view fields;
    Form form = Form::Named;  // calls: "sys_open(…)" and "sys_open -> 0x3"
};

// None: it begins with no event's name, as lines of the function tracer do.
std::optional<EventText> SplitEvent(std::string_view text);

// How the fields of a kind of event are written.
enum class Layout : std::uint8_t { Nothing, Switch, Wakeup, Pairs, Arguments, Result, RawEntry };

struct FieldRule {
    const char* name;
    kernels::EventField::Form form;
    bool mayMiss = false;
};

// A kind of event as kernels know it. Kinds that nobody makes a record of have no fields.
struct EventKind {
    std::string name;
    Layout layout = Layout::Nothing;
    std::span<const FieldRule> fields;

    kernels::EventShape Shape() const;
};
EventKind KindOf(const EventText& event);

// Reads the fields into out, one value a field of the kind. Texts point into the line, or into
// buffer. False: they cannot be read.
bool ParseFields(const EventKind& kind, std::string_view text, std::span<EventValue> out,
                 std::string& buffer);

}  // namespace kvx::formats::ftrace
