#pragma once
// Writes messages in blocks into a pipe. What is complete reaches the pipe even if the process
// dies: Rescue may be called from a signal handler.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "workbench/formats/ctf/Wire.h"

namespace kvx::ctf_reader {

class BlockWriter {
  public:
    // pipe: a file descriptor, borrowed.
    explicit BlockWriter(int pipe) : pipe_(pipe), block_(kRoom), next_(kHead), complete_(kHead) {}

    void Number(std::uint64_t value) {
        Reserve(kLongestNumber);
        for (; value >= 0x80; value >>= 7) block_[next_++] = static_cast<char>(value | 0x80);
        block_[next_++] = static_cast<char>(value);
    }
    void Signed(std::int64_t value) {
        const auto sign = static_cast<std::uint64_t>(value >> 63);
        Number((static_cast<std::uint64_t>(value) << 1) ^ sign);
    }
    void Text(std::string_view text) {
        text = text.substr(0, formats::ctf::wire::kLongestText);
        Number(text.size());
        Reserve(text.size());
        std::copy(text.begin(), text.end(), block_.begin() + static_cast<std::ptrdiff_t>(next_));
        next_ += text.size();
    }
    void Begin(formats::ctf::wire::Message message) { Number(static_cast<std::uint64_t>(message)); }

    // The message is complete. True: a block was written. Ends the program when nobody reads.
    bool EndMessage() {
        complete_ = next_;
        return next_ >= formats::ctf::wire::kBlock && Flush();
    }
    bool Flush();
    void Rescue() noexcept;

  private:
    static constexpr std::size_t kHead = sizeof(std::uint32_t);
    static constexpr std::size_t kRoom = 16 * formats::ctf::wire::kBlock;
    static constexpr std::size_t kLongestNumber = 10;

    void Reserve(std::size_t bytes) {
        if (block_.size() - next_ < bytes) block_.resize(2 * block_.size() + bytes);
    }
    bool Send() noexcept;

    const int pipe_;
    std::vector<char> block_;
    std::size_t next_;  // where the next byte goes
    volatile std::size_t complete_;
};

}  // namespace kvx::ctf_reader
