#include "workbench/formats/systemview/Packet.h"

#include <array>

namespace kvx::formats::systemview {
namespace {

// The values of the packets that carry no length: u a number, s a text. Null: there is none of that
// identifier.
constexpr std::array<const char*, kFirstWithLength> kForms = {
    "",  "u",  "u", "",  "u", "", "u", "uu", "u", "uus",  "",    "",
    "u", "uu", "s", "u", "u", "", "",  "u",  "",  "uuuu", "uus", nullptr};

}  // namespace

PacketCursor::Failure ReadPacket(std::string_view bytes, Packet& packet) {
    using Failure = PacketCursor::Failure;
    PacketCursor cursor(bytes);
    packet.id = cursor.Short();
    if (packet.id >= kFirstWithLength) {
        packet.values = cursor.Take(cursor.Short());
    } else {
        const char* form = kForms[packet.id];
        if (!form) return Failure::Malformed;
        const auto before = bytes.size() - cursor.Left();
        for (; *form; ++form) {
            if (*form == 'u')
                cursor.Number();
            else
                cursor.Text();
        }
        packet.values = bytes.substr(before, bytes.size() - cursor.Left() - before);
    }
    packet.delta = cursor.Number();
    packet.size = bytes.size() - cursor.Left();
    return cursor.Failed();
}

}  // namespace kvx::formats::systemview
