#pragma once
// Turns the records of a recording into the events of one processor. What records mean is decided
// here, whatever format they come from.
//
// Records of the other processors are followed too: they tell which tasks move here, and who
// releases a task of this processor.

#include <cstdint>
#include <unordered_map>
#include <unordered_set>

#include "workbench/service/CallNames.h"
#include "workbench/service/EventWriter.h"
#include "workbench/service/Inference.h"
#include "workbench/service/Loss.h"
#include "workbench/service/Processor.h"
#include "workbench/service/RecordWindow.h"
#include "workbench/service/TaskTracker.h"

namespace kvx::service {

class Decoder {
  public:
    // All are borrowed. store must be empty; contexts and names may know some already.
    Decoder(Recording& recording, std::uint32_t processor, const Inferred& inferred,
            ContextTable& contexts, CallNames& names, EventStore& store);

    // The record that comes next.
    std::uint32_t Next() const { return next_; }
    // Decodes it.
    void DecodeOne();
    // The latest time decoded.
    std::int64_t Now() const { return writer_.Now(); }
    const LossCounters& Losses() const { return losses_; }

  private:
    void Start(const Record& first);
    void Apply(Processor& on, const Record& record);
    void OnDispatchTo(Processor& on, const ContextKey& to);
    void OnDispatchFrom(Processor& on, const ContextKey& from);
    void OnSwitchedOut(Processor& on, const ContextKey& from);
    void OnSwitch(Processor& on, const Record& record);
    void OnState(Processor& on, const Record& record);
    void OnSuspend(Task& task);
    void OnResume(Task& task);
    void OnEnter(Processor& on, const ContextKey& handler);
    void OnLeave(Processor& on, const ContextKey& handler);
    void OnLeaveUnentered(Processor& on, const ContextKey& handler);
    void OnCall(Processor& on, const Record& record);
    void OnReturn(Processor& on, const Record& record);
    void OnMigrate(const Record& record);
    void ApplyInferredReady();

    Processor& ProcessorOf(std::uint32_t number);
    Task& TaskOf(const ContextKey& key, std::uint32_t processor);
    bool IsShown(const Processor& on) const { return on.number == shown_; }
    void Learn(Processor& on, const ContextKey& running);
    void LearnAhead(Processor& on);
    void UnwindHandlers(Processor& on);
    void DispatchBelow(Processor& on);
    bool RunsAlready(const Processor& on, const ContextKey& key) const;
    bool DispatchFollows(const Processor& on, const Task& task) const;
    Condition NewCondition(Task& task, const Record& record);
    Condition Wait(Task& task, std::uint8_t waitCode);
    void Count(const Processor& on, Loss loss, std::uint64_t count = 1);

    Recording& recording_;
    const std::uint32_t shown_;
    const Inferred& inferred_;
    ContextTable& contexts_;
    CallNames& names_;
    EventWriter writer_;
    TaskTracker tasks_;
    RecordWindow window_;
    LossCounters losses_;
    std::unordered_map<std::uint32_t, Processor> processors_;
    Processor* lastProcessor_ = nullptr;
    std::unordered_set<std::uint64_t> declaredTasks_;
    std::uint32_t next_ = 0;
    bool started_ = false;
    std::size_t nextWait_ = 0;   // in inferred_
    std::size_t nextReady_ = 0;  // in inferred_
};

}  // namespace kvx::service
