#pragma once
// How busy a processor was over a whole recording, in slices of equal length, by context. Follows a
// recording that is still decoded.

#include <memory>
#include <vector>

#include "workbench/service/DecodedRecording.h"

namespace kvx::desktop {

class OverviewLoad {
  public:
    static constexpr int kSlices = 1000;
    // Contexts that are told apart; what the others run is added up as one more.
    static constexpr std::size_t kContexts = 64;

    // Null: none. timeline: number of the processor's in the recording.
    void SetRecording(std::shared_ptr<const service::DecodedRecording> decoded,
                      std::size_t timeline);
    // Takes in what was decoded since; true when something was.
    bool Advance();

    bool IsEmpty() const { return !decoded_; }
    std::int64_t Start() const { return start_; }
    std::int64_t End() const { return end_; }
    // By context in order of first runs, the others last: the share of a slice that it ran, 0 to 1.
    // Idle time is left out.
    const std::vector<std::vector<float>>& Shares() const { return shares_; }

  private:
    void Credit(std::uint32_t context, std::int64_t from, std::int64_t to);
    std::vector<float>& SharesOf(std::uint32_t context);

    std::shared_ptr<const service::DecodedRecording> decoded_;
    const service::Timeline* timeline_ = nullptr;
    std::int64_t start_ = 0;
    std::int64_t end_ = 0;
    double sliceLength_ = 1;
    std::size_t next_ = 0;      // dispatch whose run is taken in next
    bool isLastTaken_ = false;  // the run that is open at the end
    std::vector<int> placeOf_;  // by context; -1: it has not run
    std::vector<std::vector<float>> shares_;
};

}  // namespace kvx::desktop
