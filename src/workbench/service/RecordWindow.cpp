#include "workbench/service/RecordWindow.h"

#include <algorithm>

namespace kvx::service {
namespace {

constexpr std::uint32_t kWindow = 256;
// Fewer records are read sooner than a thread is started.
constexpr std::uint32_t kWorthAThread = 20000;
constexpr unsigned kMostThreads = 3;

// Threads that read, so that one processor is left for whoever takes what is read.
unsigned ReadingThreads() {
    return std::min(kMostThreads, std::max(std::thread::hardware_concurrency(), 1u) - 1);
}

bool StartsTask(const Record& record) {
    const bool starts = record.kind == RecordKind::DispatchTo || record.kind == RecordKind::Runs ||
                        record.kind == RecordKind::Switch;
    return starts && record.subject.id != 0;
}

}  // namespace

RecordWindow::RecordWindow(Recording& recording)
    : recording_(recording), followsRuns_(recording.Processors().size() > 1) {
    const bool worth = recording.IsReadInParts() && recording.RecordCount() >= kWorthAThread;
    if (const auto threads = ReadingThreads(); worth && threads > 0)
        prefetch_.emplace(recording, threads);
}

const Record& RecordWindow::At(std::uint32_t record) {
    current_ = record;
    const auto ahead = followsRuns_ ? kRunsAhead : kAhead;
    const auto needed = std::min(recording_.RecordCount() - record, ahead + 1);
    if (record < first_ || record + needed > first_ + records_.size()) Fill(record);
    return records_[record - first_];
}

const Record* RecordWindow::Ahead(std::uint32_t distance) const {
    if (distance > kAhead) return nullptr;
    const auto at = current_ - first_ + std::size_t{distance};
    return at < records_.size() ? &records_[at] : nullptr;
}

std::optional<std::uint32_t> RecordWindow::NextRunOf(std::uint64_t task) {
    const auto at = runs_.find(task);
    if (at == runs_.end()) return std::nullopt;
    auto& runs = at->second;
    while (!runs.empty() && runs.front().record <= current_) runs.pop_front();
    if (runs.empty()) return std::nullopt;
    return runs.front().processor;
}

void RecordWindow::Fill(std::uint32_t record) {
    std::size_t kept = 0;
    if (record >= first_ && record - first_ < records_.size()) {
        kept = records_.size() - (record - first_);
        std::move(records_.end() - static_cast<std::ptrdiff_t>(kept), records_.end(),
                  records_.begin());
    }
    first_ = record;
    const auto window = followsRuns_ ? 2 * kRunsAhead : kWindow;
    const auto total = std::min(recording_.RecordCount() - record, window);
    records_.resize(total);
    const auto begin = static_cast<std::uint32_t>(kept);
    const auto out = std::span(records_).subspan(begin);
    if (prefetch_)
        prefetch_->Read(out);
    else
        recording_.Read(first_ + begin, out);
    if (followsRuns_) NoteRuns(begin);
}

void RecordWindow::NoteRuns(std::uint32_t from) {
    for (auto& [task, runs] : runs_)
        while (!runs.empty() && runs.front().record < first_) runs.pop_front();
    std::erase_if(runs_, [](const auto& entry) { return entry.second.empty(); });
    for (auto i = from; i < records_.size(); ++i)
        if (StartsTask(records_[i]))
            runs_[records_[i].subject.id].push_back({first_ + i, records_[i].processor});
}

}  // namespace kvx::service
