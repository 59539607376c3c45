#include "workbench/service/RecordPrefetch.h"

#include <algorithm>

namespace kvx::service {
namespace {

constexpr std::uint32_t kChunkRecords = 1024;

std::uint32_t ChunksOf(const Recording& recording) {
    return (recording.RecordCount() + kChunkRecords - 1) / kChunkRecords;
}

}  // namespace

RecordPrefetch::RecordPrefetch(const Recording& recording, unsigned threads)
    : chunks_(ChunksOf(recording), threads,
              [&recording](std::uint32_t number, std::vector<Record>& records) {
                  const auto first = number * kChunkRecords;
                  records.resize(std::min(recording.RecordCount() - first, kChunkRecords));
                  recording.ReadPart(first, records);
              }) {}

void RecordPrefetch::Read(std::span<Record> out) {
    while (!out.empty()) {
        if (left_.empty()) left_ = chunks_.Next();
        const auto taken = std::min(out.size(), left_.size());
        std::ranges::copy(left_.first(taken), out.begin());
        out = out.subspan(taken);
        left_ = left_.subspan(taken);
    }
}

}  // namespace kvx::service
