// Chrome's trace-event JSON, which ui.perfetto.dev and chrome://tracing open: a process for each
// processor, and for each context a track of its runs, one of its states and one of its calls.

#include <algorithm>
#include <limits>
#include <unordered_map>

#include "host/OSTraceService.h"
#include "platform/base/Text.h"
#include "workbench/exports/EventWalk.h"
#include "workbench/exports/JsonText.h"
#include "workbench/service/EventTexts.h"

namespace kvx::exports {
namespace {

using service::EventStore;
using service::Timeline;

enum class Track : std::uint8_t { Run, State, Call };
constexpr std::uint64_t kTracks = 3;

class Writer {
  public:
    Writer(const ExportRequest& request, std::ostream& out) : request_(request), out_(out) {
        const auto& clock = request.decoded.GetRecording().Clock();
        // Counts without a unit are written as if they were microseconds.
        nanoseconds_ = clock.Known() ? clock.NanosecondsPerCount() : 1000;
        std::uint64_t first = 1;
        for (const auto* timeline : request.timelines) {
            first_[timeline] = first;
            first += kTracks * timeline->contexts.Count();
        }
    }

    bool Write() {
        out_ << "{\"displayTimeUnit\":\"ns\",\"otherData\":{";
        WriteOrigin();
        out_ << "},\"traceEvents\":[\n";
        for (const auto* timeline : request_.timelines) WriteNames(*timeline);
        for (const auto* timeline : request_.timelines) WriteOpenAtStart(*timeline);
        const bool all = EventWalk(request_).Run(
            [&](const Event& event) { WriteEvent(*event.timeline, event.number); });
        out_ << "\n]}\n";
        return all;
    }

  private:
    // What was taken off all times, and what they count.
    void WriteOrigin() {
        const auto& recording = request_.decoded.GetRecording();
        out_ << "\"file\":";
        WriteJsonText(out_, recording.Path());
        out_ << ",\"format\":";
        WriteJsonText(out_, recording.FormatName());
        out_ << ",\"time_unit\":\"" << recording.Clock().UnitName() << "\",\"start\":\""
             << request_.start << "\",\"time_origin\":\"" << recording.TimeOrigin() << '"';
        if (!recording.Clock().Known()) out_ << ",\"note\":\"a count is shown as a microsecond\"";
    }

    void WriteNames(const Timeline& timeline) {
        const auto process = Process(timeline);
        Meta("process_name", process, 0, FormatText("Processor %u", timeline.processor));
        Begin();
        out_ << "{\"ph\":\"M\",\"name\":\"process_sort_index\",\"pid\":" << process
             << ",\"args\":{\"sort_index\":" << timeline.processor << "}}";
        for (std::uint32_t context = 0; context < timeline.contexts.Count(); ++context) {
            const auto name = NameOf(timeline, context);
            Meta("thread_name", process, TrackOf(timeline, context, Track::Run), name);
            Meta("thread_name", process, TrackOf(timeline, context, Track::State), name + " state");
            Meta("thread_name", process, TrackOf(timeline, context, Track::Call), name + " calls");
        }
    }

    void Meta(const char* what, std::uint64_t process, std::uint64_t track,
              const std::string& name) {
        Begin();
        out_ << "{\"ph\":\"M\",\"name\":\"" << what << "\",\"pid\":" << process;
        if (track > 0) out_ << ",\"tid\":" << track;
        out_ << ",\"args\":{\"name\":";
        WriteJsonText(out_, name);
        out_ << "}}";
    }

    // Runs and states that began before the range and reach into it.
    void WriteOpenAtStart(const Timeline& timeline) {
        const EventStore& events = timeline.events;
        const auto before = events.CountUntil(request_.start - 1);
        if (const auto runs = events.Dispatches(before); !runs.empty())
            WriteInterval(timeline, runs.back());
        for (std::uint32_t context = 0; context < timeline.contexts.Count(); ++context) {
            const auto states = events.StatesOf(context, before);
            if (states.count > 0) WriteInterval(timeline, states.events[states.count - 1]);
        }
    }

    void WriteEvent(const Timeline& timeline, std::uint32_t event) {
        if (timeline.events.Kind(event) == kEventSysCall)
            WriteCall(timeline, event);
        else
            WriteInterval(timeline, event);
        if (request_.arrows) WriteArrow(timeline, event);
    }

    void WriteInterval(const Timeline& timeline, std::uint32_t event) {
        const EventStore& events = timeline.events;
        const auto by = events.EndEvent(event);
        const auto end =
            by == host::kOpenEnd ? request_.end : std::min(events.Time(by), request_.end);
        if (end < request_.start) return;
        const bool run = events.Kind(event) == kEventDispatch;
        const auto context = events.Next(event);
        const service::EventTexts texts(request_.decoded, timeline);
        Slice(timeline, context, run ? Track::Run : Track::State, run ? "run" : "state",
              run ? "RUN" : texts.State(event), events.Time(event), end);
        out_ << ",\"args\":{\"event\":" << event;
        if (!run && events.RecordOf(event) != service::kNoRecord &&
            events.Code(event) > host::Code(host::StateCode::Dormant)) {
            const auto& recording = request_.decoded.GetRecording();
            const auto call = recording.NameOf(events.RecordOf(event));
            if (!call.empty()) {
                out_ << ",\"waits_in\":";
                WriteJsonText(out_, call + "(" + recording.Detail(events.RecordOf(event)) + ")");
            }
        }
        out_ << "}}";
    }

    void WriteCall(const Timeline& timeline, std::uint32_t event) {
        const EventStore& events = timeline.events;
        const service::EventTexts texts(request_.decoded, timeline);
        const auto context = events.Context(event);
        const auto returned = events.ReturnRecord(event);
        const auto begin = events.Time(event);
        if (returned == service::kNoRecord) {
            Begin();
            out_ << "{\"ph\":\"i\",\"s\":\"t\",\"cat\":\"call\",\"name\":";
            WriteJsonText(out_, texts.CallName(event));
            Place(timeline, context, Track::Call, begin);
        } else {
            const auto end = std::max(begin, request_.decoded.GetRecording().TimeOf(returned));
            if (!Nests(TrackOf(timeline, context, Track::Call), begin, end))
                return WriteAsync(timeline, event, begin, end);
            Slice(timeline, context, Track::Call, "call", texts.CallName(event), begin, end);
        }
        WriteCallArguments(texts, event);
        out_ << '}';
    }

    // A call that overlaps others of its context stands beside them.
    void WriteAsync(const Timeline& timeline, std::uint32_t event, std::int64_t begin,
                    std::int64_t end) {
        const service::EventTexts texts(request_.decoded, timeline);
        const auto id = ++asyncs_;
        for (const bool starts : {true, false}) {
            Begin();
            out_ << "{\"ph\":\"" << (starts ? 'b' : 'e') << "\",\"cat\":\"call\",\"id\":" << id
                 << ",\"name\":";
            WriteJsonText(out_, texts.CallName(event));
            Place(timeline, timeline.events.Context(event), Track::Call, starts ? begin : end);
            if (starts) WriteCallArguments(texts, event);
            out_ << '}';
        }
    }

    void WriteCallArguments(const service::EventTexts& texts, std::uint32_t event) {
        out_ << ",\"args\":{\"event\":" << event << ",\"parameters\":";
        WriteJsonText(out_, texts.Parameters(event));
        out_ << ",\"returned\":";
        WriteJsonText(out_, texts.ReturnText(event));
        out_ << '}';
    }

    // From the run of who makes a context ready to the run that follows.
    void WriteArrow(const Timeline& timeline, std::uint32_t event) {
        const EventStore& events = timeline.events;
        if (events.Kind(event) != kEventState ||
            events.Code(event) != host::Code(host::StateCode::Ready) || events.Flags(event) != 0)
            return;
        const auto end = events.EndEvent(event);
        const auto before = events.Dispatches(event);
        if (end == host::kOpenEnd || events.Kind(end) != kEventDispatch || before.empty() ||
            events.Time(end) > request_.end)
            return;
        const auto waker = events.Next(before.back());
        const auto woken = events.Next(event);
        if (waker == woken || events.Next(end) != woken) return;
        const auto id = ++arrows_;
        Arrow(timeline, waker, "{\"ph\":\"s\"", id, events.Time(event));
        Arrow(timeline, woken, "{\"ph\":\"f\",\"bp\":\"e\"", id, events.Time(end));
    }

    void Arrow(const Timeline& timeline, std::uint32_t context, const char* begin, std::uint64_t id,
               std::int64_t time) {
        Begin();
        out_ << begin << ",\"cat\":\"wake\",\"name\":\"wake-up\",\"id\":" << id;
        Place(timeline, context, Track::Run, time);
        out_ << '}';
    }

    void Slice(const Timeline& timeline, std::uint32_t context, Track track, const char* category,
               const std::string& name, std::int64_t begin, std::int64_t end) {
        begin = std::max(begin, request_.start);
        Begin();
        out_ << "{\"ph\":\"X\",\"cat\":\"" << category << "\",\"name\":";
        WriteJsonText(out_, name);
        Place(timeline, context, track, begin);
        out_ << ",\"dur\":";
        WriteDuration(out_, Nanoseconds(begin - request_.start), Nanoseconds(end - request_.start));
    }

    void Place(const Timeline& timeline, std::uint32_t context, Track track, std::int64_t time) {
        out_ << ",\"pid\":" << Process(timeline) << ",\"tid\":" << TrackOf(timeline, context, track)
             << ",\"ts\":";
        WriteMicroseconds(out_, Nanoseconds(time - request_.start));
    }

    // Slices of one track must nest: whether one does, given those before it.
    bool Nests(std::uint64_t track, std::int64_t begin, std::int64_t end) {
        auto& open = openCalls_[track];
        while (!open.empty() && open.back() <= begin) open.pop_back();
        if (!open.empty() && open.back() < end) return false;
        open.push_back(end);
        return true;
    }

    static std::string NameOf(const Timeline& timeline, std::uint32_t number) {
        const service::Context& context = timeline.contexts.Get(number);
        const auto name = timeline.contexts.DisplayName(number);
        if (context.IsIdle() || context.type == kContextUnknown) return name;
        return FormatText("%s (%s %d)", name.c_str(),
                          context.type == kContextTask ? "task" : "handler", context.number);
    }

    std::int64_t Nanoseconds(std::int64_t counts) const {
        std::int64_t product = 0;
        if (__builtin_mul_overflow(counts, nanoseconds_, &product))
            return std::numeric_limits<std::int64_t>::max();
        return product;
    }

    std::uint64_t Process(const Timeline& timeline) const { return timeline.processor + 1u; }
    // Unique over all processes, for some viewers take equal ones for one.
    std::uint64_t TrackOf(const Timeline& timeline, std::uint32_t context, Track track) const {
        return first_.at(&timeline) + kTracks * context + static_cast<std::uint64_t>(track);
    }

    void Begin() {
        if (any_) out_ << ",\n";
        any_ = true;
    }

    const ExportRequest& request_;
    std::ostream& out_;
    std::int64_t nanoseconds_;
    std::unordered_map<const Timeline*, std::uint64_t> first_;                // track
    std::unordered_map<std::uint64_t, std::vector<std::int64_t>> openCalls_;  // ends, by track
    std::uint64_t arrows_ = 0;
    std::uint64_t asyncs_ = 0;
    bool any_ = false;
};

bool Write(const ExportRequest& request, std::ostream& out) {
    return Writer(request, out).Write();
}

}  // namespace

const Exporter kPerfetto = {"perfetto", "json",
                            "Trace-event JSON for ui.perfetto.dev and chrome://tracing", Write};

}  // namespace kvx::exports
