#include "workbench/formats/ctf/Metadata.h"

#include <algorithm>
#include <cctype>
#include <vector>

#include "platform/base/Text.h"

namespace kvx::formats::ctf {
namespace {

constexpr std::size_t kLargestText = std::size_t{16} << 20;  // worth a look
constexpr std::string_view kTextBegin = "/* CTF 1.8";
constexpr std::string_view kPacketLittle = "\x57\x1D\xD1\x75";
constexpr std::string_view kPacketBig = "\x75\xD1\x1D\x57";
constexpr std::size_t kPacketHead = 37;  // bytes
constexpr std::size_t kContentSizeAt = 24;
constexpr std::size_t kPacketSizeAt = 28;

std::size_t LineOf(std::string_view text, std::size_t at) {
    return static_cast<std::size_t>(std::ranges::count(text.substr(0, at), '\n')) + 1;
}

}  // namespace

std::string WithoutCommentsAndStrings(std::string_view text) {
    std::string bare(text);
    for (std::size_t i = 0; i < bare.size();) {
        std::size_t end = i + 1;
        if (bare.compare(i, 2, "/*") == 0) {
            const auto close = bare.find("*/", i + 2);
            end = close == std::string::npos ? bare.size() : close + 2;
        } else if (bare.compare(i, 2, "//") == 0) {
            end = std::min(bare.find('\n', i), bare.size());
        } else if (bare[i] == '"') {
            while (end < bare.size() && bare[end] != '"') end += bare[end] == '\\' ? 2u : 1u;
            end = std::min(end + 1, bare.size());
        } else {
            ++i;
            continue;
        }
        std::replace_if(
            bare.begin() + static_cast<std::ptrdiff_t>(i),
            bare.begin() + static_cast<std::ptrdiff_t>(end), [](char c) { return c != '\n'; }, ' ');
        i = end;
    }
    return bare;
}

namespace {

std::string FindBracketFault(std::string_view bare) {
    struct Open {
        char bracket;
        std::size_t at;
    };
    std::vector<Open> open;
    constexpr std::string_view kOpening = "{[(";
    constexpr std::string_view kClosing = "}])";
    for (std::size_t i = 0; i < bare.size(); ++i) {
        if (kOpening.find(bare[i]) != std::string_view::npos) open.push_back({bare[i], i});
        const auto closing = kClosing.find(bare[i]);
        if (closing == std::string_view::npos) continue;
        if (open.empty() || open.back().bracket != kOpening[closing])
            return FormatText("line %zu: unexpected \"%c\"", LineOf(bare, i), bare[i]);
        open.pop_back();
    }
    if (open.empty()) return {};
    return FormatText("line %zu: \"%c\" is not closed", LineOf(bare, open.back().at),
                      open.back().bracket);
}

// The value of "name = value;" behind at; empty where there is none. at moves to the name.
std::string_view ValueOf(std::string_view bare, std::string_view name, std::size_t& at) {
    at = bare.find(name, at);
    if (at == std::string_view::npos) return {};
    auto rest = bare.substr(at + name.size());
    const auto begin = rest.find_first_not_of(" \t=");
    if (begin == std::string_view::npos) return {};
    rest.remove_prefix(begin);
    return rest.substr(0, std::min(rest.find_first_not_of("0123456789"), rest.size()));
}

std::string FindVersionFault(std::string_view bare) {
    const auto trace = bare.find("trace");
    if (trace == std::string_view::npos) return "there is no \"trace\" block";
    auto at = trace;
    const std::string major(ValueOf(bare, "major", at));
    const auto line = at == std::string_view::npos ? LineOf(bare, trace) : LineOf(bare, at);
    at = trace;
    const std::string minor(ValueOf(bare, "minor", at));
    if (major == "1" && minor == "8") return {};
    if (major.empty() || minor.empty())
        return FormatText("line %zu: the trace block does not say its CTF version", line);
    return FormatText("line %zu: CTF version %s.%s; only 1.8 can be read", line, major.c_str(),
                      minor.c_str());
}

}  // namespace

bool LooksLikeMetadata(std::string_view bytes) {
    return bytes.starts_with(kTextBegin) || bytes.starts_with(kPacketLittle) ||
           bytes.starts_with(kPacketBig);
}

Result<std::string> MetadataText(std::string_view bytes) {
    if (bytes.starts_with(kTextBegin)) return std::string(bytes);
    const bool big = bytes.starts_with(kPacketBig);
    const auto number = [&](std::string_view from, std::size_t at) {
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < 4; ++i)
            value = value << 8 | static_cast<unsigned char>(from[at + (big ? i : 3 - i)]);
        return value;
    };
    const auto damaged = [](std::size_t at, std::size_t size, std::size_t left) {
        return Error{FormatText("byte %zu: a packet of %zu bytes, of which the file has %zu", at,
                                size, left)};
    };
    std::string text;
    for (std::size_t at = 0; at < bytes.size();) {
        const auto rest = bytes.substr(at);
        if (rest.size() < kPacketHead) return damaged(at, kPacketHead, rest.size());
        if (!rest.starts_with(big ? kPacketBig : kPacketLittle))
            return Error{FormatText("byte %zu: no packet begins here, though one should", at)};
        const std::size_t content = number(rest, kContentSizeAt) / 8;
        const std::size_t packet = number(rest, kPacketSizeAt) / 8;
        if (content > rest.size()) return damaged(at, content, rest.size());
        if (content < kPacketHead || packet < content)
            return Error{FormatText("byte %zu: a packet of %zu bytes, %zu of them used", at, packet,
                                    content)};
        text += rest.substr(kPacketHead, content - kPacketHead);
        at += packet;
    }
    return text;
}

std::string FindMetadataFault(std::string_view text) {
    if (text.size() > kLargestText) return {};
    const auto bare = WithoutCommentsAndStrings(text);
    const auto fault = FindBracketFault(bare);
    return fault.empty() ? FindVersionFault(bare) : fault;
}

}  // namespace kvx::formats::ctf
