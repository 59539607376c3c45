#pragma once
// Jobs, locks and what the texts of calls tell, of a whole recording: made once, asked by tables,
// explanations and findings.

#include "workbench/timing/Incident.h"
#include "workbench/timing/Jobs.h"
#include "workbench/timing/Selection.h"
#include "workbench/timing/Walk.h"

namespace kvx::timing {

class Model {
  public:
    // decoded is borrowed; waits until all of it is there. Contexts are numbered as a Contexts of
    // it numbers them. ends: empty: nothing is said. stopEvery: events between places from which
    // walks can go on, at least; 0: as memory allows.
    explicit Model(const service::DecodedRecording& decoded, JobEndRules ends = {},
                   std::size_t stopEvery = 0);

    const service::DecodedRecording& Decoded() const { return decoded_; }
    const service::Recording& Recording() const { return decoded_.GetRecording(); }
    const Contexts& AllContexts() const { return contexts_; }
    const CallFacts& Facts() const { return facts_; }
    const LockSet& Locks() const { return census_.locks; }
    const Jobs& AllJobs() const { return jobs_; }
    // In the order in which they ended.
    const Incidents& AllIncidents() const { return incidents_; }
    Span Range() const { return span_; }
    Source GetSource() const { return {decoded_, contexts_, facts_}; }
    // A walk that knows the locks.
    Walk NewWalk() const { return Walk(GetSource(), &census_.locks); }
    // One that is on its way already, not later than at the time.
    Walk WalkNear(std::int64_t time) const;

    std::string CallName(std::uint32_t call) const {
        return call == service::kNoRecord ? std::string() : decoded_.Names().Get(call).name;
    }
    std::uint32_t ProcessorOf(std::uint32_t timeline) const {
        return decoded_.Timelines()[timeline]->processor;
    }
    // The job as a selection shows it; none: not in it.
    std::optional<Job> JobIn(const Selection& selection, ContextId context,
                             std::size_t index) const;
    // What people should know of how this was found, one sentence each.
    std::vector<std::string> Notes() const;
    std::size_t Bytes() const { return facts_.Bytes() + jobs_.Bytes(); }

  private:
    std::string NoteOnEnds() const;

    const service::DecodedRecording& decoded_;
    const Contexts contexts_;
    const CallFacts facts_;
    const Span span_;
    JobEndRules ends_;
    const Census census_;
    Jobs jobs_;
    Incidents incidents_;
    std::vector<Walk> stops_;  // in order of time
};

}  // namespace kvx::timing
