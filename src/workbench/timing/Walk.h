#pragma once
// Goes once through the events of all processors in order of time and tells observers what changes:
// what tasks do, which handlers run, who takes and gives locks.

#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include "workbench/service/EventMerge.h"
#include "workbench/timing/LockSet.h"
#include "workbench/timing/LockTracker.h"
#include "workbench/timing/TaskStatus.h"

namespace kvx::timing {

// Where the walk is.
struct Moment {
    std::int64_t time = 0;
    std::uint32_t record = 0;
    EventRef at;
};

// Who made a task ready.
struct Releaser {
    ContextId context = kNobody;              // of which the recording does not tell: nobody
    std::uint32_t call = service::kNoRecord;  // number of the call's name
    std::uint32_t timeline = 0;               // where the context ran
};

// What the walk reads; all borrowed.
struct Source {
    const service::DecodedRecording& decoded;
    const Contexts& contexts;
    const CallFacts& facts;
};

class IWalkObserver {
  public:
    virtual ~IWalkObserver() = default;
    // Nothing changes from `from` to `to`, which is later.
    virtual void OnPasses(std::int64_t /*from*/, std::int64_t /*to*/) {}
    // before: as it was until now. by: who made it ready, where it is ready now and was not.
    virtual void OnTask(const Moment&, ContextId /*task*/, const TaskStatus& /*before*/,
                        const TaskStatus& /*now*/, const Releaser& /*by*/) {}
    // The processor goes from one context to another.
    virtual void OnDispatch(const Moment&, ContextId /*from*/, ContextId /*to*/) {}
    // A handler begins; depth: how many others it interrupts. seen: not before the recording.
    virtual void OnEnter(const Moment&, ContextId /*handler*/, std::size_t /*depth*/,
                         bool /*seen*/) {}
    // A handler is interrupted by another one, or goes on.
    virtual void OnNested(const Moment&, ContextId /*handler*/, std::size_t /*depth*/,
                          bool /*interrupted*/) {}
    // seen: false where its end is lost.
    virtual void OnLeave(const Moment&, ContextId /*handler*/, std::size_t /*depth*/,
                         bool /*seen*/) {}
    virtual void OnCall(const Moment&, ContextId /*by*/, const CallFact&) {}
    // before: who held it until now; kNobody: it was free.
    virtual void OnTake(const Moment&, ObjectId, ContextId /*by*/, ContextId /*before*/) {}
    // by: kNobody: the kernel took it from a task that ends.
    virtual void OnGive(const Moment&, ObjectId, ContextId /*by*/, ContextId /*before*/) {}
    // What the processor does, and every task that ran nowhere else, is not told from here on.
    virtual void OnGap(const Moment&) {}
    // ... until something is told of the processor again.
    virtual void OnGapEnd(const Moment&) {}
    virtual void OnEnd(std::int64_t /*time*/) {}
};

// First and last time of a recording; nothing is outside.
struct Span {
    std::int64_t start = 0;
    std::int64_t end = 0;
    friend bool operator==(const Span&, const Span&) = default;
};
Span SpanOf(const service::DecodedRecording& decoded);

class Walk {
  public:
    // locks: borrowed; null: every semaphore and every mutex may be one.
    Walk(const Source& source, const LockSet* locks);

    // Borrowed; told in the order in which they were added.
    void Add(IWalkObserver& observer) { observers_.push_back(&observer); }
    // To the end, or until the time has passed `until`, from where it is.
    void Run(std::int64_t until = std::numeric_limits<std::int64_t>::max());
    // Goes on by so many events; false: the end was reached, and told.
    bool Go(std::size_t events);
    // A walk that goes on from where this one is, and tells nobody yet.
    Walk Branch() const;

    // For observers.
    const Moment& Now() const { return now_; }
    const TaskStatus& StatusOf(ContextId task) const { return tasks_[task]; }
    // What has the processor; the task below handlers that have it.
    ContextId Current(std::uint32_t timeline) const { return cpus_[timeline].current; }
    // The task or handler that has it; nobody: none, or it is not told which.
    ContextId RunnerOn(std::uint32_t timeline) const {
        const auto current = cpus_[timeline].current;
        const bool known = current != kNobody && (isTask_[current] || isHandler_[current]);
        return known ? current : kNobody;
    }
    ContextId TaskOn(std::uint32_t timeline) const { return cpus_[timeline].task; }
    ContextId HolderOf(ObjectId object) const { return tracker_.HolderOf(object); }
    bool IsLock(ObjectId object) const { return object != kNoObject && tracker_.Tracks(object); }
    const Source& From() const { return source_; }

  private:
    struct OpenCall {
        std::uint32_t name = 0;
        std::uint32_t returned = 0;  // record; kNoRecord: no return is recorded
    };
    struct Cpu {
        ContextId current = kNobody;
        ContextId task = kNobody;
        std::vector<ContextId> handlers{};  // innermost last
        bool known = false;                 // a task or the idle state was seen below handlers
        bool inGap = false;
        std::size_t nextFact = 0;
        std::uint32_t number = 0;
    };

    void Begin();
    bool Step(std::int64_t until);
    void Apply(const service::EventMerge::Event& event);
    void OnDispatch(std::uint32_t timeline, ContextId to);
    void EnterHandler(std::uint32_t timeline, ContextId handler);
    void EndHandlersAbove(std::uint32_t timeline, std::size_t depth, bool seen = true);
    void OnUnknown(std::uint32_t timeline);
    void Forget(ContextId task);
    void OnState(const service::EventStore& events, std::uint32_t event, std::uint32_t timeline);
    void OnCall(const service::EventStore& events, std::uint32_t event, std::uint32_t timeline);
    void ApplyLocks(ContextId task, const TaskStatus& before, const TaskStatus& now);
    void Set(ContextId task, TaskStatus now, const Releaser& by = {});
    void Leave(ContextId task);
    void DropOpenEnded(ContextId context);
    Wait WaitOf(const service::EventStore& events, std::uint32_t event, std::uint32_t timeline,
                const TaskStatus& before) const;
    Releaser ReleaserNow(ContextId task, std::uint32_t timeline);
    std::uint32_t TimelineOfRecord(std::uint32_t record, std::uint32_t fallback) const;
    bool IsTask(ContextId id) const { return isTask_[id]; }
    void PassTo(std::int64_t time);
    void TakeReturned(std::uint32_t record);
    template <class... Parameters, class... Arguments>
    void Tell(void (IWalkObserver::*member)(Parameters...), const Arguments&... arguments) {
        for (auto* observer : observers_) (observer->*member)(arguments...);
    }

    const Source source_;
    std::vector<IWalkObserver*> observers_;
    std::vector<const service::Timeline*> timelines_;
    std::optional<service::EventMerge> merge_;  // none: it has not begun
    Span span_;
    std::vector<Cpu> cpus_;
    std::vector<TaskStatus> tasks_;             // by context
    std::vector<std::vector<OpenCall>> calls_;  // by context
    std::vector<char> isTask_;
    std::vector<char> isHandler_;
    LockTracker tracker_;
    Moment now_;
};

}  // namespace kvx::timing
