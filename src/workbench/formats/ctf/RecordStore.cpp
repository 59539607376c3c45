#include "workbench/formats/ctf/RecordStore.h"

#include <limits>

namespace kvx::formats::ctf {

bool RecordStore::Add(std::int64_t time, std::uint16_t plan, std::uint16_t processor) {
    constexpr std::size_t kMost = std::numeric_limits<std::int32_t>::max();
    if (entries_.size() >= kMost || values_.size() >= kMost) return false;
    entries_.push_back({time, static_cast<std::uint32_t>(values_.size()), plan, processor});
    return true;
}

void RecordStore::AddNumber(std::uint64_t value) {
    for (; value >= 0x80; value >>= 7) values_.push_back(static_cast<char>(value | 0x80));
    values_.push_back(static_cast<char>(value));
}

void RecordStore::AddSigned(std::int64_t value) {
    const auto sign = static_cast<std::uint64_t>(value >> 63);
    AddNumber((static_cast<std::uint64_t>(value) << 1) ^ sign);
}

void RecordStore::AddText(std::string_view text) {
    AddNumber(text.size());
    for (const char c : text) values_.push_back(c);
}

ByteCursor RecordStore::Values(std::uint32_t record) const {
    const std::size_t begin = entries_[record].values;
    const std::size_t end = record + 1 < Count() ? entries_[record + 1].values : values_.size();
    return ByteCursor(std::string_view(values_.data(), values_.size()).substr(begin, end - begin));
}

}  // namespace kvx::formats::ctf
