#include "workbench/formats/events/RecordStore.h"

#include <algorithm>
#include <limits>
#include <unordered_map>

namespace kvx::formats {

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
    return ByteCursor(
        std::string_view(values_.data(), values_.size()).substr(entries_[record].values));
}

std::uint64_t RecordStore::PutInOrder() {
    if (std::ranges::is_sorted(entries_, {}, &Entry::time)) return 0;
    std::uint64_t stepsBack = 0;
    std::unordered_map<std::uint16_t, std::int64_t> latest;
    for (const auto& entry : entries_) {
        const auto [at, isNew] = latest.try_emplace(entry.processor, entry.time);
        if (entry.time < at->second) ++stepsBack;
        at->second = entry.time;
    }
    std::ranges::stable_sort(entries_, {}, &Entry::time);
    return stepsBack;
}

}  // namespace kvx::formats
