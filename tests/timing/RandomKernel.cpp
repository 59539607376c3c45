#include "timing/RandomKernel.h"

#include <algorithm>

namespace kvx::test {

RandomKernel::RandomKernel(unsigned seed, int tasks, int processors)
    : random_(seed), several_(processors > 1) {
    for (int id = 1; id <= tasks; ++id) {
        priorities_.push_back(1 + UpTo(4));
        tasks_.push_back({id,
                          priorities_.back(),
                          1 + UpTo(processors - 1),
                          State::Dormant,
                          false,
                          "",
                          "",
                          false,
                          {}});
    }
    cpus_.resize(static_cast<std::size_t>(processors) + 1);
}

void RandomKernel::Say(int processor, const std::string& message) {
    log_ += "[" + std::to_string(time_) + "]";
    if (several_) log_ += ":[" + std::to_string(processor) + "]:";
    log_ += " " + message + ".\n";
}

void RandomKernel::Enter(int processor, const std::string& call, const std::string& parameters) {
    Say(processor, "enter to " + call + (parameters.empty() ? "" : " " + parameters));
}

void RandomKernel::Leave(int processor, const std::string& call, int ercd) {
    Say(processor, "leave from " + call + " ercd=" + std::to_string(ercd));
}

// Semaphores and mutexes begin with one to take, queues with nothing to receive.
std::size_t RandomKernel::IndexOf(const std::string& name) {
    const auto at = std::ranges::find(names_, name);
    if (at != names_.end()) return static_cast<std::size_t>(at - names_.begin());
    names_.push_back(name);
    objects_.push_back({name.starts_with("dtqid") ? 0 : 1, {}});
    return names_.size() - 1;
}

std::string RandomKernel::Run(int steps) {
    for (Task& task : tasks_)
        Say(task.processor, "task " + std::to_string(task.id) + " becomes DORMANT");
    for (int i = 0; i < steps; ++i) {
        if (!OneIn(3)) time_ += UpTo(6);
        Step(1 + UpTo(static_cast<int>(cpus_.size()) - 2));
    }
    return log_;
}

void RandomKernel::Step(int processor) {
    Cpu& cpu = cpus_[static_cast<std::size_t>(processor)];
    if (cpu.handlers.empty() && cpu.dispatches) return Dispatch(processor);
    const int handler = 1 + UpTo(3);
    const bool nested = std::ranges::count(cpu.handlers, handler) > 0;
    if (cpu.handlers.size() < 3 && !nested && OneIn(cpu.running ? 6 : 3)) {
        cpu.handlers.push_back(handler);
        return Say(processor, "enter to int handler " + std::to_string(handler));
    }
    if (!cpu.handlers.empty()) return HandlerStep(processor);
    if (cpu.running) TaskStep(processor, tasks_[static_cast<std::size_t>(cpu.running) - 1]);
}

void RandomKernel::HandlerStep(int processor) {
    Cpu& cpu = cpus_[static_cast<std::size_t>(processor)];
    Task& target = tasks_[static_cast<std::size_t>(UpTo(static_cast<int>(tasks_.size()) - 1))];
    switch (UpTo(6)) {
        case 0:
            return Start(processor, "iact_tsk", target);
        case 1:
            return Start(processor, "iwup_tsk", target);
        case 2:
            return Give(processor, "isig_sem", "semid=3");
        case 3:
            return Give(processor, "ipsnd_dtq", "dtqid=1");
        default:
            Say(processor, "leave from int handler " + std::to_string(cpu.handlers.back()));
            cpu.handlers.pop_back();
    }
}

void RandomKernel::TaskStep(int processor, Task& task) {
    if (!task.call.empty()) {
        Leave(processor, task.call, 0);
        task.call.clear();
        return;
    }
    const auto name = [&](const char* what, int most) {
        return std::string(what) + "=" + std::to_string(1 + UpTo(most - 1));
    };
    Task& target = tasks_[static_cast<std::size_t>(UpTo(static_cast<int>(tasks_.size()) - 1))];
    if (!task.held.empty() && OneIn(6)) {
        const auto object =
            task.held[static_cast<std::size_t>(UpTo(static_cast<int>(task.held.size()) - 1))];
        std::erase(task.held, object);
        return Give(processor, object.starts_with("semid") ? "sig_sem" : "unl_mtx", object);
    }
    switch (UpTo(15)) {
        case 0:
        case 1:
            return Take(processor, task, "wai_sem", name("semid", 2), false);
        case 2:
        case 14:
        case 15:
            return Take(processor, task, "loc_mtx", name("mtxid", 2), false);
        case 3:
            return Take(processor, task, "pol_sem", name("semid", 2), true);
        case 4:
            return Take(processor, task, "wai_sem", "semid=3", false);
        case 5:
            return Take(processor, task, "rcv_dtq", "dtqid=1", false);
        case 6:
            return Give(processor, "psnd_dtq", "dtqid=1");
        case 7:
            Enter(processor, "slp_tsk", "");
            return Block(processor, task, "slp_tsk");
        case 8:
            return Start(processor, "act_tsk", target);
        case 9:
            return Start(processor, "wup_tsk", target);
        case 10:
            return Suspend(processor, target);
        case 11:
            if (!task.held.empty() && !OneIn(4)) return;
            Enter(processor, "ext_tsk", "");
            task.state = State::Dormant;
            Say(processor, "task " + std::to_string(task.id) + " becomes DORMANT");
            for (const auto& held : task.held)
                if (held.starts_with("mtxid")) ObjectOf(held).free = 1;
            std::erase_if(task.held, [](const auto& held) { return held.starts_with("mtxid"); });
            return Dispatch(processor);
        case 12:
            if (several_ && target.state == State::Dormant) {
                const int to = 1 + UpTo(static_cast<int>(cpus_.size()) - 2);
                if (to == target.processor) return;
                Say(processor, "task " + std::to_string(target.id) + " migrates from processor " +
                                   std::to_string(target.processor) + " to processor " +
                                   std::to_string(to));
                target.processor = to;
            }
            return;
        case 13:
            cpus_[static_cast<std::size_t>(processor)].dispatches = true;
            return;
        default:
            return;
    }
}

// One task takes a mutex or a semaphore once at a time.
void RandomKernel::Take(int processor, Task& task, const std::string& call,
                        const std::string& object, bool polls) {
    if (std::ranges::count(task.held, object) > 0) return;
    const bool holds = object != "semid=3" && !object.starts_with("dtqid");
    Object& wanted = ObjectOf(object);
    Enter(processor, call, object);
    if (wanted.free == 0 && polls) return Leave(processor, call, -50);
    if (wanted.free == 0) {
        wanted.waiting.push_back(task.id);
        task.object = object;
        task.takes = holds;
        return Block(processor, task, call);
    }
    --wanted.free;
    if (holds) task.held.push_back(object);
    if (OneIn(2))
        Leave(processor, call, 0);
    else
        task.call = call;
}

void RandomKernel::Give(int processor, const std::string& call, const std::string& object) {
    Object& given = ObjectOf(object);
    Enter(processor, call, object);
    if (given.waiting.empty()) {
        given.free = std::min(given.free + 1, object.starts_with("mtxid") ? 1 : 9);
    } else {
        Task& task = tasks_[static_cast<std::size_t>(given.waiting.front()) - 1];
        given.waiting.erase(given.waiting.begin());
        if (task.takes) task.held.push_back(object);
        Wake(processor, task);
    }
    Leave(processor, call, 0);
}

void RandomKernel::Block(int processor, Task& task, const std::string& call) {
    task.state = State::Waits;
    task.call = call;
    Say(processor, "task " + std::to_string(task.id) + " becomes WAITING");
    Dispatch(processor);
}

void RandomKernel::Wake(int processor, Task& task) {
    task.state = State::Ready;
    task.object.clear();
    Say(processor, "task " + std::to_string(task.id) +
                       (task.suspended ? " becomes SUSPENDED" : " becomes RUNNABLE"));
    if (!task.suspended) cpus_[static_cast<std::size_t>(task.processor)].dispatches = true;
}

void RandomKernel::Start(int processor, const std::string& call, Task& target) {
    Enter(processor, call, "tskid=" + std::to_string(target.id));
    const bool starts = call.ends_with("act_tsk")
                            ? target.state == State::Dormant
                            : target.state == State::Waits && target.object.empty();
    if (starts) {
        target.call = call.ends_with("act_tsk") ? "" : target.call;
        Wake(processor, target);
    }
    Leave(processor, call, !starts && OneIn(4) ? -43 : 0);
}

// Suspends a task that waits or is ready, or resumes it.
void RandomKernel::Suspend(int processor, Task& target) {
    if (target.state != State::Waits && target.state != State::Ready) return;
    const std::string call = target.suspended ? "rsm_tsk" : "sus_tsk";
    Enter(processor, call, "tskid=" + std::to_string(target.id));
    target.suspended = !target.suspended;
    const bool waits = target.state == State::Waits;
    const char* const state = waits ? (target.suspended ? "WAITING-SUSPENDED" : "WAITING")
                                    : (target.suspended ? "SUSPENDED" : "RUNNABLE");
    Say(processor, "task " + std::to_string(target.id) + " becomes " + state);
    if (Free(target)) cpus_[static_cast<std::size_t>(target.processor)].dispatches = true;
    Leave(processor, call, 0);
}

// The most urgent of the ready tasks, or who runs. Some switches leave the processor idle for a
// moment.
void RandomKernel::Dispatch(int processor) {
    Cpu& cpu = cpus_[static_cast<std::size_t>(processor)];
    cpu.dispatches = false;
    Task* best = nullptr;
    for (Task& task : tasks_)
        if (task.processor == processor && (Free(task) || task.state == State::Runs) &&
            (!best || task.priority < best->priority))
            best = &task;
    Task* const before = cpu.running ? &tasks_[static_cast<std::size_t>(cpu.running) - 1] : nullptr;
    const bool goesOn = best && best == before && best->state == State::Runs;
    if (goesOn && OneIn(2)) return;
    if (before && (!best || goesOn || OneIn(2)))
        Say(processor, "dispatch from task " + std::to_string(before->id));
    if (before && before->state == State::Runs) before->state = State::Ready;
    cpu.running = 0;
    if (!best) return;
    if (OneIn(3)) time_ += UpTo(2);
    best->state = State::Runs;
    cpu.running = best->id;
    Say(processor, "dispatch to task " + std::to_string(best->id));
}

}  // namespace kvx::test
