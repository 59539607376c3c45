#include "workbench/formats/systemview/Container.h"

#include <algorithm>
#include <optional>

#include "platform/base/Text.h"
#include "workbench/formats/systemview/Packet.h"
#include "workbench/formats/text/LineCursor.h"

namespace kvx::formats::systemview {
namespace {

constexpr std::size_t kMostCores = 64;
// How many packets behind a sync tell whether it is one.
constexpr int kLookedAt = 16;

struct Header {
    std::string author;
    std::vector<std::pair<std::uint32_t, std::uint64_t>> offsets;  // of further cores
    std::size_t size = 0;
    bool named = false;  // some line names the program
};

std::string_view WithoutBlanks(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\r')) text.remove_suffix(1);
    return text;
}

// "Offset Core1 12262"
void ReadOffset(std::string_view text, Header& header) {
    LineCursor cursor(text);
    if (!cursor.Accept("Offset Core")) return;
    const auto core = cursor.AcceptNumber<std::uint32_t>();
    const LineCursor rest(WithoutBlanks(cursor.Rest()));
    auto number = rest;
    const auto offset = number.AcceptNumber();
    if (core && offset && header.offsets.size() < kMostCores)
        header.offsets.emplace_back(*core, *offset);
}

Header ReadHeader(std::string_view bytes) {
    Header header;
    while (bytes.substr(header.size).starts_with(';')) {
        const auto end = bytes.find('\n', header.size);
        if (end == std::string_view::npos) break;
        auto line = WithoutBlanks(bytes.substr(header.size + 1, end - header.size - 1));
        header.size = end + 1;
        header.named |= line.find("SystemView") != std::string_view::npos;
        if (line.starts_with("Author")) header.author = WithoutBlanks(line.substr(6));
        ReadOffset(line, header);
    }
    return header;
}

bool IsStart(std::string_view behind) {
    bool init = false;
    for (int i = 0; i < kLookedAt && !init; ++i) {
        Packet packet;
        if (ReadPacket(behind, packet) != PacketCursor::Failure::None) return false;
        if (i == 0 && packet.id != kTraceStart && packet.id != kInit) return false;
        init = packet.id == kInit;
        behind.remove_prefix(packet.size);
    }
    return init;
}

// A dump of a recorder's memory may begin anywhere in it; no such memory is larger. A file of
// another format is not read for it as a whole.
constexpr std::size_t kLookedThrough = std::size_t{16} << 20;

// Where the first sync is that packets of a recording's beginning follow; none: nowhere.
std::optional<std::size_t> FindStart(std::string_view bytes) {
    for (auto at = bytes.find(kSync); at != std::string_view::npos;
         at = bytes.find(kSync, at + 1)) {
        // The last ten of the zeros.
        const auto behind = std::min(bytes.find_first_not_of('\0', at), bytes.size());
        at = behind - kSync.size();
        if (IsStart(bytes.substr(behind))) return at;
    }
    return std::nullopt;
}

}  // namespace

bool Recognises(std::string_view bytes) {
    const Header header = ReadHeader(bytes);
    if (header.size > 0 && !header.named && header.offsets.empty() && header.author.empty())
        return false;
    return (header.size > 0 && header.named) ||
           FindStart(bytes.substr(header.size, kLookedThrough)).has_value();
}

Result<Container> OpenContainer(std::string_view bytes) {
    Header header = ReadHeader(bytes);
    Container container;
    container.author = header.author;
    const auto body = bytes.substr(header.size);
    auto& offsets = header.offsets;
    const bool first =
        std::ranges::any_of(offsets, [](const auto& core) { return core.second == 0; });
    if (!first) offsets.emplace_back(0, 0);
    std::ranges::sort(offsets, {}, [](const auto& core) { return core.second; });
    for (std::size_t i = 0; i < offsets.size(); ++i) {
        const auto [number, offset] = offsets[i];
        if (offset >= body.size()) {
            container.missing.push_back(number);
            continue;
        }
        const auto end = i + 1 < offsets.size() ? offsets[i + 1].second : body.size();
        auto part = body.substr(offset, end - offset);
        const auto start = part.starts_with(kSync) ? 0 : FindStart(part).value_or(part.size());
        part.remove_prefix(start);
        const bool known =
            std::ranges::find(container.cores, number, &CorePart::number) != container.cores.end();
        if (known) return Error{FormatText("the header names core %u twice", number)};
        container.cores.push_back({number, part});
    }
    std::ranges::sort(container.cores, {}, &CorePart::number);
    return container;
}

}  // namespace kvx::formats::systemview
