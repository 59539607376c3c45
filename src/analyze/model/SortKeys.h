#pragma once
// The order of texts by their bytes.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kvx {

class SortKeys {
  public:
    // The next text. It holds no zero byte.
    void Add(std::string_view key);
    // The texts, numbered as they were added, in ascending order; equal ones in that in which they
    // were added.
    std::vector<std::uint32_t> Order() const;

  private:
    // Eight bytes of a key, the first the most significant, and the number of the key.
    struct Item {
        std::uint64_t bytes;
        std::uint32_t number;
    };
    std::uint64_t Bytes(std::uint32_t number, std::size_t from) const;
    void SortFrom(Item* begin, Item* end, std::size_t from) const;

    std::string text_;
    std::vector<std::size_t> ends_;
};

}  // namespace kvx
