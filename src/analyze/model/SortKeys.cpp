#include "analyze/model/SortKeys.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace kvx {

namespace {

constexpr std::size_t kChunk = sizeof(std::uint64_t);

}  // namespace

void SortKeys::Add(std::string_view key) {
    text_ += key;
    ends_.push_back(text_.size());
}

std::uint64_t SortKeys::Bytes(std::uint32_t number, std::size_t from) const {
    const std::size_t begin = (number ? ends_[number - 1] : 0) + from;
    if (begin >= ends_[number]) return 0;
    const std::size_t length = std::min(ends_[number] - begin, kChunk);
    const std::size_t stored = std::min(text_.size() - begin, kChunk);
    std::array<unsigned char, kChunk> chunk{};
    std::memcpy(chunk.data(), text_.data() + begin, stored);
    std::uint64_t bytes = 0;
    for (const unsigned char byte : chunk) bytes = bytes << 8 | byte;
    return bytes & ~std::uint64_t{0} << 8 * (kChunk - length);
}

// Sorts keys that agree in the first from bytes.
void SortKeys::SortFrom(Item* begin, Item* end, std::size_t from) const {
    for (Item* item = begin; item != end; ++item) item->bytes = Bytes(item->number, from);
    std::stable_sort(begin, end, [](const Item& a, const Item& b) { return a.bytes < b.bytes; });
    for (Item* first = begin; first != end;) {
        Item* const last = std::find_if(
            first, end, [first](const Item& item) { return item.bytes != first->bytes; });
        const bool ended = (first->bytes & 0xFF) == 0;
        if (!ended && last - first > 1) SortFrom(first, last, from + kChunk);
        first = last;
    }
}

std::vector<std::uint32_t> SortKeys::Order() const {
    std::vector<Item> items(ends_.size());
    for (std::size_t i = 0; i < items.size(); ++i) items[i].number = static_cast<std::uint32_t>(i);
    SortFrom(items.data(), items.data() + items.size(), 0);
    std::vector<std::uint32_t> order;
    order.reserve(items.size());
    for (const Item& item : items) order.push_back(item.number);
    return order;
}

}  // namespace kvx
