#pragma once
// Reads values out of the bytes of a SystemView recording. Nothing outside them is ever read: what
// is not there reads as zero or empty, and the cursor has failed from then on.

#include <cstdint>
#include <string_view>

namespace kvx::formats::systemview {

class PacketCursor {
  public:
    enum class Failure : std::uint8_t { None, Cut, Malformed };

    explicit PacketCursor(std::string_view bytes) : rest_(bytes) {}

    bool AtEnd() const { return rest_.empty(); }
    std::size_t Left() const { return rest_.size(); }
    // Cut: the bytes end within a value. Malformed: a number of more than five bytes.
    Failure Failed() const { return failure_; }

    std::uint8_t Byte() {
        if (rest_.empty()) {
            if (failure_ == Failure::None) failure_ = Failure::Cut;
            return 0;
        }
        const auto byte = static_cast<std::uint8_t>(rest_.front());
        rest_.remove_prefix(1);
        return byte;
    }
    // Seven bits a byte, lowest first; the top bit says that more follows.
    std::uint32_t Number() {
        std::uint32_t value = 0;
        for (unsigned shift = 0; shift < 35; shift += 7) {
            const auto byte = Byte();
            value |= static_cast<std::uint32_t>(byte & 0x7F) << shift;
            if (byte < 0x80) return value;
        }
        failure_ = Failure::Malformed;
        return value;
    }
    // Identifiers and lengths: one byte, or two where the first one's top bit is set.
    std::uint32_t Short() {
        const std::uint32_t first = Byte();
        return first < 0x80 ? first : (first & 0x7F) | static_cast<std::uint32_t>(Byte()) << 7;
    }
    std::string_view Take(std::size_t bytes) {
        const auto taken = rest_.substr(0, bytes);
        if (taken.size() < bytes && failure_ == Failure::None) failure_ = Failure::Cut;
        rest_.remove_prefix(taken.size());
        return taken;
    }
    std::string_view Text() {
        std::size_t length = Byte();
        if (length == 0xFF) {
            length = Byte();
            length |= static_cast<std::size_t>(Byte()) << 8;
        }
        return Take(length);
    }

  private:
    std::string_view rest_;
    Failure failure_ = Failure::None;
};

}  // namespace kvx::formats::systemview
