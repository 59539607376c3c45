#include "workbench/service/RecordPrefetch.h"

#include <algorithm>

namespace kvx::service {

RecordPrefetch::RecordPrefetch(const Recording& recording, unsigned threads)
    : recording_(recording), count_((recording.RecordCount() + kChunkRecords - 1) / kChunkRecords) {
    for (unsigned i = 0; i < threads; ++i)
        threads_.emplace_back([this](const std::stop_token& stop) { Work(stop); });
}

RecordPrefetch::~RecordPrefetch() = default;

void RecordPrefetch::Work(const std::stop_token& stop) {
    for (;;) {
        std::uint32_t number = 0;
        {
            std::unique_lock lock(mutex_);
            const auto isRoom = [this] {
                return claimed_ == count_ || claimed_ < taken_ + kChunksAhead;
            };
            if (!changed_.wait(lock, stop, isRoom) || claimed_ == count_) return;
            number = claimed_++;
        }
        std::exception_ptr failure;
        try {
            ReadChunk(number);
        } catch (...) {
            failure = std::current_exception();
        }
        const std::lock_guard guard(mutex_);
        ChunkOf(number).isRead = true;
        if (failure) failure_ = failure;
        changed_.notify_all();
    }
}

void RecordPrefetch::ReadChunk(std::uint32_t number) {
    const auto first = number * kChunkRecords;
    auto& records = ChunkOf(number).records;
    records.resize(std::min(recording_.RecordCount() - first, kChunkRecords));
    recording_.ReadPart(first, records);
}

void RecordPrefetch::Read(std::span<Record> out) {
    while (!out.empty()) {
        Chunk& chunk = ChunkOf(taken_);
        {
            std::unique_lock lock(mutex_);
            changed_.wait(lock, [&] { return chunk.isRead; });
            if (failure_) std::rethrow_exception(failure_);
        }
        const auto taken = std::min(out.size(), chunk.records.size() - offset_);
        std::copy_n(chunk.records.begin() + static_cast<std::ptrdiff_t>(offset_), taken,
                    out.begin());
        out = out.subspan(taken);
        offset_ += taken;
        if (offset_ < chunk.records.size()) continue;
        offset_ = 0;
        const std::lock_guard guard(mutex_);
        chunk.isRead = false;
        ++taken_;
        changed_.notify_all();
    }
}

}  // namespace kvx::service
