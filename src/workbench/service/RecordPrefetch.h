#pragma once
// Reads the records of a recording in order, while threads of its own have already read those that
// follow. For recordings whose parts can be read at once.

#include <cstdint>
#include <span>
#include <vector>

#include "workbench/service/ChunksAhead.h"
#include "workbench/service/Recording.h"

namespace kvx::service {

class RecordPrefetch {
  public:
    // The recording is borrowed and must be one that can be read in parts.
    RecordPrefetch(const Recording& recording, unsigned threads);

    // The records that follow those of the last call. There must be as many.
    void Read(std::span<Record> out);

  private:
    std::span<const Record> left_;  // of the chunk at hand
    ChunksAhead<std::vector<Record>> chunks_;
};

}  // namespace kvx::service
