// An ITRON kernel log. What other kernels tell and such a log has no message for is said in further
// messages, which other tools take for the application's own words: the cause of a wait, a state
// that is not known, records that were lost, calls without a return.

#include <algorithm>
#include <limits>
#include <map>
#include <queue>
#include <unordered_map>
#include <utility>

#include "host/OSTraceService.h"
#include "host/TraceCodes.h"
#include "platform/base/Text.h"
#include "workbench/exports/EventWalk.h"
#include "workbench/exports/ItronNames.h"
#include "workbench/exports/ItronResources.h"
#include "workbench/exports/ReadyAfter.h"
#include "workbench/exports/RunStack.h"
#include "workbench/service/EventTexts.h"

namespace kvx::exports {
namespace {

using service::ContextKey;
using service::EventStore;
using service::Timeline;

constexpr std::uint8_t kReady = host::Code(host::StateCode::Ready);
constexpr std::uint8_t kDormant = host::Code(host::StateCode::Dormant);
constexpr std::uint8_t kSleeping = host::Code(host::StateCode::Sleeping);

constexpr std::uint32_t kNowhere = service::kAnyProcessor;
constexpr std::uint32_t kElsewhere = service::kNoProcessor;  // on a processor that is left out

struct Task {
    std::string state;               // the latest, as the windows write it
    std::uint32_t place = kNowhere;  // processor where that was, or where it ran
    bool runs = false;
    bool gaveUp = false;                           // it runs, and a state says that it will not
    std::uint32_t stoppedBy = service::kNoRecord;  // the dispatch that took the processor from it
};

class Writer {
  public:
    Writer(const ExportRequest& request, std::ostream& out)
        : request_(request),
          recording_(request.decoded.GetRecording()),
          out_(out),
          isItron_(recording_.GetKernel().Name() == kItronKernel),
          origin_(ItronOrigin(request)) {
        for (const auto* timeline : request.timelines) {
            const auto& stack =
                stacks_.try_emplace(timeline, *timeline, request.start).first->second;
            const auto below = stack.Below();
            if (below == service::kNoContext || !IsTask(*timeline, below)) continue;
            Task& task = TaskOf(*timeline, below);
            task.place = timeline->processor;
            task.runs = true;
        }
    }

    bool Write() {
        for (const auto* timeline : request_.timelines)
            Line(request_.start, *timeline, "recording begins.");
        const bool all = EventWalk(request_).Run([&](const Event& event) {
            WriteReturns(RecordOf(event), request_.end);
            const int kind = event.timeline->events.Kind(event.number);
            if (kind == kEventDispatch)
                OnDispatch(event);
            else if (kind == kEventState)
                OnState(event);
            else
                OnCall(event);
        });
        WriteReturns(service::kNoRecord, request_.end);
        Line(request_.end, *request_.timelines.front(), "recording ends.");
        WriteReturns(service::kNoRecord, std::numeric_limits<std::int64_t>::max());
        return all;
    }

  private:
    struct Return {
        std::uint32_t record = 0;
        std::int64_t time = 0;
        const Timeline* timeline = nullptr;
        std::uint32_t context = 0;
        std::uint32_t event = 0;
        bool operator>(const Return& other) const { return record > other.record; }
    };

    // The record that gave the event. A wait names the call that waits, or none: it came no later
    // than what follows it in the same moment, which is the dispatch away as a rule.
    static std::uint32_t RecordOf(const Event& event) {
        const EventStore& events = event.timeline->events;
        const auto isWait = [&](std::uint32_t e) {
            return events.Kind(e) == kEventState && events.Code(e) >= kSleeping;
        };
        auto e = event.number;
        while (e < events.Count() && isWait(e) && events.Time(e) == events.Time(event.number)) ++e;
        const bool known = e < events.Count() && events.Time(e) == events.Time(event.number) &&
                           events.RecordOf(e) != service::kNoRecord;
        return known ? std::max(event.record, events.RecordOf(e)) : event.record;
    }

    void OnDispatch(const Event& event) {
        const Timeline& timeline = *event.timeline;
        const EventStore& events = timeline.events;
        const auto time = events.Time(event.number);
        const auto from = events.Context(event.number);
        const auto to = events.Next(event.number);
        const auto move = stacks_.at(&timeline).Apply(from, to);
        if (IsOfAnotherGap(event)) return;
        const service::Context& next = timeline.contexts.Get(to);
        const service::Context& before = timeline.contexts.Get(from);
        if (move == RunStack::Move::Enter)
            return Line(time, timeline, "enter to " + ItronContext(next) + ".");
        if (move == RunStack::Move::Leave)
            return Line(time, timeline, "leave from " + ItronContext(before) + ".");
        if (next.type == kContextUnknown) {
            Forget();
            return Line(time, timeline, "records lost.");
        }
        if (IsTask(timeline, from) && from != to) Stop(event, from, time);
        if (!next.IsIdle()) {
            Task& task = TaskOf(timeline, to);
            task = {{}, timeline.processor, true, false, service::kNoRecord};
            return Line(time, timeline, "dispatch to " + ItronContext(next) + ".");
        }
        Line(time, timeline,
             IsTask(timeline, from) ? "dispatch from " + ItronContext(before) + "."
                                    : "dispatch to task 0.");
    }

    // Where records of one processor are lost, nothing is known of the tasks of others either: what
    // is shown there for a moment follows from that.
    bool IsOfAnotherGap(const Event& event) {
        const EventStore& events = event.timeline->events;
        if (std::exchange(back_, service::kNoRecord) == events.RecordOf(event.number) &&
            backOn_ == event.timeline)
            return true;
        if (event.timeline->contexts.Get(events.Next(event.number)).type != kContextUnknown)
            return false;
        const auto all = events.Dispatches(events.Count());
        const auto next = std::ranges::upper_bound(all, event.number);
        if (next == all.end() || events.RecordOf(*next) != events.RecordOf(event.number))
            return false;
        back_ = events.RecordOf(event.number);
        backOn_ = event.timeline;
        return true;
    }

    void Forget() {
        for (auto& [key, task] : tasks_)
            if (!task.runs) task = {};
    }

    void Stop(const Event& event, std::uint32_t from, std::int64_t time) {
        const Timeline& timeline = *event.timeline;
        Task& task = TaskOf(timeline, from);
        if (!task.gaveUp && !IsReadyAfter(request_.decoded, timeline, event.number))
            Line(time, timeline, Name(timeline, from) + " becomes UNKNOWN.");
        task.runs = task.gaveUp = false;
        task.stoppedBy = timeline.events.RecordOf(event.number);
    }

    void OnState(const Event& event) {
        const Timeline& timeline = *event.timeline;
        const EventStore& events = timeline.events;
        const auto context = events.Next(event.number);
        const auto time = events.Time(event.number);
        Task& task = TaskOf(timeline, context);
        const auto flags = events.Flags(event.number);
        if (flags & host::kFlagPaused) return OnMovedAway(timeline, context, time);
        const auto text = service::EventTexts(request_.decoded, timeline).State(event.number);
        const auto place = std::exchange(task.place, timeline.processor);
        const bool same = std::exchange(task.state, text) == text;
        const bool ready = events.Code(event.number) == kReady && flags == 0;
        if (ready && task.stoppedBy == events.RecordOf(event.number)) return;
        if (task.runs) task.gaveUp = !ready;
        const bool moved = place != kNowhere && place != timeline.processor && !task.runs;
        if (moved && same && place != kElsewhere)
            return Line(time, timeline,
                        FormatText("%s migrates from processor %u to processor %u.",
                                   Name(timeline, context).c_str(), place, timeline.processor));
        auto message = Name(timeline, context) + " becomes " + StateName(event) + Cause(event);
        if (moved) message += FormatText(" on processor %u", timeline.processor);
        Line(time, timeline, message + ".");
    }

    // Of one processor alone: where the task goes is not in the log.
    void OnMovedAway(const Timeline& timeline, std::uint32_t context, std::int64_t time) {
        if (request_.timelines.size() > 1) return;
        Line(time, timeline,
             FormatText("%s migrates from processor %u to processor %u.",
                        Name(timeline, context).c_str(), timeline.processor,
                        timeline.processor + 1));
        TaskOf(timeline, context) = {};
        TaskOf(timeline, context).place = kElsewhere;
    }

    static const char* StateName(const Event& event) {
        const EventStore& events = event.timeline->events;
        const bool suspended = events.Flags(event.number) & host::kFlagSuspended;
        const auto code = events.Code(event.number);
        if (code == kDormant) return "DORMANT";
        if (code == kReady) return suspended ? "SUSPENDED" : "RUNNABLE";
        return suspended ? "WAITING-SUSPENDED" : "WAITING";
    }

    // Where the open call of the task does not say it, or says something else to an ITRON kernel.
    std::string Cause(const Event& event) const {
        const EventStore& events = event.timeline->events;
        const auto code = events.Code(event.number);
        if (code < kSleeping) return {};
        const auto call = events.RecordOf(event.number);
        const bool told = call != service::kNoRecord;
        if (told ? isItron_ && recording_.TimeOf(call) >= request_.start : code == kSleeping)
            return {};
        return " " + std::string(host::StateName(code)).substr(4);
    }

    void OnCall(const Event& event) {
        const Timeline& timeline = *event.timeline;
        const EventStore& events = timeline.events;
        const service::EventTexts texts(request_.decoded, timeline);
        const auto name = ItronCallName(texts.CallName(event.number), isItron_);
        const auto returned = events.ReturnRecord(event.number);
        const bool instant =
            !isItron_ && returned == service::kNoRecord && !IsWaitedIn(timeline, event.number);
        Line(events.Time(event.number), timeline,
             (instant ? "call of " : "enter to ") + name + Values(texts.Parameters(event.number)));
        if (returned != service::kNoRecord)
            returns_.push({returned, recording_.TimeOf(returned), &timeline,
                           events.Context(event.number), event.number});
    }

    // Whether the next state of the caller is a wait in the call.
    static bool IsWaitedIn(const Timeline& timeline, std::uint32_t call) {
        const EventStore& events = timeline.events;
        const auto states = events.StatesOf(events.Context(call), events.Count());
        const auto* const end = states.events + states.count;
        const auto* const next = std::upper_bound(states.events, end, call);
        return next != end && events.RecordOf(*next) == events.RecordOf(call);
    }

    // Those of records before that one, up to a time.
    void WriteReturns(std::uint32_t before, std::int64_t until) {
        for (; !returns_.empty() && returns_.top().record < before && returns_.top().time <= until;
             returns_.pop()) {
            const Return& top = returns_.top();
            const service::EventTexts texts(request_.decoded, *top.timeline);
            Line(top.time, PlaceOf(top),
                 Returner(top) + "leave from " +
                     ItronCallName(texts.CallName(top.event), isItron_) +
                     Values(texts.ReturnText(top.event)));
        }
    }

    // Behind the end of the range nothing says who runs.
    std::string Returner(const Return& returned) const {
        if (returned.time <= request_.end || !IsTask(*returned.timeline, returned.context))
            return {};
        return Name(*returned.timeline, returned.context) + " ";
    }

    // A call returns where its task runs by then.
    const Timeline& PlaceOf(const Return& returned) const {
        const auto at = std::ranges::find(
            request_.timelines, recording_.ProcessorOf(returned.record), &Timeline::processor);
        return at == request_.timelines.end() ? *returned.timeline : **at;
    }

    static std::string Values(const std::string& text) {
        return text.empty() ? "." : " " + text + ".";
    }

    void Line(std::int64_t time, const Timeline& timeline, const std::string& message) {
        out_ << '[' << time + origin_ << ']';
        if (request_.timelines.size() > 1)
            out_ << ":[" << timeline.processor << "]: ";
        else
            out_ << ' ';
        out_ << message << '\n';
    }

    static std::string Name(const Timeline& timeline, std::uint32_t context) {
        return ItronContext(timeline.contexts.Get(context));
    }
    static bool IsTask(const Timeline& timeline, std::uint32_t context) {
        const service::Context& c = timeline.contexts.Get(context);
        return c.type == kContextTask && !c.IsIdle();
    }
    Task& TaskOf(const Timeline& timeline, std::uint32_t context) {
        return tasks_[timeline.contexts.Get(context).key];
    }

    const ExportRequest& request_;
    const service::Recording& recording_;
    std::ostream& out_;
    const bool isItron_;
    const std::int64_t origin_;
    std::unordered_map<const Timeline*, RunStack> stacks_;
    std::map<ContextKey, Task> tasks_;
    std::priority_queue<Return, std::vector<Return>, std::greater<>> returns_;
    std::uint32_t back_ = service::kNoRecord;  // of a moment of not knowing on another processor
    const Timeline* backOn_ = nullptr;
};

bool Write(const ExportRequest& request, std::ostream& out) {
    return Writer(request, out).Write();
}

}  // namespace

const Exporter kItron = {"itron",
                         "log",
                         "ITRON kernel log, and beside it a resource file with its start",
                         Write,
                         WriteItronResources,
                         "res"};

}  // namespace kvx::exports
