// Where the metadata of CTF traces places the fields that tell how long packets are, and what is
// said of the program that reads them.

#include <gtest/gtest.h>

#include <csignal>

#include "platform/base/Text.h"
#include "workbench/formats/ctf/HelperProcess.h"
#include "workbench/formats/ctf/PacketLayout.h"

namespace kvx::formats::ctf {
namespace {

std::string Text(const std::optional<HeaderField>& field) {
    if (!field) return "-";
    return FormatText("%llu+%llu", static_cast<unsigned long long>(field->at),
                      static_cast<unsigned long long>(field->size));
}

// "magic stream_id | id: content packet | ..." in bits, with "be" in front where that is the order.
std::string Laid(std::string_view metadata) {
    const PacketLayout layout = FindPacketLayout(metadata);
    std::string text = layout.bigEndian ? "be " : "";
    text += Text(layout.magic) + " " + Text(layout.streamId);
    for (const auto& [id, context] : layout.contexts)
        text += FormatText(" | %llu: ", static_cast<unsigned long long>(id)) +
                Text(context.contentSize) + " " + Text(context.packetSize);
    return text;
}

constexpr char kTypes[] =
    "typealias integer { size = 8; align = 8; signed = false; } := uint8_t;"
    "typealias integer { size = 0x20; align = 0x20; signed = false; } := unsigned long;"
    "typealias integer { size = 5; align = 1; } := bits_5.a;"
    "typealias integer { size = 64; } := u64;";

struct Row {
    const char* metadata;
    const char* laid;
};

TEST(PacketLayout, FieldsStandWhereTheirTypesPutThem) {
    const Row rows[] = {
        {"trace { packet.header := struct { unsigned long magic; unsigned long stream_id; }; };",
         "0+32 32+32"},
        {"trace { byte_order = be; packet.header := struct { uint8_t x; unsigned long magic; }; };",
         "be 32+32 -"},
        {"trace { packet.header := struct { uint8_t uuid[16]; uint8_t stream_id; }; };", "- 128+8"},
        {"trace { packet.header := struct { bits_5.a x; bits_5.a y; uint8_t stream_id; }; };",
         "- 16+8"},
        {"trace { packet.header := struct { integer { size = 16; align = 8; } magic; }; };",
         "0+16 -"},
        {"trace { packet.header := struct { integer { size = 3; } x; integer { size = 3; } magic; "
         "}; };",
         "3+3 -"},
        {"struct h { unsigned long magic; }; trace { packet.header := struct h; };", "0+32 -"},
        {"trace { packet.header := struct h { unsigned long magic; }; };", "0+32 -"},
        {"trace { packet.header := struct missing; };", "- -"},
        {"trace { packet.header := struct { unknown_t x; unsigned long magic; }; };", "- -"},
        {"trace { packet.header := struct { struct { uint8_t a; } x; uint8_t magic; }; };", "- -"},
        {"typealias floating_point { size = 32; } := float_t;"
         "trace { packet.header := struct { float_t x; unsigned long magic; }; };",
         "- -"},
        {"trace { packet.header := struct { uint8_t x[0]; uint8_t magic; }; };", "- -"},
        {"trace { packet.header := struct { uint8_t x[n]; uint8_t magic; }; };", "- -"},
    };
    for (const auto& [metadata, laid] : rows)
        EXPECT_EQ(Laid(std::string(kTypes) + metadata), laid) << metadata;
}

TEST(PacketLayout, EachStreamHasItsOwnContext) {
    const Row rows[] = {
        {"stream { packet.context := struct { u64 packet_size; u64 content_size; }; };",
         "- - | 0: 64+64 0+64"},
        {"trace { packet.header := struct { uint8_t stream_id; }; };"
         "stream { id = 3; packet.context := struct { uint8_t cpu; u64 content_size; }; };"
         "stream { event.header := struct { uint8_t id; integer { size = 8; } t; }; id = 0x11; };",
         "- 0+8 | 3: 16+64 - | 17: - -"},
        {"stream { event.header := struct { id = 9; }; packet.context := struct { u64 "
         "packet_size; }; id = 2; };",
         "- - | 2: - 0+64"},
        {"struct c { u64 packet_size; }; stream { id = 4; packet.context := struct c; };"
         "event { id = 5; fields := struct { u64 content_size; }; };",
         "- - | 4: - 0+64"},
    };
    for (const auto& [metadata, laid] : rows)
        EXPECT_EQ(Laid(std::string(kTypes) + metadata), laid) << metadata;
    EXPECT_EQ(Laid("stream { id = 3; };"), "- - | 3: - -");
}

// Whatever is left of it.
TEST(PacketLayout, CutMetadataIsReadToItsEnd) {
    const std::string whole =
        std::string(kTypes) +
        "struct h { u64 magic; }; trace { byte_order = be; packet.header := struct h; };"
        "stream { id = 1; packet.context := struct { u64 packet_size; uint8_t x[4]; }; };";
    for (std::size_t size = 0; size <= whole.size(); ++size)
        FindPacketLayout(std::string_view(whole).substr(0, size));
    EXPECT_EQ(Laid(whole), "be 0+64 - | 1: - 64+64");
}

TEST(PacketLayout, FieldsAreReadInTheOrderOfBytes) {
    PacketLayout layout;
    const std::string_view bytes("\x01\x02\x03\xFF", 4);
    EXPECT_EQ(layout.Read({8, 16}, bytes), 0x0302u);
    layout.bigEndian = true;
    EXPECT_EQ(layout.Read({8, 16}, bytes), 0x0203u);
    EXPECT_EQ(layout.Read({24, 8}, bytes), 0xFFu);
    EXPECT_EQ(layout.Read({24, 16}, bytes), std::nullopt) << "behind the end";
    EXPECT_EQ(layout.Read({4, 8}, bytes), std::nullopt) << "between the bytes";
    EXPECT_EQ(layout.Read({0, 12}, bytes), std::nullopt);
}

TEST(HelperProcess, WhyItEndedIsTold) {
    EXPECT_EQ(WhyEnded({0, 0}), "");
    EXPECT_EQ(WhyEnded({0, 1}), "the CTF library gave up (status 1)");
    EXPECT_EQ(WhyEnded({SIGABRT, 0}), "the CTF library gave up (Aborted)");
}

}  // namespace
}  // namespace kvx::formats::ctf
