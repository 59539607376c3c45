#include "analyze/model/SortKeys.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace kvx {

namespace {
constexpr std::size_t kChunk = sizeof(std::uint64_t);
}

std::string NumberKey(std::int64_t value, std::size_t width, char fill) {
    std::array<char, 24> digits;
    const char* const end = std::to_chars(digits.begin(), digits.end(), value).ptr;
    const auto length = static_cast<std::size_t>(end - digits.data());
    std::string key(width > length ? width - length : 0, fill);
    return key.append(digits.data(), length);
}

void SortKeys::Reserve(std::size_t rows, std::size_t bytesPerRow) {
    text_.reserve(rows * bytesPerRow);
    ends_.reserve(rows);
}

void SortKeys::Add(std::string_view key) {
    text_ += key;
    ends_.push_back(text_.size());
}

std::uint64_t SortKeys::Bytes(std::uint32_t row, std::size_t from) const {
    const std::size_t begin = (row ? ends_[row - 1] : 0) + from;
    const std::size_t length = std::min(ends_[row] - std::min(begin, ends_[row]), kChunk);
    std::uint64_t bytes = 0;
    for (std::size_t i = 0; i < length; ++i)
        bytes |= std::uint64_t{static_cast<unsigned char>(text_[begin + i])} << (56 - 8 * i);
    return bytes;
}

// Sorts rows whose keys agree in the first from bytes.
void SortKeys::SortFrom(Item* begin, Item* end, std::size_t from, bool ascending) const {
    for (Item* item = begin; item != end; ++item) item->bytes = Bytes(item->row, from);
    std::stable_sort(begin, end, [ascending](const Item& a, const Item& b) {
        return ascending ? a.bytes < b.bytes : b.bytes < a.bytes;
    });
    for (Item* first = begin; first != end;) {
        Item* const last = std::find_if(
            first, end, [first](const Item& item) { return item.bytes != first->bytes; });
        const bool ended = (first->bytes & 0xFF) == 0;
        if (!ended && last - first > 1) SortFrom(first, last, from + kChunk, ascending);
        first = last;
    }
}

std::vector<std::uint32_t> SortKeys::Order(bool ascending) const {
    std::vector<Item> items(ends_.size());
    for (std::uint32_t row = 0; row < items.size(); ++row) items[row].row = row;
    SortFrom(items.data(), items.data() + items.size(), 0, ascending);
    std::vector<std::uint32_t> order;
    order.reserve(items.size());
    for (const Item& item : items) order.push_back(item.row);
    return order;
}

}  // namespace kvx
