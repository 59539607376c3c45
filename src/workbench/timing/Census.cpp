#include "workbench/timing/Census.h"

#include <utility>

#include "host/TraceCodes.h"

namespace kvx::timing {

using host::StateCode;

bool EndsJob(std::uint8_t cause) {
    switch (static_cast<StateCode>(cause)) {
        case StateCode::Semaphore:
        case StateCode::Mutex:
        case StateCode::FixedPool:
        case StateCode::VariablePool:
            return false;
        default:
            return true;
    }
}

namespace {

class CensusTaker final : public IWalkObserver {
  public:
    CensusTaker(const Source& source)
        : contexts_(source.contexts),
          uses_(source.facts.AllObjects().Count()),
          showsEnds_(source.contexts.Count()) {}

    void OnTask(const Moment&, ContextId task, const TaskStatus&, const TaskStatus& now,
                const Releaser&) override {
        const bool ends =
            now.doing == Doing::Dormant || (now.doing == Doing::Waits && EndsJob(now.wait.cause));
        if (ends) showsEnds_[task] = true;
    }

    void OnTake(const Moment&, ObjectId object, ContextId by, ContextId before) override {
        Use& use = uses_[object];
        use.used = true;
        use.taken = true;
        use.forgives = false;
        if (by == use.atStart) use.takesLater = true;
        if (before != kNobody || !contexts_.Get(by).IsTask()) use.unlike = true;
    }

    // What was taken and given in a gap nobody knows.
    void OnGap(const Moment&) override {
        for (Use& use : uses_) use.forgives = true;
    }

    void OnGive(const Moment&, ObjectId object, ContextId by, ContextId before) override {
        Use& use = uses_[object];
        const bool first = !use.used;
        use.used = true;
        if (before == by || by == kNobody) return;
        const bool forgiven = std::exchange(use.forgives, false) && before == kNobody;
        if (forgiven && contexts_.Get(by).IsTask()) return;
        if (first && contexts_.Get(by).IsTask())
            use.atStart = by;
        else
            use.unlike = true;
    }

    Census Result(const Objects& objects) {
        Census census{{}, std::move(showsEnds_)};
        for (ObjectId object = 0; object < objects.Count(); ++object) {
            const auto kind = objects.Get(object).kind;
            const bool mutex = kind == host::Code(StateCode::Mutex);
            const bool semaphore = kind == host::Code(StateCode::Semaphore);
            const Use& use = uses_[object];
            const bool began = use.atStart == kNobody || use.takesLater;
            LockInfo info;
            info.inferred = semaphore && use.taken && !use.unlike && began;
            info.isLock = mutex || info.inferred;
            if (info.isLock && use.takesLater) info.atStart = use.atStart;
            census.locks.push_back(info);
        }
        return census;
    }

  private:
    struct Use {
        bool used = false;
        bool taken = false;
        bool forgives = false;        // a give without a take, behind a gap
        bool unlike = false;          // not used like a lock
        ContextId atStart = kNobody;  // gave it without having taken it
        bool takesLater = false;      // ... and takes it afterwards
    };
    const Contexts& contexts_;
    std::vector<Use> uses_;  // by object
    std::vector<char> showsEnds_;
};

}  // namespace

Census TakeCensus(const Source& source) {
    CensusTaker taker(source);
    Walk walk(source, nullptr);
    walk.Add(taker);
    walk.Run();
    return taker.Result(source.facts.AllObjects());
}

}  // namespace kvx::timing
