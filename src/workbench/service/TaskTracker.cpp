#include "workbench/service/TaskTracker.h"

namespace kvx::service {

Task& TaskTracker::Get(std::uint64_t id, std::uint32_t processor) {
    const auto [at, isNew] = tasks_.try_emplace(id);
    if (isNew) {
        at->second.id = id;
        at->second.processor = processor;
    }
    return at->second;
}

std::uint32_t TaskTracker::ContextOf(Task& task) {
    if (task.context == kNoContext) task.context = contexts_.Add({ContextKind::Task, task.id});
    return task.context;
}

void TaskTracker::Set(Task& task, const Condition& condition) {
    const bool runsOn = task.condition.activity == Activity::Running &&
                        condition.activity == Activity::Ready && !condition.suspended;
    if (runsOn || (task.condition == condition && !task.away)) return;
    task.condition = condition;
    if (condition.activity == Activity::Dormant) task.calls.Clear();
    if (IsShown(task)) Show(task);
}

void TaskTracker::Run(Task& task, std::uint32_t processor) {
    task.condition = {Activity::Running};
    task.runsOn = processor;
    if (!IsShown(task)) return;
    task.away = false;
    if (task.openEvent != host::kOpenEnd) writer_.CloseWithNext(task.openEvent);
    task.openEvent = host::kOpenEnd;
}

void TaskTracker::MoveTo(Task& task, std::uint32_t processor) {
    if (task.processor == processor) return;
    const bool leaves = IsShown(task);
    task.processor = processor;
    if (!leaves || task.context == kNoContext) return;
    ShowState(task, kCodeDormant, host::kFlagPaused, writer_.Record());
    task.away = true;
}

void TaskTracker::Show(Task& task) {
    const Condition& now = task.condition;
    const std::uint8_t flags = now.suspended ? host::kFlagSuspended : 0;
    task.away = false;
    switch (now.activity) {
        case Activity::Ready:
            return ShowState(task, kCodeReady, flags, writer_.Record());
        case Activity::Dormant:
            return ShowState(task, kCodeDormant, flags, writer_.Record());
        case Activity::Waiting:
            return ShowState(task, now.waitCode, flags, now.waitRecord);
        case Activity::Unknown:
        case Activity::Running:
            return;
    }
}

void TaskTracker::ShowState(Task& task, std::uint8_t code, std::uint8_t flags,
                            std::uint32_t record) {
    if (task.openEvent != host::kOpenEnd) writer_.CloseWithNext(task.openEvent);
    task.openEvent = writer_.State(ContextOf(task), code, flags, record);
}

}  // namespace kvx::service
