#pragma once
// Reads values out of bytes. Nothing outside the bytes is ever read: what is not there reads as
// zero or empty.

#include <cstdint>
#include <string_view>

namespace kvx::formats {

class ByteCursor {
  public:
    explicit ByteCursor(std::string_view bytes) : rest_(bytes) {}

    bool AtEnd() const { return rest_.empty(); }

    // Seven bits a byte, lowest first; the top bit says that more follows.
    std::uint64_t Number() {
        std::uint64_t value = 0;
        for (unsigned shift = 0; shift < 64 && !rest_.empty(); shift += 7) {
            const auto byte = static_cast<unsigned char>(rest_.front());
            rest_.remove_prefix(1);
            value |= std::uint64_t{byte & 0x7Fu} << shift;
            if (byte < 0x80) break;
        }
        return value;
    }
    std::int64_t Signed() {
        const auto value = Number();
        return static_cast<std::int64_t>(value >> 1) ^ -static_cast<std::int64_t>(value & 1);
    }
    std::string_view Text() {
        const auto length = Number();
        const auto text = rest_.substr(0, length);
        rest_.remove_prefix(text.size());
        return text;
    }

  private:
    std::string_view rest_;
};

}  // namespace kvx::formats
