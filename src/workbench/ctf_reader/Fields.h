#pragma once
// Values and texts of the fields of CTF events.

#include <babeltrace2/babeltrace.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace kvx::ctf_reader {

// Value of an integer, enumeration or boolean field as 64 bits; 0 for other fields and null.
std::uint64_t NumberOf(const bt_field* field);
// Value of a string field, or label of an enumeration; empty for other fields and null.
std::string_view NameOf(const bt_field* field);
// Any field as text.
std::string TextOf(const bt_field* field);

}  // namespace kvx::ctf_reader
