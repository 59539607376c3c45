#pragma once
// All packets of a recording, numbered in order of time, with names for what they speak of. Found
// out once when it is opened; read afterwards from any place.

#include <cstdint>
#include <functional>
#include <vector>

#include "workbench/formats/OpenRecording.h"
#include "workbench/formats/systemview/Merger.h"
#include "workbench/formats/systemview/Survey.h"

namespace kvx::formats::systemview {

class Stream {
  public:
    // Looks at every packet; counts what is lost. False: it was cancelled.
    bool Load(std::vector<Core> cores, service::LossCounters& losses, IOpenProgress* progress);

    const Survey& Facts() const { return survey_; }
    const std::vector<Core>& Cores() const { return cores_; }
    std::uint32_t Count() const { return count_; }
    std::uint64_t LastTicks() const { return lastTicks_; }

    // Walks through the packets from any of them on. Several may walk at the same time.
    class Walk {
      public:
        explicit Walk(const Stream& stream) : stream_(&stream), merger_(stream.cores_) {}
        // Comes to the packet, which must be one of the stream's. The one after the last costs
        // nothing extra.
        const Merger& To(std::uint32_t record);

      private:
        const Stream* stream_;
        Merger merger_;
        std::uint32_t next_ = 0;
    };

  private:
    static constexpr std::uint32_t kEvery = 256;  // records between places that are kept

    bool LookThrough(Core& core, service::LossCounters& losses,
                     const std::function<bool(std::size_t)>& tell);
    static bool SkipDamage(Core& core, std::size_t at, bool cut, service::LossCounters& losses);
    void Index(service::LossCounters& losses);

    std::vector<Core> cores_;
    Survey survey_;
    std::vector<Place> places_;  // for every kEvery-th record one a core
    std::uint32_t count_ = 0;
    std::uint64_t lastTicks_ = 0;
};

}  // namespace kvx::formats::systemview
