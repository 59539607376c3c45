#include "workbench/service/RecordWindow.h"

#include <algorithm>

namespace kvx::service {
namespace {
constexpr std::uint32_t kWindow = 256;
}

const Record& RecordWindow::At(std::uint32_t record) {
    current_ = record;
    const auto needed = std::min(recording_.RecordCount() - record, kAhead + 1);
    if (record < first_ || record + needed > first_ + records_.size()) Fill(record);
    return records_[record - first_];
}

const Record* RecordWindow::Ahead(std::uint32_t distance) const {
    if (distance > kAhead) return nullptr;
    const auto at = current_ - first_ + std::size_t{distance};
    return at < records_.size() ? &records_[at] : nullptr;
}

void RecordWindow::Fill(std::uint32_t record) {
    std::size_t kept = 0;
    if (record >= first_ && record - first_ < records_.size()) {
        kept = records_.size() - (record - first_);
        std::move(records_.end() - static_cast<std::ptrdiff_t>(kept), records_.end(),
                  records_.begin());
    }
    first_ = record;
    const auto total = std::min(recording_.RecordCount() - record, kWindow);
    records_.resize(total);
    recording_.Read(first_ + static_cast<std::uint32_t>(kept), std::span(records_).subspan(kept));
}

}  // namespace kvx::service
