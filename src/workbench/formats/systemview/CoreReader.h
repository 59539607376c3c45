#pragma once
// Reads the packets of one core one after the other, from any place that it was at before.

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "workbench/formats/systemview/Packet.h"

namespace kvx::formats::systemview {

// A stretch of a core's bytes that cannot be read, found out once.
struct Damage {
    std::size_t begin = 0;
    std::size_t end = 0;  // where packets go on
};

struct Place {
    std::size_t offset = 0;
    std::uint64_t ticks = 0;  // of the packet before
};

struct Item {
    Packet packet;  // where bytes are damaged: none
    std::size_t offset = 0;
    std::uint64_t ticks = 0;  // since the core's first packet
    // Records were lost in front of it, or cannot be read from here on: it stands for the time of
    // the packet before.
    bool isGap = false;
};

class CoreReader {
  public:
    // Both must outlive the reader; damage ascends.
    CoreReader(std::string_view bytes, const std::vector<Damage>& damage);

    // Where the next item begins.
    const Place& At() const { return place_; }
    void Seek(const Place& place) { place_ = place; }
    // False: there are no more, or what follows is cut or damaged without damage saying so.
    bool Next(Item& item);
    // Why Next said so at its place.
    PacketCursor::Failure Failed() const { return failure_; }

  private:
    std::string_view bytes_;
    const std::vector<Damage>* damage_;
    std::size_t first_ = 0;  // where the first packet begins
    Place place_;
    PacketCursor::Failure failure_ = PacketCursor::Failure::None;
};

}  // namespace kvx::formats::systemview
