#pragma once
// 16-byte identifiers, written as "{8-4-4-4-12}" texts and compared byte by byte.

#include <array>
#include <cstdint>
#include <string_view>

struct GUID {
    std::array<std::uint8_t, 16> bytes{};
    friend constexpr bool operator==(const GUID&, const GUID&) = default;
    friend constexpr auto operator<=>(const GUID&, const GUID&) = default;
};
static_assert(sizeof(GUID) == 16);

namespace kvx {

// The identifier of a text such as "{68A9B7A2-46BD-421A-8A10-2DBD7B54B7DC}", in the memory layout
// of the platform (the first three groups little-endian). A malformed text does not compile.
consteval GUID MakeGuid(std::string_view text) {
    if (text.size() != 38 || text.front() != '{' || text.back() != '}')
        throw "malformed identifier";
    constexpr std::array<int, 16> kOffset = {7,  5,  3,  1,  12, 10, 17, 15,
                                             20, 22, 25, 27, 29, 31, 33, 35};
    auto digit = [](char c) -> unsigned {
        if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0');
        if (c >= 'A' && c <= 'F') return static_cast<unsigned>(c - 'A') + 10;
        if (c >= 'a' && c <= 'f') return static_cast<unsigned>(c - 'a') + 10;
        throw "malformed identifier";
    };
    GUID guid;
    for (std::size_t i = 0; i < 16; ++i) {
        const auto at = static_cast<std::size_t>(kOffset[i]);
        guid.bytes[i] = static_cast<std::uint8_t>(digit(text[at]) * 16 + digit(text[at + 1]));
    }
    return guid;
}

}  // namespace kvx

// Identifier of the base interface that every interface answers.
inline constexpr GUID IID_IUnknown = kvx::MakeGuid("{00000000-0000-0000-C000-000000000046}");
