#pragma once
// Reads records ahead, so that the decoder can look at what follows.

#include <cstdint>
#include <vector>

#include "workbench/service/Recording.h"

namespace kvx::service {

class RecordWindow {
  public:
    // How many records beyond the current one can be looked at, unless the recording ends.
    static constexpr std::uint32_t kAhead = 32;

    explicit RecordWindow(Recording& recording) : recording_(recording) {}

    // record must be the one of the last call, or a later one.
    const Record& At(std::uint32_t record);
    // A record up to kAhead after that of the last At; null beyond that or the end.
    const Record* Ahead(std::uint32_t distance) const;

  private:
    void Fill(std::uint32_t record);

    Recording& recording_;
    std::vector<Record> records_;
    std::uint32_t first_ = 0;  // number of records_.front()
    std::uint32_t current_ = 0;
};

}  // namespace kvx::service
