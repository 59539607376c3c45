#pragma once
// The states of the tasks, and which of them runs. Every change is recorded.

#include "workbench/simulation/ReadyQueue.h"
#include "workbench/simulation/Recorder.h"
#include "workbench/simulation/TimerQueue.h"
#include "workbench/simulation/WaitQueue.h"

namespace kvx::simulation {

class Scheduler {
  public:
    Scheduler(Recorder& recorder, TimerQueue& timers) : recorder_(recorder), timers_(timers) {}

    // Puts a new task into the state that it has at the start; recorded nowhere.
    void Introduce(Task& task);

    Task* Running() const { return running_; }
    // The ready task of the highest priority takes the processor, unless it has it.
    void Dispatch();

    void Activate(Task& task);
    // The task exits or is terminated; it unlocks its mutexes, and starts again when another
    // activation is queued.
    void Exit(Task& task);

    // The running task waits in queue (null: sleep or delay) for at most so many milliseconds, or
    // for ever; it returns at once with E_TMOUT when it is not to wait. What the wait needs is set
    // in wait beforehand. The result is the call's until the task is released.
    CallResult Block(WaitQueue* queue, std::int32_t timeout, Wait wait = {});
    // A waiting task gets what it waits for.
    void Release(Task& task, CallResult result = {});
    // A waiting task goes on without it.
    void Abandon(Task& task, std::int32_t ercd);

    CallResult Suspend(Task& task);
    CallResult Resume(Task& task);

    enum class Place { First, Last };
    // place: among the ready tasks of the new priority.
    void SetPriority(Task& task, std::int32_t priority, Place place);
    void Rotate(std::int32_t priority) { ready_.Rotate(priority); }

  private:
    void SetState(Task& task, LoggedState state);
    void StopWaiting(Task& task);

    Recorder& recorder_;
    TimerQueue& timers_;
    ReadyQueue ready_;
    Task* running_ = nullptr;
};

}  // namespace kvx::simulation
