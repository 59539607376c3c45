#pragma once
// Turns the records of a recording into events, for all its processors in one pass. What records
// mean is decided here, whatever format they come from.

#include <cstdint>
#include <optional>
#include <span>
#include <unordered_map>
#include <unordered_set>

#include "workbench/service/CallNames.h"
#include "workbench/service/Inference.h"
#include "workbench/service/Loss.h"
#include "workbench/service/Priorities.h"
#include "workbench/service/Processor.h"
#include "workbench/service/RecordWindow.h"
#include "workbench/service/TaskTracker.h"

namespace kvx::service {

class Decoder {
  public:
    // All are borrowed. timelines: one for each processor of the recording, with the contexts that
    // are known beforehand.
    Decoder(Recording& recording, const Inferred& inferred, std::span<Timeline* const> timelines,
            CallNames& names, Priorities& priorities, Moment& moment);

    // The record that comes next.
    std::uint32_t Next() const { return next_; }
    // Decodes it.
    void DecodeOne();
    // What was lost and noted that belongs to no processor.
    const LossCounters& Losses() const { return losses_; }

  private:
    void Start(Processor& on, const Record& first);
    void Apply(Processor& on, const Record& record);
    void OnDispatchTo(Processor& on, const ContextKey& to);
    void OnDispatchFrom(Processor& on, const ContextKey& from);
    void OnSwitchedOut(Processor& on, const ContextKey& from);
    void OnSwitch(Processor& on, const Record& record);
    void OnState(Processor& on, const Record& record);
    void OnSuspend(Task& task);
    void OnResume(Task& task);
    void OnEnter(Processor& on, const ContextKey& handler);
    void OnLeave(Processor& on, const ContextKey& handler, const ContextKey& then);
    void OnLeaveUnentered(Processor& on, const ContextKey& handler);
    void OnCall(Processor& on, const Record& record);
    void OnReturn(Processor& on, const Record& record);
    void OnMigrate(const Record& record);
    void OnGap(Processor& on);
    void OnPriority(const Processor& on, const Record& record);
    void ApplyInferredReady();

    Timeline* TimelineOf(std::uint32_t processor) const;
    Processor& ProcessorOf(std::uint32_t number);
    Task& TaskOf(const ContextKey& key, std::uint32_t processor);
    void BecomeReady(Task& task, bool suspended, std::uint32_t fallback);
    void LearnIdle(Processor& on);
    void DispatchToTask(Processor& on, Task* task);
    void Learn(Processor& on, const ContextKey& running);
    void LearnRunning(Processor& on);
    void LearnAhead(Processor& on);
    void UnwindHandlers(Processor& on);
    void DispatchBelow(Processor& on);
    bool RunsAlready(const Processor& on, const ContextKey& key) const;
    bool DispatchFollows(const Processor& on, const Task& task) const;
    Condition NewCondition(Task& task, const Record& record);
    Condition Wait(Task& task, std::uint8_t waitCode, std::uint32_t cause = kNoRecord);
    std::optional<Condition> ConcludedWait(const Task& task);
    bool IsSuspended(const Record& record);
    bool Loses(Task& task);
    // Whether an ascending list of records holds the one at hand; at: where it was looked last.
    bool Holds(const std::vector<std::uint32_t>& records, std::size_t& at) const {
        while (at < records.size() && records[at] < next_) ++at;
        return at < records.size() && records[at] == next_;
    }
    void Count(Timeline* timeline, Loss loss, std::uint64_t count = 1) {
        (timeline ? timeline->losses : losses_).Add(loss, count);
    }
    void Count(const Processor& on, Loss loss, std::uint64_t count = 1) {
        Count(on.timeline, loss, count);
    }

    Recording& recording_;
    const Inferred& inferred_;
    const std::span<Timeline* const> timelines_;
    CallNames& names_;
    Priorities& priorities_;
    Moment& moment_;
    TaskTracker tasks_;
    RecordWindow window_;
    LossCounters losses_;
    std::unordered_map<std::uint32_t, Processor> processors_;
    Processor* lastProcessor_ = nullptr;
    std::unordered_set<std::uint64_t> declaredTasks_;
    std::uint32_t next_ = 0;
    std::size_t nextWait_ = 0;  // in inferred_
    std::size_t nextUnknown_ = 0;
    std::size_t nextCause_ = 0;
    std::size_t nextReady_ = 0;  // in inferred_
};

}  // namespace kvx::service
