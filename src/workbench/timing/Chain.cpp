#include "workbench/timing/Chain.h"

#include <algorithm>

namespace kvx::timing {

Chain ChainOf(const Walk& walk, const PriorityTable& priorities, ContextId task) {
    Chain chain;
    const auto isIn = [&](ContextId who) {
        return who == task || std::ranges::count(chain.links, who, &HolderLink::context) > 0;
    };
    for (ObjectId object = walk.StatusOf(task).wait.object; walk.IsLock(object);) {
        const auto holder = walk.HolderOf(object);
        if (holder == kNobody) return chain;
        if (isIn(holder)) {
            chain.deadlock = true;
            return chain;
        }
        const TaskStatus& status = walk.StatusOf(holder);
        HolderLink link{holder, status.doing, status.suspended, kNobody, kNoObject, kCauseUnknown};
        if (status.doing == Doing::Waits) {
            link.object = status.wait.object;
            link.cause = status.wait.cause;
            chain.links.push_back(link);
            object = link.object;
            continue;
        }
        const bool ready = status.doing == Doing::Ready || status.doing == Doing::Interrupted;
        const auto runner = walk.RunnerOn(status.timeline);
        if (ready && !status.suspended && runner != holder) link.by = runner;
        chain.links.push_back(link);
        const bool stands = status.doing == Doing::Ready && link.by != kNobody;
        chain.inversion = stands && walk.From().contexts.Get(link.by).IsTask() && !isIn(link.by) &&
                          priorities.IsLessUrgent(holder, task) &&
                          priorities.IsLessUrgent(link.by, task);
        return chain;
    }
    return chain;
}

}  // namespace kvx::timing
