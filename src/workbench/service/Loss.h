#pragma once
// Named counters of what a recording lost, and of what is worth knowing about it though nothing is
// lost. A record that cannot be used costs itself and is counted here.

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvx::service {

// The order is that of the table in Loss.cpp.
enum class Loss : std::uint8_t {
    // Losses: something that the recording meant to say is not shown.
    UnreadableRecords,
    CutRecord,
    DiscardedRecords,
    DiscardedPackets,
    DamagedTail,
    ResourceFileUnreadable,
    HandlersNotLeft,
    HandlersNotEntered,
    ReturnsWithoutCall,
    CallsWithoutReturn,
    DispatchesFromOther,
    // Notes: nothing is missing.
    TimeStepsBack,
    WaitCauseUnknown,
    WaitCausesInferred,
    WaitsInferred,
    StatesUnknown,
    ReadyTimesInferred,
    ReadyTimesUnknown,
    CallsBeforeStart,
    HandlersBeforeStart,
    TasksNotDeclared,
    ResourceFileMended,
    Count
};

struct LossInfo {
    std::string_view name;  // as in `info`
    std::string_view help;  // one sentence for people
    bool isLoss = true;     // false: a note
};

const LossInfo& GetLossInfo(Loss loss);

// One thread counts; others may read at the same time.
class LossCounters {
  public:
    LossCounters() = default;
    LossCounters(const LossCounters& other) { *this += other; }
    LossCounters& operator=(const LossCounters& other);

    void Add(Loss loss, std::uint64_t count = 1) {
        auto& counter = counts_[static_cast<std::size_t>(loss)];
        counter.store(counter.load(std::memory_order_relaxed) + count, std::memory_order_relaxed);
    }
    std::uint64_t Get(Loss loss) const {
        return counts_[static_cast<std::size_t>(loss)].load(std::memory_order_relaxed);
    }
    // Number of losses, notes left out.
    std::uint64_t TotalLosses() const;
    LossCounters& operator+=(const LossCounters& other);

  private:
    std::array<std::atomic<std::uint64_t>, static_cast<std::size_t>(Loss::Count)> counts_{};
};

}  // namespace kvx::service
