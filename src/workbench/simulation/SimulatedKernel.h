#pragma once
// A priority-preemptive kernel of the uITRON kind on one simulated processor. It runs programs step
// by step and records what happens; nothing in it depends on the machine that it runs on.

#include <array>
#include <deque>
#include <tuple>

#include "workbench/simulation/DataQueue.h"
#include "workbench/simulation/EventFlag.h"
#include "workbench/simulation/FixedPool.h"
#include "workbench/simulation/InterruptLines.h"
#include "workbench/simulation/KernelMutex.h"
#include "workbench/simulation/Mailbox.h"
#include "workbench/simulation/MessageBuffer.h"
#include "workbench/simulation/Scheduler.h"
#include "workbench/simulation/Semaphore.h"
#include "workbench/simulation/VariablePool.h"

namespace kvx::simulation {

// A cyclic or an alarm handler.
struct TimedHandler {
    Handler handler;
    std::int32_t period = 0;  // milliseconds; 0 for an alarm
    std::int32_t phase = 0;   // milliseconds from the start to the first run
    Timer timer;
};

class SimulatedKernel {
  public:
    // sink is borrowed.
    SimulatedKernel(ITraceSink& sink, std::uint64_t seed)
        : random_(seed), recorder_(sink, random_) {}
    SimulatedKernel(const SimulatedKernel&) = delete;
    SimulatedKernel& operator=(const SimulatedKernel&) = delete;

    // Configuration, before Start. Ids count from 1 in the order of the calls, for each kind.
    std::int32_t AddTask(TaskConfig config);
    void AddInterrupt(InterruptLine line) { interrupts_.Add(std::move(line)); }
    // The interrupt that moves the kernel's clock, every millisecond.
    void AddTimerInterrupt(std::int32_t number, std::string name, std::int32_t level);
    std::int32_t AddServiceRoutine(std::string name, Body body);
    // Runs from the start.
    std::int32_t AddCyclic(std::string name, std::int32_t period, std::int32_t phase, Body body);
    std::int32_t AddAlarm(std::string name, Body body);
    // Names a message of the application.
    std::int32_t AddMessage(std::string name);
    template <class T, class... A>
    std::int32_t Add(A&&... arguments) {
        auto& objects = std::get<std::deque<T>>(objects_);
        objects.emplace_back(std::forward<A>(arguments)...);
        return static_cast<std::int32_t>(objects.size());
    }

    void Start();
    // One step: the running program goes on to its next call, or time to the next interrupt. False:
    // nothing will happen any more.
    bool Step();

    Time Now() const { return recorder_.Now(); }
    Random& Chance() { return random_; }
    // The hardware raises the interrupt in so many microseconds.
    void RaiseAfter(std::int32_t interrupt, Time microseconds) {
        interrupts_.Line(interrupt).due = Now() + microseconds;
    }
    // What the application notes under the number of a message; 0: just a text. text: a constant,
    // with at most one %d for value.
    void Note(std::int32_t message, const char* text, std::int32_t value = 0) {
        recorder_.Message(message, text, value);
    }

    // What there is.
    const std::deque<Task>& AllTasks() const { return tasks_; }
    const std::deque<Handler>& ServiceRoutines() const { return routines_; }
    const std::deque<TimedHandler>& TimedHandlers() const { return timed_; }
    const InterruptLines& Interrupts() const { return interrupts_; }
    const std::vector<std::string>& Messages() const { return messages_; }

    // For the services.
    template <class T>
    T& Object(std::int32_t id) {
        return std::get<std::deque<T>>(objects_).at(static_cast<std::size_t>(id - 1));
    }
    Task& TaskOf(std::int32_t id) { return tasks_.at(static_cast<std::size_t>(id - 1)); }
    const Handler& ServiceRoutine(std::int32_t id) const {
        return routines_.at(static_cast<std::size_t>(id - 1));
    }
    TimedHandler& Timed(HandlerKind kind, std::int32_t id);
    Scheduler& Tasks() { return scheduler_; }
    TimerQueue& Timers() { return timers_; }
    InterruptLines& Interrupts() { return interrupts_; }
    // Locked: no interrupt is taken.
    void SetLocked(bool locked) { locked_ = locked; }

    // For programs that wait for the kernel.
    void Compute(std::int32_t microseconds) { Current()->remaining = microseconds; }
    void Issue(const ServiceCall& call);
    CallResult Return(const Service& service);
    // The handler runs inside the one that runs now.
    void Enter(const Handler& handler) { Enter(handler, Level()); }

  private:
    std::int32_t AddTimed(HandlerKind kind, TimedHandler handler);
    Program TimerTick();
    Context* Current();
    std::int32_t Level() const;
    void Enter(const Handler& handler, std::int32_t level);
    bool AwaitInterrupt();
    void Advance(Context& context);
    void Finish();

    Random random_;
    Recorder recorder_;
    TimerQueue timers_;
    Scheduler scheduler_{recorder_, timers_};
    InterruptLines interrupts_;
    std::deque<Task> tasks_;
    std::deque<Handler> routines_;
    std::deque<TimedHandler> timed_;
    std::vector<std::string> messages_;
    std::tuple<std::deque<Semaphore>, std::deque<EventFlag>, std::deque<DataQueue>,
               std::deque<Mailbox>, std::deque<MessageBuffer>, std::deque<KernelMutex>,
               std::deque<FixedPool>, std::deque<VariablePool>>
        objects_;
    std::deque<HandlerContext> handlers_;  // those that run, the innermost last
    bool locked_ = false;
};

}  // namespace kvx::simulation
