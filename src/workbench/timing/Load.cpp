#include "workbench/timing/Load.h"

#include <algorithm>

namespace kvx::timing {

Load::Load(const Model& model, const Selection& selection)
    : model_(model), selection_(selection), times_(model.AllContexts().Count()) {
    for (std::uint32_t i = 0; i < model.Decoded().Timelines().size(); ++i)
        if (selection.HasTimeline(i)) ++processors_;
    ForEachRun([&](ContextId context, std::int64_t start, std::int64_t end) {
        times_[context] += end - start;
    });
}

// What has a processor from when to when, inside of the range; one processor after the other. What
// runs at the start shows in the first dispatch.
template <class Visit>
void Load::ForEachRun(Visit visit) const {
    const Span& range = selection_.range;
    for (std::uint32_t i = 0; i < model_.Decoded().Timelines().size(); ++i) {
        const auto& events = model_.Decoded().Timelines()[i]->events;
        const auto dispatches = events.Dispatches(events.Count());
        if (!selection_.HasTimeline(i) || dispatches.empty()) continue;
        auto since = range.start;
        auto context = events.Context(dispatches.front());
        const auto end = [&](std::int64_t time) {
            time = std::clamp(time, range.start, range.end);
            if (time > since) visit(model_.AllContexts().Of(i, context), since, time);
            since = std::max(since, time);
        };
        for (const auto dispatch : dispatches) {
            end(events.Time(dispatch));
            context = events.Next(dispatch);
            if (since >= range.end) break;
        }
        end(range.end);
    }
}

bool Load::IsBusy(ContextId context) const {
    const auto& info = model_.AllContexts().Get(context);
    return info.IsTask() || info.IsHandler();
}

double Load::ShareOf(ContextId context) const {
    const auto length = selection_.range.end - selection_.range.start;
    if (length <= 0 || processors_ == 0) return 0;
    return static_cast<double>(times_[context]) /
           (static_cast<double>(length) * static_cast<double>(processors_));
}

std::vector<LoadSlice> Load::Slices(std::int64_t every) const {
    const Span& range = selection_.range;
    std::vector<LoadSlice> slices;
    for (auto start = range.start; start < range.end; start += every)
        slices.push_back({start, std::min(start + every, range.end), 0, 0, {}});
    const auto add = [&](LoadSlice& slice, ContextId context, std::int64_t time) {
        const double share =
            static_cast<double>(time) /
            (static_cast<double>(slice.end - slice.start) * static_cast<double>(processors_));
        const auto& info = model_.AllContexts().Get(context);
        if (info.IsIdle()) {
            slice.idle += share;
            return;
        }
        if (info.IsHandler()) slice.handlers += share;
        const auto at =
            std::ranges::find(slice.shares, context, [](const auto& each) { return each.first; });
        if (at == slice.shares.end())
            slice.shares.emplace_back(context, share);
        else
            at->second += share;
    };
    ForEachRun([&](ContextId context, std::int64_t start, std::int64_t end) {
        while (start < end) {
            auto& slice = slices[static_cast<std::size_t>((start - range.start) / every)];
            const auto stop = std::min(end, slice.end);
            add(slice, context, stop - start);
            start = stop;
        }
    });
    for (LoadSlice& slice : slices) std::ranges::sort(slice.shares);
    return slices;
}

namespace {

// How busy the processors were up to a time, which never goes back.
class BusyTime {
  public:
    struct Step {
        std::int64_t time = 0;
        int change = 0;  // of the number of busy processors
    };
    explicit BusyTime(const std::vector<Step>& steps) : steps_(steps) {}

    std::int64_t Until(std::int64_t time) {
        for (; next_ < steps_.size() && steps_[next_].time <= time; ++next_) {
            MoveTo(steps_[next_].time);
            busy_ += steps_[next_].change;
        }
        MoveTo(time);
        return sum_;
    }

  private:
    void MoveTo(std::int64_t time) {
        sum_ += (time - now_) * busy_;
        now_ = time;
    }
    const std::vector<Step>& steps_;
    std::size_t next_ = 0;
    std::int64_t now_ = 0;
    std::int64_t sum_ = 0;
    int busy_ = 0;
};

}  // namespace

// The load of a window is greatest where it begins or ends with a change.
LoadPeak Load::Peak(std::int64_t window) const {
    const Span& range = selection_.range;
    window = std::min(window, range.end - range.start);
    std::vector<BusyTime::Step> steps;
    ForEachRun([&](ContextId context, std::int64_t start, std::int64_t end) {
        if (!IsBusy(context)) return;
        if (!steps.empty() && steps.back().time == start && steps.back().change < 0)
            steps.back().time = end;
        else
            steps.insert(steps.end(), {{start, 1}, {end, -1}});
    });
    std::ranges::stable_sort(steps, {}, &BusyTime::Step::time);
    LoadPeak peak{range.start, range.start + window, 0};
    if (window <= 0) return peak;
    std::int64_t most = -1;
    for (const auto offset : {std::int64_t{0}, window}) {
        BusyTime from(steps);
        BusyTime to(steps);
        const auto look = [&](std::int64_t start) {
            start = std::clamp(start, range.start, range.end - window);
            const auto busy = to.Until(start + window) - from.Until(start);
            if (busy <= most) return;
            most = busy;
            peak.start = start;
            peak.end = start + window;
        };
        look(range.start);
        for (const auto& step : steps) look(step.time - offset);
    }
    peak.load = static_cast<double>(most) /
                (static_cast<double>(window) * static_cast<double>(processors_));
    return peak;
}

}  // namespace kvx::timing
