#pragma once
// Makes the jobs while the walk goes on.

#include "workbench/timing/Jobs.h"

namespace kvx::timing {

class JobBuilder final : public IWalkObserver {
  public:
    // All are borrowed.
    JobBuilder(const Walk& walk, const Census& census, const JobEndRules& rules, Jobs& jobs);

    void OnTask(const Moment& moment, ContextId task, const TaskStatus& before,
                const TaskStatus& now, const Releaser& by) override;
    void OnDispatch(const Moment& moment, ContextId from, ContextId to) override;
    void OnEnter(const Moment& moment, ContextId handler, std::size_t depth, bool seen) override;
    void OnNested(const Moment& moment, ContextId handler, std::size_t depth,
                  bool interrupted) override;
    void OnLeave(const Moment& moment, ContextId handler, std::size_t depth, bool seen) override;
    void OnGap(const Moment& moment) override;
    void OnEnd(std::int64_t time) override;

    bool IsInJob(ContextId task) const { return open_[task]; }
    // The number of the job that the context is in; 0: it is in none. timeline: handlers may run on
    // several.
    std::uint32_t JobOf(ContextId context, std::uint32_t timeline) const;

  private:
    struct OpenHandler {
        ContextId handler = kNobody;
        std::size_t job = 0;
        std::int64_t interruptedSince = 0;
    };
    void Open(const Moment& moment, ContextId task, const TaskStatus& now, const Releaser& by,
              bool seen);
    static void Spend(Jobs::TaskJob& job, const TaskStatus& doing, std::int64_t until);
    static void Close(Jobs::TaskJob& job, std::int64_t time, std::uint8_t endsIn);
    void NotePreemption(ContextId task, const TaskStatus& before, const TaskStatus& now);
    bool IsBetween(ContextId task, const TaskStatus& status) const;
    bool EndsHere(ContextId task, const Wait& wait) const;

    const Walk& walk_;
    const Source& source_;
    const Census& census_;
    const JobEndRules& rules_;
    Jobs& jobs_;
    std::vector<char> missed_;  // by context: behind a gap, and nothing was told of it since
    std::vector<char> open_;    // by context: the task is in a job
    std::vector<std::vector<OpenHandler>> handlers_;  // by timeline, innermost last
    // By timeline: the task that gave the processor up and is ready, as long as no other task runs
    // there.
    std::vector<ContextId> left_;
};

}  // namespace kvx::timing
