#pragma once
// A kind of event as a container that describes its own events does: a name, and fields by name.

#include <cstdint>
#include <initializer_list>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace kvx::kernels {

struct EventField {
    // Label: a number that has a name, as far as it has one.
    enum class Form : std::uint8_t { Unsigned, Hexadecimal, Signed, Label, Text };
    std::string name;
    Form form = Form::Text;
    bool isPayload = true;  // false: of the event's surroundings, such as its packet
};

// Which field of an event.
struct FieldRef {
    std::int32_t index = -1;
    explicit operator bool() const { return index >= 0; }
};

// A field that people are shown.
struct EventDetail {
    FieldRef field;
    std::string name;
    EventField::Form form = EventField::Form::Text;
};

struct EventShape {
    std::string name;  // without the domain before a colon
    std::vector<EventField> fields;

    // The first of the names that there is.
    FieldRef Find(std::initializer_list<std::string_view> names) const;
    std::vector<EventDetail> Payload() const;
};

// The events that a trace declares, whether they occur or not.
using EventNames = std::set<std::string, std::less<>>;

}  // namespace kvx::kernels
