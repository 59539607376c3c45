#pragma once
// What the program that reads CTF with the library writes into the pipe: blocks of whole messages.
//
// A block is its size in bytes, 32 bits in the machine's order, and that many bytes. A message
// begins with a number: that of an event's kind plus kFirstKind, or what it is.
//
//   Names      count, then that many texts: the events that a stream declares; numbered from 0
//   Kind       name, number of its names, whether its events have a time, count of fields, and of
//              each: name, form, where it stands
//   Packet     number of the stream, count, then that many numbers: the fields of kinds of that
//              stream that stand in the packet
//   Discarded  what, count
//   End        why reading ended early; empty where it did not
//   event      where its kind has fields of the packet, the number of the stream; where its kind
//   has
//              a time, the time since that of the event before, signed; then the values of the
//              other fields by their forms
//
// Numbers have seven bits a byte, lowest first; the top bit says that more follows. Signed ones
// have their sign in the lowest bit. Texts are their length and their bytes.

#include <cstddef>
#include <cstdint>

namespace kvx::formats::ctf::wire {

enum class Message : std::uint8_t { Names, Kind, Packet, Discarded, End };
inline constexpr std::uint64_t kFirstKind = 8;

enum class Place : std::uint8_t { Payload, Around, Packet };

inline constexpr std::size_t kBlock = std::size_t{64} << 10;        // about as large
inline constexpr std::size_t kLargestBlock = std::size_t{4} << 20;  // never larger
inline constexpr std::size_t kLongestText = std::size_t{16} << 10;  // the rest is cut off

// Stands beside the main program, or in its folder of modules.
inline constexpr const char* kProgram = "kvxostrace-ctf";

}  // namespace kvx::formats::ctf::wire
