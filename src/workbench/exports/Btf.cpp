// BTF 2.2: the runs and states of tasks and handlers, and calls that returned as runnables. What
// the format has no event for, as which kind of wait it is, stands in the note in our own words.

#include <algorithm>
#include <ctime>
#include <map>
#include <queue>
#include <unordered_map>
#include <utility>

#include "host/OSTraceService.h"
#include "host/TraceCodes.h"
#include "platform/os/Environment.h"
#include "workbench/exports/BtfText.h"
#include "workbench/exports/EventWalk.h"
#include "workbench/exports/ReadyAfter.h"
#include "workbench/exports/RunStack.h"
#include "workbench/service/EventTexts.h"

namespace kvx::exports {
namespace {

using service::ContextKey;
using service::EventStore;
using service::Timeline;

constexpr std::uint8_t kReady = host::Code(host::StateCode::Ready);
// Source of what does not come from a core.
constexpr const char* kSystem = "SYS";
constexpr const char* kTerminate = "terminate";
constexpr std::uint8_t kDormant = host::Code(host::StateCode::Dormant);

struct Process {
    std::uint64_t instance = 0;
    bool lives = false;  // an instance was activated and has not ended
    bool began = false;  // ... and has run
    bool runs = false;
    // What the latest state event said, for the moment in which the task gives the processor up.
    std::string note;
    std::string state;                // the latest, as the windows write it
    const Timeline* place = nullptr;  // the processor where that was, or where it ran
    const char* stop = nullptr;
    std::uint32_t stoppedBy = service::kNoRecord;  // the dispatch that took the processor from it
};

class Writer {
  public:
    Writer(const ExportRequest& request, std::ostream& out) : request_(request), out_(out) {
        const auto& clock = request.decoded.GetRecording().Clock();
        // The format has units only; counts are written as if they were nanoseconds.
        unit_ = clock.Known() ? clock.UnitName() : "ns";
        for (const auto* timeline : request.timelines) StartWith(*timeline);
    }

    bool Write() {
        out_ << "#version 2.2.0\n#creator kvxostrace\n#creationDate " << Now() << "\n#timeScale "
             << unit_ << '\n';
        for (const auto* timeline : idleAtStart_) Idle(request_.start, *timeline);
        const bool all = EventWalk(request_).Run([&](const Event& event) {
            WriteReturns(event.record);
            const int kind = event.timeline->events.Kind(event.number);
            if (kind == kEventDispatch)
                OnDispatch(event);
            else if (kind == kEventState)
                OnState(event);
            else
                OnCall(event);
        });
        WriteReturns(service::kNoRecord);
        return all;
    }

  private:
    // What runs at the start began before it.
    void StartWith(const Timeline& timeline) {
        const auto& stack = stacks_.try_emplace(&timeline, timeline, request_.start).first->second;
        const auto below = stack.Below();
        if (below != service::kNoContext && timeline.contexts.Get(below).IsIdle())
            idleAtStart_.push_back(&timeline);
        for (const auto handler : stack.Handlers()) Begin(ProcessOf(timeline, handler));
        if (below != service::kNoContext && IsTask(timeline, below)) {
            Begin(ProcessOf(timeline, below));
            ProcessOf(timeline, below).runs = stack.Handlers().empty();
        }
    }
    static void Begin(Process& process) {
        process.instance = 1;
        process.lives = process.began = process.runs = true;
    }

    static std::string Now() {
        const std::tm parts = os::UtcTime(std::time(nullptr));
        char text[32];
        return {text, std::strftime(text, sizeof(text), "%Y-%m-%dT%H:%M:%SZ", &parts)};
    }

    struct Return {
        std::uint32_t record = 0;
        std::string line;
        bool operator>(const Return& other) const { return record > other.record; }
    };

    // Tells what it takes from one context and gives to another.
    void OnDispatch(const Event& event) {
        const Timeline& timeline = *event.timeline;
        const EventStore& events = timeline.events;
        const auto time = events.Time(event.number);
        const auto from = events.Context(event.number);
        const auto to = events.Next(event.number);
        auto& stack = stacks_.at(&timeline);
        const auto before = stack.Handlers();
        const auto move = stack.Apply(from, to);
        if (move == RunStack::Move::Enter) {
            if (IsTask(timeline, from)) StopTask(event, from, true, time);
            if (IsHandler(timeline, from)) Handler(time, timeline, from, "preempt");
            ++ProcessOf(timeline, to).instance;
            return Handler(time, timeline, to, "start");
        }
        if (IsTask(timeline, from)) StopTask(event, from, false, time);
        if (IsHandler(timeline, from)) Handler(time, timeline, from, "terminate");
        for (auto at = before.size(); at-- > stack.Handlers().size();)
            if (before[at] != from) Handler(time, timeline, before[at], "terminate");
        if (IsHandler(timeline, to)) return Handler(time, timeline, to, "resume");
        if (IsTask(timeline, to)) StartTask(timeline, to, time);
        if (timeline.contexts.Get(to).IsIdle()) Idle(time, timeline);
    }

    // The core itself tells that it idles.
    void Idle(std::int64_t time, const Timeline& timeline) {
        const auto core = Core(timeline);
        out_ << time << ',' << core << ",0,C," << core << ",0,idle\n";
    }

    void Handler(std::int64_t time, const Timeline& timeline, std::uint32_t handler,
                 const char* event) {
        Line(time, Core(timeline), "I", timeline, handler, event, {});
    }

    void StopTask(const Event& event, std::uint32_t from, bool toHandler, std::int64_t time) {
        const Timeline& timeline = *event.timeline;
        Process& task = ProcessOf(timeline, from);
        const char* const stop = task.stop ? task.stop : "preempt";
        // A task that nobody says is ready, and that no handler interrupts, does what is not known.
        if (!task.stop && task.note.empty() && !toHandler &&
            !IsReadyAfter(request_.decoded, timeline, event.number))
            task.note = "unknown";
        Line(time, Core(timeline), "T", timeline, from, stop, task.note);
        if (stop == kTerminate) task.lives = task.began = false;
        task.runs = false;
        task.stop = nullptr;
        task.note.clear();
        task.stoppedBy = timeline.events.RecordOf(event.number);
    }

    void StartTask(const Timeline& timeline, std::uint32_t to, std::int64_t time) {
        Process& task = ProcessOf(timeline, to);
        if (!task.lives) ++task.instance;
        Line(time, Core(timeline), "T", timeline, to, task.began ? "resume" : "start", {});
        task.lives = task.began = task.runs = true;
        task.state.clear();
        task.place = &timeline;
    }

    void OnState(const Event& event) {
        const Timeline& timeline = *event.timeline;
        const EventStore& events = timeline.events;
        const auto context = events.Next(event.number);
        Process& task = ProcessOf(timeline, context);
        if (events.Flags(event.number) & host::kFlagPaused) return;
        const auto code = events.Code(event.number);
        const bool suspended = events.Flags(event.number) & host::kFlagSuspended;
        const auto text = service::EventTexts(request_.decoded, timeline).State(event.number);
        const auto time = events.Time(event.number);
        const char* const stop = code == kDormant               ? kTerminate
                                 : code == kReady && !suspended ? nullptr
                                                                : "wait";
        if (task.runs) {
            task.state = text;
            task.stop = stop;
            task.note = stop && code != kDormant ? text : std::string();
            if (IsGivenUpAt(event, time) || !stop) return;
            // The state comes first, and the processor is given up later.
            task.stop = nullptr;
            task.note = text;
        }
        const auto* const place = std::exchange(task.place, &timeline);
        if (std::exchange(task.state, text) == text && place && place != &timeline)
            return Line(time, kSystem, "T", timeline, context, "fullmigration",
                        "to " + Core(timeline));
        if (!stop) return BecomeReady(event, context, task, time);
        Line(time, kSystem, "T", timeline, context, stop, text + On(timeline));
        if (code == kDormant) task.lives = task.began = false;
    }

    // Whether the next dispatch of the processor comes in the same moment.
    bool IsGivenUpAt(const Event& event, std::int64_t time) const {
        const EventStore& events = event.timeline->events;
        const auto all = events.Dispatches(events.Count());
        const auto next = std::ranges::upper_bound(all, event.number);
        return next != all.end() && events.Time(*next) == time;
    }

    void BecomeReady(const Event& event, std::uint32_t context, Process& task, std::int64_t time) {
        // Losing the processor says so already.
        if (task.runs || task.stoppedBy == event.timeline->events.RecordOf(event.number)) return;
        const bool isNew = !task.lives;
        if (isNew) ++task.instance;
        task.lives = true;
        Line(time, isNew ? "STI" : kSystem, "T", *event.timeline, context,
             isNew ? "activate" : "release", On(*event.timeline));
    }

    void OnCall(const Event& event) {
        const Timeline& timeline = *event.timeline;
        const EventStore& events = timeline.events;
        const auto context = events.Context(event.number);
        const auto returned = events.ReturnRecord(event.number);
        if (returned == service::kNoRecord || !IsTask(timeline, context)) return;
        const auto end = request_.decoded.GetRecording().TimeOf(returned);
        if (end > request_.end) return;
        const auto name =
            BtfColumn(service::EventTexts(request_.decoded, timeline).CallName(event.number));
        const auto line = [&](std::int64_t time, const char* what) {
            return std::to_string(time) + "," + names_.Of(timeline, context) + "," +
                   std::to_string(ProcessOf(timeline, context).instance) + ",R," + name + ",0," +
                   what + "\n";
        };
        out_ << line(events.Time(event.number), "start");
        returns_.push({returned, line(end, "terminate")});
    }

    // Those of records before that one.
    void WriteReturns(std::uint32_t before) {
        for (; !returns_.empty() && returns_.top().record < before; returns_.pop())
            out_ << returns_.top().line;
    }

    void Line(std::int64_t time, const std::string& source, const char* type,
              const Timeline& timeline, std::uint32_t context, const char* event,
              const std::string& note) {
        out_ << time << ',' << source << ",0," << type << ',' << names_.Of(timeline, context) << ','
             << ProcessOf(timeline, context).instance << ',' << event;
        if (!note.empty()) out_ << ',' << (note.front() == ' ' ? note.substr(1) : note);
        out_ << '\n';
    }

    // Where a task is that does not run, if there are several processors.
    std::string On(const Timeline& timeline) const {
        return request_.decoded.Timelines().size() > 1 ? " on " + Core(timeline) : "";
    }
    static std::string Core(const Timeline& timeline) {
        return "Core_" + std::to_string(timeline.processor);
    }
    static bool IsTask(const Timeline& timeline, std::uint32_t context) {
        const service::Context& c = timeline.contexts.Get(context);
        return c.type == kContextTask && !c.IsIdle();
    }
    static bool IsHandler(const Timeline& timeline, std::uint32_t context) {
        return timeline.contexts.Get(context).type == kContextHandler;
    }
    Process& ProcessOf(const Timeline& timeline, std::uint32_t context) {
        const service::Context& c = timeline.contexts.Get(context);
        return processes_[{c.type == kContextTask ? nullptr : &timeline, c.key}];
    }

    const ExportRequest& request_;
    std::ostream& out_;
    std::string unit_;
    std::vector<const Timeline*> idleAtStart_;
    BtfNames names_;
    // Handlers are those of their processor.
    std::map<std::pair<const Timeline*, ContextKey>, Process> processes_;
    std::unordered_map<const Timeline*, RunStack> stacks_;
    std::priority_queue<Return, std::vector<Return>, std::greater<>> returns_;
};

bool Write(const ExportRequest& request, std::ostream& out) {
    return Writer(request, out).Write();
}

}  // namespace

const Exporter kBtf = {"btf", "btf", "BTF 2.2, for timing tools of OSEK and AUTOSAR systems",
                       Write};

}  // namespace kvx::exports
