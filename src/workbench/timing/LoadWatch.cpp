#include "workbench/timing/LoadWatch.h"

#include <algorithm>

namespace kvx::timing {

LoadWatch::LoadWatch(const Walk& walk, const LoadLimits& limits, Incidents& out)
    : walk_(walk),
      limits_(limits),
      out_(out),
      begin_(SpanOf(walk.From().decoded).start),
      busy_(walk.From().decoded.Timelines().size()),
      gaps_(busy_.size()),
      runs_(busy_.size(), Run{begin_, begin_, {}}) {}

void LoadWatch::OnDispatch(const Moment& moment, ContextId from, ContextId to) {
    const auto& contexts = walk_.From().contexts;
    const auto isBusy = [&](ContextId id) {
        return contexts.Get(id).IsTask() || contexts.Get(id).IsHandler();
    };
    const auto timeline = moment.at.timeline;
    Busy& busy = busy_[timeline];
    if (!busy.begun && isBusy(from)) busy = {true, true, begin_, moment.at, begin_};
    busy.begun = true;
    // Idle for no time at all is not idle.
    if (isBusy(to) && (!busy.is || (!isBusy(from) && moment.time > busy.idleSince))) {
        if (busy.is) EndBusy(timeline, busy.idleSince, false);
        busy = {true, true, moment.time, moment.at, moment.time};
    }
    if (!isBusy(to)) busy.idleSince = moment.time;
    Run& run = runs_[timeline];
    if (contexts.Get(from).IsHandler()) {
        run.end = moment.time;
        AddRun(timeline, from, run);
    }
    run = {moment.time, moment.time, moment.at};
}

void LoadWatch::EndBusy(std::uint32_t timeline, std::int64_t time, bool goesOn) {
    const Busy& busy = busy_[timeline];
    if (limits_.withoutIdle == 0 || time - busy.since < limits_.withoutIdle) return;
    Incident incident;
    incident.kind = FindingKind::Overload;
    incident.timeline = timeline;
    incident.start = busy.since;
    incident.end = time;
    incident.measured = time - busy.since;
    incident.goesOn = goesOn;
    incident.evidence = {busy.event};
    out_.push_back(std::move(incident));
}

// The sum over a window is greatest where a run ends with it.
void LoadWatch::AddRun(std::uint32_t timeline, ContextId handler, const Run& run) {
    if (limits_.handlerWindow == 0 || run.end == run.start) return;
    Handler& h = handlers_[{timeline, handler}];
    h.runs.push_back(run);
    h.sum += run.end - run.start;
    const auto from = run.end - limits_.handlerWindow;
    for (; h.runs.front().end <= from; h.runs.pop_front())
        h.sum -= h.runs.front().end - h.runs.front().start;
    const auto outside = std::max<std::int64_t>(0, from - h.runs.front().start);
    const auto time = h.sum - outside;
    const bool much = time > limits_.handlerTime;
    if (h.open && from > h.open->end) {
        out_.push_back(std::move(*h.open));
        h.open.reset();
    }
    if (!much) return;
    if (!h.open) {
        h.open.emplace();
        h.open->kind = FindingKind::HandlerLoad;
        h.open->contexts = {handler};
        h.open->timeline = timeline;
        h.open->start = std::max(from, h.runs.front().start);
        h.open->evidence = {h.runs.front().event};
    }
    h.open->end = run.end;
    h.open->measured = std::max(h.open->measured, time);
}

void LoadWatch::OnGap(const Moment& moment) {
    auto& gap = gaps_[moment.at.timeline].emplace();
    gap.kind = FindingKind::LostStretch;
    gap.timeline = moment.at.timeline;
    gap.start = moment.time;
    gap.evidence = {moment.at};
}

// On other processors that only their tasks are not told of any more it lasts no time.
void LoadWatch::OnGapEnd(const Moment& moment) {
    auto& gap = gaps_[moment.at.timeline];
    if (!gap) return;
    gap->end = moment.time;
    gap->measured = gap->end - gap->start;
    if (gap->measured > 0) out_.push_back(std::move(*gap));
    gap.reset();
}

void LoadWatch::OnEnd(std::int64_t time) {
    for (auto& gap : gaps_) {
        if (!gap) continue;
        gap->end = time;
        gap->measured = time - gap->start;
        gap->goesOn = true;
        out_.push_back(std::move(*gap));
    }

    for (std::uint32_t timeline = 0; timeline < busy_.size(); ++timeline) {
        const auto current = walk_.Current(timeline);
        if (!busy_[timeline].is) continue;
        const auto& info = walk_.From().contexts.Get(current);
        const bool now = info.IsTask() || info.IsHandler();
        EndBusy(timeline, now ? time : busy_[timeline].idleSince, now);
    }
    for (auto& [key, handler] : handlers_)
        if (handler.open) out_.push_back(std::move(*handler.open));
}

}  // namespace kvx::timing
