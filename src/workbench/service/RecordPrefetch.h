#pragma once
// Reads the records of a recording in order, while threads of its own have already read those that
// follow. For recordings whose parts can be read at once.

#include <array>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <mutex>
#include <span>
#include <thread>
#include <vector>

#include "workbench/service/Recording.h"

namespace kvx::service {

class RecordPrefetch {
  public:
    // The recording is borrowed and must be one that can be read in parts.
    RecordPrefetch(const Recording& recording, unsigned threads);
    ~RecordPrefetch();
    RecordPrefetch(const RecordPrefetch&) = delete;
    RecordPrefetch& operator=(const RecordPrefetch&) = delete;

    // The records that follow those of the last call. There must be as many.
    void Read(std::span<Record> out);

  private:
    static constexpr std::uint32_t kChunkRecords = 1024;
    static constexpr std::uint32_t kChunksAhead = 8;

    struct Chunk {
        std::vector<Record> records;
        bool isRead = false;
    };
    Chunk& ChunkOf(std::uint32_t number) { return chunks_[number % kChunksAhead]; }
    void Work(const std::stop_token& stop);
    void ReadChunk(std::uint32_t number);

    const Recording& recording_;
    const std::uint32_t count_;  // chunks

    std::mutex mutex_;
    std::condition_variable_any changed_;
    // Under the mutex. A chunk that is being read or taken is nobody else's.
    std::array<Chunk, kChunksAhead> chunks_;
    std::uint32_t claimed_ = 0;   // chunks that somebody has begun to read
    std::uint32_t taken_ = 0;     // chunks that were taken whole
    std::exception_ptr failure_;  // of reading a part; thrown at whoever reads on

    std::size_t offset_ = 0;  // records taken of chunk taken_
    std::vector<std::jthread> threads_;
};

}  // namespace kvx::service
