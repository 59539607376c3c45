#include "analyze/model/SortKeys.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <numeric>

namespace kvx {

namespace {

constexpr std::size_t kChunk = sizeof(std::uint64_t);
constexpr std::uint64_t kSign = std::uint64_t{1} << 63;

// Sixteen characters, hexadecimal.
std::string Digits(std::uint64_t bits) {
    std::string digits(16, '0');
    for (auto at = digits.rbegin(); at != digits.rend(); ++at, bits >>= 4)
        *at = "0123456789abcdef"[bits & 15];
    return digits;
}

}  // namespace

std::string NumberKey(std::int64_t value) {
    return Digits(static_cast<std::uint64_t>(value) ^ kSign);
}

// Doubles are ordered as their bits are, but for the sign.
std::string NumberKey(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value + 0.0);
    return Digits(bits & kSign ? ~bits : bits ^ kSign);
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
    if (begin >= ends_[row]) return 0;
    const std::size_t length = std::min(ends_[row] - begin, kChunk);
    const std::size_t stored = std::min(text_.size() - begin, kChunk);
    std::array<unsigned char, kChunk> chunk{};
    std::memcpy(chunk.data(), text_.data() + begin, stored);
    std::uint64_t bytes = 0;
    for (const unsigned char byte : chunk) bytes = bytes << 8 | byte;
    return bytes & ~std::uint64_t{0} << 8 * (kChunk - length);
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

std::vector<std::uint32_t> SortKeys::Order(bool ascending,
                                           std::vector<std::uint32_t> before) const {
    std::vector<std::uint32_t> order = std::move(before);
    if (order.empty()) {
        order.resize(ends_.size());
        std::iota(order.begin(), order.end(), 0u);
    }
    std::vector<Item> items(order.size());
    for (std::size_t i = 0; i < items.size(); ++i) items[i].row = order[i];
    SortFrom(items.data(), items.data() + items.size(), 0, ascending);
    for (std::size_t i = 0; i < items.size(); ++i) order[i] = items[i].row;
    return order;
}

}  // namespace kvx
