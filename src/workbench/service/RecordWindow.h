#pragma once
// Reads records ahead, so that the decoder can look at what follows.

#include <cstdint>
#include <deque>
#include <optional>
#include <unordered_map>
#include <vector>

#include "workbench/service/RecordPrefetch.h"

namespace kvx::service {

class RecordWindow {
  public:
    // How many records beyond the current one can be looked at, unless the recording ends.
    static constexpr std::uint32_t kAhead = 32;
    // The same where tasks can move between processors: a task that becomes ready is shown where it
    // runs next, if that is no further away than this.
    static constexpr std::uint32_t kRunsAhead = 16384;

    explicit RecordWindow(Recording& recording);

    // record must be the one of the last call, or the one after it; 0 at first.
    const Record& At(std::uint32_t record);
    // A record up to kAhead after that of the last At; null beyond that or the end.
    const Record* Ahead(std::uint32_t distance) const;
    // The processor of the next record after that of the last At with which the task starts to run.
    // None: there is none among those looked at.
    std::optional<std::uint32_t> NextRunOf(std::uint64_t task);

  private:
    struct Run {
        std::uint32_t record;
        std::uint32_t processor;
    };
    void Fill(std::uint32_t record);
    void NoteRuns(std::uint32_t from);

    Recording& recording_;
    const bool followsRuns_;
    std::optional<RecordPrefetch> prefetch_;  // where reading at once is worth it
    std::vector<Record> records_;
    std::uint32_t first_ = 0;  // number of records_.front()
    std::uint32_t current_ = 0;
    std::unordered_map<std::uint64_t, std::deque<Run>> runs_;  // by task
};

}  // namespace kvx::service
