#pragma once
// What is known of the tasks at some moment of a recording: enough to begin reading there.

#include <vector>

#include "workbench/simulation/Context.h"
#include "workbench/simulation/TraceSink.h"

namespace kvx::simulation {

class KernelMoment {
  public:
    // Goes on past the record.
    void Apply(const TraceRecord& record);

    LoggedState StateOf(const Task& task) const;
    // Neither a task nor a handler runs.
    bool IsIdle() const { return running_ == 0 && handlers_ == 0; }

  private:
    // By task id, as far as records have named them; before that a task is as it is configured.
    struct Seen {
        bool changed = false;
        LoggedState state = LoggedState::Dormant;
    };
    std::vector<Seen> tasks_;
    std::int32_t running_ = 0;  // task id; 0: none
    std::int32_t handlers_ = 0;
};

}  // namespace kvx::simulation
