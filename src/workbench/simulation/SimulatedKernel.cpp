#include "workbench/simulation/SimulatedKernel.h"

#include <algorithm>
#include <stdexcept>

#include "workbench/simulation/TaskServices.h"

namespace kvx::simulation {
namespace {

constexpr std::int32_t kStacks = 0x20004000;
constexpr std::int32_t kStackSpacing = 0x1000;
constexpr std::int32_t kInterruptStack = 0x20003F00;
constexpr Time kTick = 1000;

}  // namespace

std::int32_t SimulatedKernel::AddTask(TaskConfig config) {
    Task& task = tasks_.emplace_back();
    task.id = static_cast<std::int32_t>(tasks_.size());
    task.config = std::move(config);
    task.variables = kStacks + task.id * kStackSpacing - 0x40;
    return task.id;
}

void SimulatedKernel::AddTimerInterrupt(std::int32_t number, std::string name, std::int32_t level) {
    AddInterrupt({.handler = {HandlerKind::Interrupt, number, std::move(name),
                              [this] { return TimerTick(); }},
                  .level = level,
                  .due = kTick,
                  .period = kTick});
}

std::int32_t SimulatedKernel::AddServiceRoutine(std::string name, Body body) {
    const auto id = static_cast<std::int32_t>(routines_.size() + 1);
    routines_.push_back({HandlerKind::ServiceRoutine, id, std::move(name), std::move(body)});
    return id;
}

std::int32_t SimulatedKernel::AddCyclic(std::string name, std::int32_t period, std::int32_t phase,
                                        Body body) {
    return AddTimed(HandlerKind::Cyclic,
                    {.handler = {.name = std::move(name), .body = std::move(body)},
                     .period = period,
                     .phase = phase,
                     .timer = {}});
}

std::int32_t SimulatedKernel::AddAlarm(std::string name, Body body) {
    return AddTimed(HandlerKind::Alarm,
                    {.handler = {.name = std::move(name), .body = std::move(body)}, .timer = {}});
}

std::int32_t SimulatedKernel::AddTimed(HandlerKind kind, TimedHandler handler) {
    const auto others = std::ranges::count(
        timed_, kind, [](const TimedHandler& other) { return other.handler.kind; });
    handler.handler.kind = kind;
    handler.handler.id = static_cast<std::int32_t>(others) + 1;
    timed_.push_back(std::move(handler));
    return timed_.back().handler.id;
}

std::int32_t SimulatedKernel::AddMessage(std::string name) {
    messages_.push_back(std::move(name));
    return static_cast<std::int32_t>(messages_.size());
}

TimedHandler& SimulatedKernel::Timed(HandlerKind kind, std::int32_t id) {
    for (auto& timed : timed_)
        if (timed.handler.kind == kind && timed.handler.id == id) return timed;
    throw std::out_of_range("no such handler");
}

void SimulatedKernel::Start() {
    for (auto& task : tasks_) scheduler_.Introduce(task);
    for (auto& timed : timed_) {
        timed.timer.handler = &timed;
        if (timed.handler.kind == HandlerKind::Cyclic) timers_.StartAfter(timed.timer, timed.phase);
    }
    scheduler_.Dispatch();
}

bool SimulatedKernel::Step() {
    if (const InterruptLine* const line = interrupts_.Take(Now(), Level())) {
        Enter(line->handler, line->level);
        return true;
    }
    Context* const context = Current();
    if (!context) return AwaitInterrupt();
    if (context->remaining > 0)
        Advance(*context);
    else if (!context->program.Resume(*this))
        Finish();
    return true;
}

bool SimulatedKernel::AwaitInterrupt() {
    const Time next = interrupts_.NextDue(kTaskLevel);
    if (next == kNever) return false;
    recorder_.AdvanceTo(next);
    return true;
}

Context* SimulatedKernel::Current() {
    if (!handlers_.empty()) return &handlers_.back();
    return scheduler_.Running();
}

std::int32_t SimulatedKernel::Level() const {
    if (locked_) return kHighestLevel;
    return handlers_.empty() ? kTaskLevel : handlers_.back().level;
}

// Computes until it has done so for long enough, or an interrupt comes.
void SimulatedKernel::Advance(Context& context) {
    const Time done = std::min<Time>(context.remaining, interrupts_.NextDue(Level()) - Now());
    context.remaining -= static_cast<std::int32_t>(done);
    recorder_.AdvanceTo(Now() + done);
}

void SimulatedKernel::Enter(const Handler& handler, std::int32_t level) {
    HandlerContext& context = handlers_.emplace_back();
    context.program = handler.body();
    context.handler = &handler;
    context.level = level;
    context.variables = kInterruptStack - static_cast<std::int32_t>(handlers_.size()) * 0x40;
    recorder_.Handler(TraceKind::HandlerEnter, handler.kind, handler.id);
}

void SimulatedKernel::Finish() {
    if (handlers_.empty()) return Issue(ext_tsk());
    const Handler& handler = *handlers_.back().handler;
    handlers_.pop_back();
    recorder_.Handler(TraceKind::HandlerLeave, handler.kind, handler.id);
    if (handlers_.empty()) scheduler_.Dispatch();
}

void SimulatedKernel::Issue(const ServiceCall& call) {
    Context& caller = *Current();
    Arguments arguments = call.arguments;
    for (std::size_t i = 0; i < call.service->parameterCount; ++i)
        if (call.service->parameters[i].isAddress)
            arguments[i] = caller.variables + static_cast<std::int32_t>(i * sizeof(std::int32_t));
    recorder_.Call(*call.service, arguments);
    caller.result = call.service->execute(*this, arguments);
    if (handlers_.empty()) scheduler_.Dispatch();
}

CallResult SimulatedKernel::Return(const Service& service) {
    const CallResult result = Current()->result;
    recorder_.Return(service, result);
    return result;
}

Program SimulatedKernel::TimerTick() {
    timers_.Tick();
    while (Timer* const timer = timers_.TakeDue()) {
        if (timer->task) {
            scheduler_.Abandon(*timer->task, timer->task->wait.ercd);
            continue;
        }
        TimedHandler& timed = *timer->handler;
        if (timed.period > 0) {
            timers_.StartAt(timed.timer, timers_.Now() + static_cast<std::uint64_t>(timed.period));
        }
        co_await RunHandler{timed.handler};
    }
}

}  // namespace kvx::simulation
