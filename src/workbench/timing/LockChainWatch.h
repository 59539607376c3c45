#pragma once
// Looks for priority inversions and deadlocks while tasks wait for locks.

#include <map>

#include "workbench/timing/Chain.h"
#include "workbench/timing/Incident.h"
#include "workbench/timing/JobBuilder.h"

namespace kvx::timing {

class LockChainWatch final : public IWalkObserver {
  public:
    // All are borrowed.
    LockChainWatch(const Walk& walk, const JobBuilder& jobs, Incidents& out)
        : walk_(walk), jobs_(jobs), priorities_(walk.From()), out_(out) {}

    void OnTask(const Moment& moment, ContextId task, const TaskStatus& before,
                const TaskStatus& now, const Releaser& by) override;
    void OnPasses(std::int64_t from, std::int64_t to) override;
    void OnEnd(std::int64_t time) override;

  private:
    // A task that waits for a lock.
    struct Blocked {
        ContextId task = kNobody;
        EventRef event;
        std::uint32_t job = 0;
        std::optional<Incident> inversion;
    };
    void NoteInversion(Blocked& blocked, const Chain& chain, std::int64_t from, std::int64_t to);
    void NoteDeadlock(const Blocked& blocked, const Chain& chain, std::int64_t from,
                      std::int64_t to);
    void EndDeadlocks(std::int64_t now, bool atEnd);
    void EndWait(Blocked& blocked);

    const Walk& walk_;
    const JobBuilder& jobs_;
    PriorityTable priorities_;
    Incidents& out_;
    std::vector<Blocked> blocked_;
    std::map<ContextId, Incident> deadlocks_;  // that last; by the least of its tasks
};

}  // namespace kvx::timing
