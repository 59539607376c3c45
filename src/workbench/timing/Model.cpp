#include "workbench/timing/Model.h"

#include <algorithm>
#include <iterator>

#include "workbench/timing/JobBuilder.h"
#include "workbench/timing/JobWatch.h"
#include "workbench/timing/LoadWatch.h"
#include "workbench/timing/LockChainWatch.h"

namespace kvx::timing {
namespace {

const service::DecodedRecording& Complete(const service::DecodedRecording& decoded) {
    decoded.WaitForAll();
    return decoded;
}

// No idle time for 100 ms; 5 % of 10 ms.
LoadLimits LimitsFor(const service::TraceClock& clock) {
    if (!clock.Known()) return {};
    const auto ms = std::int64_t{1000000} / clock.NanosecondsPerCount();
    return {100 * ms, 10 * ms, 10 * ms / 20};
}

// A stop takes memory for every context and object: less than a byte an event in this distance.
std::size_t StopEvery(std::size_t contextsAndObjects) {
    constexpr std::size_t kLeast = std::size_t{1} << 16;
    return std::max(kLeast, 256 * contextsAndObjects);
}

}  // namespace

Model::Model(const service::DecodedRecording& decoded, JobEndRules ends, std::size_t stopEvery)
    : decoded_(Complete(decoded)),
      contexts_(decoded),
      facts_(decoded),
      span_(SpanOf(decoded)),
      ends_(std::move(ends)),
      census_(TakeCensus(GetSource())),
      jobs_(contexts_.Count()) {
    ends_.resize(contexts_.Count());
    Walk walk = NewWalk();
    JobBuilder builder(walk, census_, ends_, jobs_);
    LockChainWatch chains(walk, builder, incidents_);
    JobWatch jobs(walk, builder, incidents_);
    LoadWatch load(walk, LimitsFor(Recording().Clock()), incidents_);
    for (IWalkObserver* observer :
         std::initializer_list<IWalkObserver*>{&builder, &chains, &jobs, &load})
        walk.Add(*observer);
    if (stopEvery == 0) stopEvery = StopEvery(contexts_.Count() + facts_.AllObjects().Count());
    while (walk.Go(stopEvery)) stops_.push_back(walk.Branch());
}

Walk Model::WalkNear(std::int64_t time) const {
    const auto isEarlier = [&](const Walk& stop) { return stop.Now().time <= time; };
    const auto after = std::ranges::partition_point(stops_, isEarlier);
    return after == stops_.begin() ? NewWalk() : *std::prev(after);
}

std::optional<Job> Model::JobIn(const Selection& selection, ContextId context,
                                std::size_t index) const {
    Job job = jobs_.At(context, index);
    if (!selection.HasTimeline(job.timeline)) return std::nullopt;
    if (job.seen.end < selection.range.start || job.seen.start > selection.range.end)
        return std::nullopt;
    return job.CutTo(selection.range);
}

std::vector<std::string> Model::Notes() const {
    std::vector<std::string> notes;
    for (ObjectId object = 0; object < facts_.AllObjects().Count(); ++object)
        if (census_.locks[object].inferred)
            notes.push_back(facts_.AllObjects().Get(object).Name() +
                            " is taken for a lock: whoever gives it has taken it, every time.");
    if (auto note = NoteOnEnds(); !note.empty()) notes.push_back(std::move(note));
    if (const auto unknown = decoded_.Losses().Get(service::Loss::ReadyTimesUnknown))
        notes.push_back("The recording does not tell when tasks became ready, " +
                        std::to_string(unknown) +
                        " times: when those jobs were activated is not known.");
    return notes;
}

// Of tasks that show neither a wait that ends a job nor DMT.
std::string Model::NoteOnEnds() const {
    constexpr std::size_t kMostNames = 5;
    std::string names;
    std::size_t count = 0;
    for (ContextId id = 0; id < contexts_.Count(); ++id) {
        const bool task = contexts_.Get(id).IsTask() && jobs_.CountOf(id) > 0;
        if (!task || census_.showsEnds[id] || ends_[id]) continue;
        if (++count <= kMostNames) names += (count == 1 ? "" : ", ") + contexts_.NameOf(id);
    }
    if (count == 0) return {};
    if (count > kMostNames) names += " and " + std::to_string(count - kMostNames) + " more";
    return names +
           " show no wait that ends a job: jobs of such tasks end where they wait for a "
           "semaphore that is no lock.";
}

}  // namespace kvx::timing
