#pragma once
// Writes messages in blocks into a pipe. What is complete reaches the pipe even if the process
// dies: Rescue may be called from a signal handler.

#include <cstdint>
#include <string_view>
#include <vector>

#include "workbench/formats/ctf/Wire.h"

namespace kvx::ctf_reader {

class BlockWriter {
  public:
    // pipe: a file descriptor, borrowed.
    explicit BlockWriter(int pipe) : pipe_(pipe) { block_.resize(sizeof(std::uint32_t)); }

    void Number(std::uint64_t value) {
        for (; value >= 0x80; value >>= 7) block_.push_back(static_cast<char>(value | 0x80));
        block_.push_back(static_cast<char>(value));
    }
    void Signed(std::int64_t value) {
        const auto sign = static_cast<std::uint64_t>(value >> 63);
        Number((static_cast<std::uint64_t>(value) << 1) ^ sign);
    }
    void Text(std::string_view text) {
        text = text.substr(0, formats::ctf::wire::kLongestText);
        Number(text.size());
        block_.insert(block_.end(), text.begin(), text.end());
    }
    void Begin(formats::ctf::wire::Message message) { Number(static_cast<std::uint64_t>(message)); }

    // The message is complete. True: a block was written. Ends the program when nobody reads.
    bool EndMessage() {
        complete_ = block_.size();
        return complete_ >= formats::ctf::wire::kBlock && Flush();
    }
    bool Flush();
    void Rescue() noexcept;

  private:
    bool Send() noexcept;

    const int pipe_;
    std::vector<char> block_;
    volatile std::size_t complete_ = sizeof(std::uint32_t);
};

}  // namespace kvx::ctf_reader
