#include "workbench/timing/LockChainWatch.h"

#include <algorithm>

namespace kvx::timing {

void LockChainWatch::OnTask(const Moment& moment, ContextId task, const TaskStatus& before,
                            const TaskStatus& now, const Releaser&) {
    priorities_.MoveTo(moment.record);
    const bool goesOn =
        before.doing == Doing::Waits && now.doing == Doing::Waits && before.wait == now.wait;
    if (goesOn) return;
    if (before.doing == Doing::Waits) {
        const auto at = std::ranges::find(blocked_, task, &Blocked::task);
        if (at != blocked_.end()) {
            EndWait(*at);
            blocked_.erase(at);
        }
    }
    if (now.doing == Doing::Waits && walk_.IsLock(now.wait.object))
        blocked_.push_back({task, moment.at, jobs_.JobOf(task, now.timeline), std::nullopt});
}

void LockChainWatch::OnPasses(std::int64_t from, std::int64_t to) {
    for (Blocked& blocked : blocked_) {
        const Chain chain = ChainOf(walk_, priorities_, blocked.task);
        if (chain.inversion) NoteInversion(blocked, chain, from, to);
        if (chain.deadlock) NoteDeadlock(blocked, chain, from, to);
    }
    if (!deadlocks_.empty()) EndDeadlocks(to, false);
}

// contexts: the job's task, the holder that stands ready, and who ran instead.
void LockChainWatch::NoteInversion(Blocked& blocked, const Chain& chain, std::int64_t from,
                                   std::int64_t to) {
    const HolderLink& last = chain.links.back();
    auto& inversion = blocked.inversion;
    if (!inversion) {
        inversion.emplace();
        inversion->kind = FindingKind::PriorityInversion;
        inversion->contexts = {blocked.task, last.context};
        inversion->timeline = walk_.StatusOf(last.context).timeline;
        inversion->start = from;
        inversion->object = walk_.StatusOf(blocked.task).wait.object;
        inversion->job = blocked.job;
        inversion->evidence = {blocked.event, walk_.StatusOf(last.context).event,
                               walk_.StatusOf(last.by).event};
    }
    inversion->end = to;
    inversion->measured += to - from;
    if (std::ranges::count(inversion->contexts, last.by) == 0)
        inversion->contexts.push_back(last.by);
}

// The task may be outside of the circle, waiting for one that is in it, or wait for itself.
void LockChainWatch::NoteDeadlock(const Blocked& blocked, const Chain& chain, std::int64_t from,
                                  std::int64_t to) {
    const auto object =
        chain.links.empty() ? walk_.StatusOf(blocked.task).wait.object : chain.links.back().object;
    const auto closes = walk_.HolderOf(object);
    std::vector<ContextId> circle = {blocked.task};
    std::vector<EventRef> evidence = {blocked.event};
    for (const HolderLink& link : chain.links) {
        circle.push_back(link.context);
        evidence.push_back(walk_.StatusOf(link.context).event);
    }
    const auto first = std::ranges::find(circle, closes) - circle.begin();
    circle.erase(circle.begin(), circle.begin() + first);
    evidence.erase(evidence.begin(), evidence.begin() + first);
    Incident& deadlock = deadlocks_[std::ranges::min(circle)];
    if (deadlock.contexts.empty()) {
        deadlock.kind = FindingKind::Deadlock;
        deadlock.contexts = std::move(circle);
        deadlock.evidence = std::move(evidence);
        deadlock.start = from;
        deadlock.object = walk_.StatusOf(deadlock.contexts.front()).wait.object;
        deadlock.job = blocked.job;
    }
    deadlock.end = to;
    deadlock.measured = to - deadlock.start;
}

// Those that do not last until now; at the end of the recording all.
void LockChainWatch::EndDeadlocks(std::int64_t now, bool atEnd) {
    for (auto at = deadlocks_.begin(); at != deadlocks_.end();) {
        const bool lasts = at->second.end == now;
        if (lasts && !atEnd) {
            ++at;
            continue;
        }
        at->second.goesOn = lasts;
        out_.push_back(std::move(at->second));
        at = deadlocks_.erase(at);
    }
}

void LockChainWatch::EndWait(Blocked& blocked) {
    if (blocked.inversion) out_.push_back(std::move(*blocked.inversion));
    blocked.inversion.reset();
}

void LockChainWatch::OnEnd(std::int64_t time) {
    for (Blocked& blocked : blocked_) {
        if (blocked.inversion) blocked.inversion->goesOn = true;
        EndWait(blocked);
    }
    EndDeadlocks(time, true);
}

}  // namespace kvx::timing
