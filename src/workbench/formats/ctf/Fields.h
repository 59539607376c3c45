#pragma once
// Values and texts of the fields of CTF events.

#include <babeltrace2/babeltrace.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace kvx::formats::ctf {

enum class Scope : std::uint8_t { None, Payload, Specific, Common, Packet };

// Where a field stands in every event of a class.
struct FieldPlace {
    Scope scope = Scope::None;
    std::uint32_t index = 0;
    explicit operator bool() const { return scope != Scope::None; }
};

// Null where the event has no such field.
const bt_field* FieldOf(const bt_event* event, FieldPlace place);

// Value of an integer, enumeration or boolean field as 64 bits; 0 for other fields and null.
std::uint64_t NumberOf(const bt_field* field);
// Value of a string field, or label of an enumeration; empty for other fields and null.
std::string_view NameOf(const bt_field* field);
// Any field as text.
std::string TextOf(const bt_field* field);

}  // namespace kvx::formats::ctf
