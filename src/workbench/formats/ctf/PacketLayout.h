#pragma once
// Where the headers of a trace's packets hold what a first look needs: read from the metadata, as
// far as it describes them with integers of fixed size.

#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

namespace kvx::formats::ctf {

// An integer of a header. Positions and sizes are in bits.
struct HeaderField {
    std::uint64_t at = 0;
    std::uint64_t size = 0;
};

// What one kind of stream has behind the header that all share.
struct PacketContext {
    std::optional<HeaderField> contentSize;
    std::optional<HeaderField> packetSize;
};

struct PacketLayout {
    bool bigEndian = false;
    std::optional<HeaderField> magic;
    std::optional<HeaderField> streamId;
    std::map<std::uint64_t, PacketContext> contexts;  // by id of the stream; 0 where it has none

    // The integer at that place of a packet; none where bytes ends before it, or where it does not
    // begin and end with whole bytes.
    std::optional<std::uint64_t> Read(const HeaderField& field, std::string_view bytes) const;
};

// metadata: text, without comments and strings. What the text does not describe in simple terms is
// left out of the layout.
PacketLayout FindPacketLayout(std::string_view metadata);

}  // namespace kvx::formats::ctf
