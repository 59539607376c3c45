#pragma once
// Looks for jobs that end with a lock, for mutexes that are given by who does not have them, and
// for jobs that are to begin while the one before goes on.

#include <map>
#include <tuple>

#include "workbench/timing/Incident.h"
#include "workbench/timing/JobBuilder.h"

namespace kvx::timing {

class JobWatch final : public IWalkObserver {
  public:
    // All are borrowed; jobs is told of everything before this one.
    JobWatch(const Walk& walk, const JobBuilder& jobs, Incidents& out);

    void OnTask(const Moment& moment, ContextId task, const TaskStatus& before,
                const TaskStatus& now, const Releaser& by) override;
    void OnCall(const Moment& moment, ContextId by, const CallFact& fact) override;
    void OnTake(const Moment& moment, ObjectId object, ContextId by, ContextId before) override;
    void OnGive(const Moment& moment, ObjectId object, ContextId by, ContextId before) override;
    void OnGap(const Moment&) override {
        for (ObjectId object = 0; object < held_.size(); ++object) SetHeld(object, {});
    }
    void OnEnd(std::int64_t time) override;

  private:
    struct Held {
        ContextId by = kNobody;
        std::int64_t since = 0;
        EventRef event;
    };
    void SetHeld(ObjectId object, const Held& held);
    void NoteHeld(ObjectId object, ContextId task, std::int64_t time, EventRef at, bool goesOn);
    void Add(FindingKind kind, std::vector<ContextId> contexts, ObjectId object, std::uint32_t job,
             Span span, std::vector<EventRef> evidence);

    const Walk& walk_;
    const JobBuilder& jobs_;
    Incidents& out_;
    std::vector<char> inJob_;           // by context
    std::vector<std::uint32_t> holds_;  // by context: how many locks
    std::vector<char> taken_;           // by object: ever
    std::vector<Held> held_;            // by object
    // Where in the incidents these are.
    std::map<std::tuple<ContextId, ObjectId, bool>, std::size_t> noted_;
    std::map<std::pair<ContextId, std::uint32_t>, std::size_t> overruns_;
};

}  // namespace kvx::timing
