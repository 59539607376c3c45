#include "workbench/service/Loss.h"

namespace kvx::service {
namespace {

constexpr std::array<LossInfo, static_cast<std::size_t>(Loss::Count)> kTable = {{
    {"unreadable_records", "Lines or records that could not be read; each is left out."},
    {"cut_record", "The file ends in the middle of a record, which is left out."},
    {"discarded_records", "Records that the recorder itself had to drop."},
    {"discarded_packets", "Packets, each of many records, that the recorder had to drop."},
    {"damaged_tail", "The recording is damaged from some point on; what comes after is not shown."},
    {"resource_file_unreadable", "The resource file could not be read; contexts have no names."},
    {"handlers_not_left", "Handlers whose end is missing; they are ended by what ran next."},
    {"handlers_not_entered", "Handlers that end without having started; their run is not shown."},
    {"returns_without_call", "Returns of system calls whose issue is missing; they are left out."},
    {"calls_without_return", "System calls that a later return of an outer call shows to be over."},
    {"dispatches_from_other", "Dispatches away from a task that was not the one running."},
    {"time_steps_back", "Times of one processor that step back; records are put in order.", false},
    {"wait_cause_unknown", "Waits of which the recording does not say what for.", false},
    {"wait_causes_inferred",
     "Waits whose call is recorded only behind them; concluded from the call that follows.", false},
    {"waits_inferred", "Waits that no record tells, concluded from what follows.", false},
    {"states_unknown", "Tasks that lost the processor, and nothing says whether they wait.", false},
    {"ready_times_inferred", "Ready times concluded from what released the task.", false},
    {"ready_times_unknown",
     "Dispatches of tasks that were not recorded as ready; their wait is not measured.", false},
    {"calls_before_start", "Returns of system calls issued before the recording began.", false},
    {"handlers_before_start", "Ends of handlers that began before the recording.", false},
    {"tasks_not_declared", "Tasks that the resource file does not name.", false},
    {"resource_file_mended", "Superfluous commas in the resource file that were skipped.", false},
}};

}  // namespace

const LossInfo& GetLossInfo(Loss loss) {
    return kTable[static_cast<std::size_t>(loss)];
}

std::uint64_t LossCounters::TotalLosses() const {
    std::uint64_t total = 0;
    for (std::size_t i = 0; i < counts_.size(); ++i)
        if (kTable[i].isLoss) total += Get(static_cast<Loss>(i));
    return total;
}

LossCounters& LossCounters::operator=(const LossCounters& other) {
    if (this == &other) return *this;
    for (auto& counter : counts_) counter.store(0, std::memory_order_relaxed);
    return *this += other;
}

LossCounters& LossCounters::operator+=(const LossCounters& other) {
    for (std::size_t i = 0; i < counts_.size(); ++i)
        Add(static_cast<Loss>(i), other.Get(static_cast<Loss>(i)));
    return *this;
}

}  // namespace kvx::service
