#include "workbench/service/TaskTracker.h"

#include <algorithm>

namespace kvx::service {

Task& TaskTracker::Get(std::uint64_t id, std::uint32_t processor) {
    const auto [at, isNew] = tasks_.try_emplace(id);
    if (isNew) {
        at->second.id = id;
        at->second.processor = processor;
        at->second.here.timeline = timelineOf_(processor);
    }
    if (!at->second.isKnown) known_.push_back(&at->second);
    at->second.isKnown = true;
    return at->second;
}

std::uint32_t TaskTracker::ContextOf(Task& task) {
    if (task.here.context == kNoContext && task.here.timeline)
        task.here.context = task.here.timeline->writer.ContextOf({ContextKind::Task, task.id});
    return task.here.context;
}

void TaskTracker::Set(Task& task, const Condition& condition) {
    const bool runsOn = task.condition.activity == Activity::Running &&
                        condition.activity == Activity::Ready && !condition.suspended;
    if (runsOn || (task.condition == condition && !task.here.away)) return;
    task.condition = condition;
    if (condition.activity == Activity::Dormant) task.calls.Clear();
    Show(task);
}

void TaskTracker::Run(Task& task, std::uint32_t processor) {
    task.condition = {Activity::Running};
    task.runsOn = processor;
    task.destination = kAnyProcessor;
    Presence& here = task.here;
    here.away = false;
    if (here.openEvent != host::kOpenEnd) here.timeline->writer.CloseWithNext(here.openEvent);
    here.openEvent = host::kOpenEnd;
}

void TaskTracker::MoveTo(Task& task, std::uint32_t processor) {
    task.destination = kAnyProcessor;
    if (task.processor == processor) return;
    if (task.here.context != kNoContext) {
        ShowState(task, kCodeDormant, host::kFlagPaused, moment_.Record());
        task.here.away = true;
    }
    if (task.here.timeline) task.elsewhere.push_back(task.here);
    task.processor = processor;
    task.here = {timelineOf_(processor)};
    const auto known = std::ranges::find(task.elsewhere, task.here.timeline, &Presence::timeline);
    if (!task.here.timeline || known == task.elsewhere.end()) return;
    task.here = *known;
    task.elsewhere.erase(known);
}

std::vector<Timeline*> TaskTracker::ForgetAllOn(std::uint32_t processor) {
    std::vector<Timeline*> ended;
    const auto end = [&](Presence& presence) {
        presence.away = false;
        if (presence.openEvent == host::kOpenEnd) return;
        presence.timeline->writer.CloseWithNext(presence.openEvent);
        presence.openEvent = host::kOpenEnd;
        if (std::ranges::find(ended, presence.timeline) == ended.end())
            ended.push_back(presence.timeline);
    };
    std::erase_if(known_, [&](Task* task) {
        if (task->condition.activity == Activity::Running && task->runsOn != processor)
            return false;
        task->condition = {};
        task->calls = {};
        task->destination = kAnyProcessor;
        end(task->here);
        for (Presence& presence : task->elsewhere) end(presence);
        task->isKnown = false;
        return true;
    });
    return ended;
}

void TaskTracker::Show(Task& task) {
    const Condition& now = task.condition;
    const std::uint8_t flags = now.suspended ? host::kFlagSuspended : 0;
    task.here.away = false;
    switch (now.activity) {
        case Activity::Ready:
            return ShowState(task, kCodeReady, flags, moment_.Record());
        case Activity::Dormant:
            return ShowState(task, kCodeDormant, flags, moment_.Record());
        case Activity::Waiting:
            return ShowState(task, now.waitCode, flags, now.waitRecord);
        case Activity::Unknown:
        case Activity::Running:
        case Activity::Away:
            return;
    }
}

void TaskTracker::ShowState(Task& task, std::uint8_t code, std::uint8_t flags,
                            std::uint32_t record) {
    Presence& here = task.here;
    if (!here.timeline) return;
    const auto context = ContextOf(task);
    if (here.openEvent != host::kOpenEnd) here.timeline->writer.CloseWithNext(here.openEvent);
    here.openEvent = here.timeline->writer.State(context, code, flags, record);
}

}  // namespace kvx::service
