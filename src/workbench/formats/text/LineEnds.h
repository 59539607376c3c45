#pragma once
// Where the lines of a block of text end.

#include <bit>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace kvx::formats {

inline constexpr std::size_t kLineBlock = 64;

// Bit i is set where byte i of the block's 64 bytes is a line feed.
inline std::uint64_t LineEnds(const char* block) {
#if defined(__SSE2__)
    const __m128i feed = _mm_set1_epi8('\n');
    std::uint64_t ends = 0;
    for (int part = 0; part < 4; ++part) {
        __m128i bytes;
        std::memcpy(&bytes, block + 16 * part, sizeof(bytes));
        const auto mask =
            static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, feed)));
        ends |= std::uint64_t{mask} << (16 * part);
    }
    return ends;
#else
    std::uint64_t ends = 0;
    for (std::size_t i = 0; i < kLineBlock; ++i) ends |= std::uint64_t{block[i] == '\n'} << i;
    return ends;
#endif
}

// Appends to out where the lines of a whole number of blocks end, as offsets from data; answers
// behind the last one. out has room for one more than there are bytes and four.
inline std::uint32_t* AppendLineEnds(const char* data, std::uint32_t size, std::uint32_t* out) {
    constexpr std::uint64_t kTop = std::uint64_t{1} << 63;  // spares the case of no bit at all
    for (std::uint32_t block = 0; block < size; block += kLineBlock) {
        auto ends = LineEnds(data + block);
        // A few are written whether there are so many or not: no branch depends on the text.
        auto* next = out;
        for (int i = 0; i < 4; ++i, ends &= ends - 1) {
            out[i] = block + static_cast<std::uint32_t>(std::countr_zero(ends | kTop));
            next += ends != 0;
        }
        for (; ends; ends &= ends - 1)
            *next++ = block + static_cast<std::uint32_t>(std::countr_zero(ends));
        out = next;
    }
    return out;
}

}  // namespace kvx::formats
