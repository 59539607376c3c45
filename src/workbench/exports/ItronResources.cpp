#include "workbench/exports/ItronResources.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

#include "host/OSTraceService.h"
#include "host/TraceCodes.h"
#include "platform/base/Text.h"
#include "workbench/exports/ItronNames.h"
#include "workbench/exports/RunStack.h"

namespace kvx::exports {
namespace {

using Json = nlohmann::ordered_json;
using service::ContextKey;
using service::ContextKind;
using service::EventStore;
using service::Timeline;

const char* TypeOf(ContextKind kind) {
    switch (kind) {
        case ContextKind::Interrupt:
            return "InterruptHandler";
        case ContextKind::Exception:
            return "CPUExceptionHandler";
        case ContextKind::ServiceRoutine:
            return "InterruptServiceRoutine";
        case ContextKind::Cyclic:
            return "CyclicHandler";
        case ContextKind::Alarm:
            return "AlarmHandler";
        default:
            return "Task";
    }
}

class Resources {
  public:
    explicit Resources(const ExportRequest& request) : request_(request) {
        for (const auto* timeline : request.timelines) NotePlaces(*timeline);
    }

    Json Build() {
        const auto& recording = request_.decoded.GetRecording();
        Json json = {{"TimeScale", recording.Clock().UnitName()}, {"TimeRadix", "10"}};
        if (recording.GetKernel().Name() != kItronKernel)
            json["Kernel"] = recording.GetKernel().Name();
        for (const auto* timeline : request_.timelines)
            for (std::uint32_t i = 0; i < timeline->contexts.Count(); ++i) Add(*timeline, i);
        for (const auto* timeline : request_.timelines) AddRunning(*timeline);
        const auto priorities = Priorities();
        for (const auto& [named, name] : names_) {
            const auto at = priorities.find(named.first.id);
            if (named.first.kind == ContextKind::Task && at != priorities.end())
                resources_[name]["Attributes"]["pri"] = at->second;
        }
        json["Resources"] = std::move(resources_);
        return json;
    }

  private:
    // A context has one name, whatever processors know it.
    void Add(const Timeline& timeline, std::uint32_t number) {
        const service::Context& context = timeline.contexts.Get(number);
        if (context.IsIdle() || context.type == kContextUnknown) return;
        auto& name = NameOf(context);
        const bool isNew = name.empty();
        if (isNew) {
            name = context.name;
            if (!taken_.insert(name).second)
                taken_.insert(name += FormatText(" (%s)", ItronContext(context).c_str()));
        }
        Json& resource = resources_[name];
        if (isNew) resource["Type"] = TypeOf(context.key.kind);
        Json& attributes = resource["Attributes"];
        if (isNew) attributes["id"] = ItronNumber(context);
        if (isNew && name != context.name) attributes["name"] = context.name;
        const bool several = request_.decoded.Timelines().size() > 1;
        const auto place = places_.find(context.key);
        if (several && place != places_.end())
            attributes["prcId"] = place->second.second;
        else if (several && IsOnlyOn(timeline, number))
            attributes["prcId"] = timeline.processor;
        if (context.type == kContextTask) AddState(timeline, number, attributes);
    }

    // Where tasks ran last before the range.
    void NotePlaces(const Timeline& timeline) {
        const EventStore& events = timeline.events;
        for (const auto run : events.Dispatches(events.CountUntil(request_.start - 1))) {
            const service::Context& context = timeline.contexts.Get(events.Next(run));
            if (context.type != kContextTask || context.IsIdle()) continue;
            auto& place = places_[context.key];
            place = std::max(place, {events.Time(run), timeline.processor});
        }
    }

    std::string& NameOf(const service::Context& context) {
        return names_[{context.key, context.name}];
    }

    // The state that has not ended when the range begins.
    void AddState(const Timeline& timeline, std::uint32_t number, Json& attributes) const {
        const EventStore& events = timeline.events;
        const auto states = events.StatesOf(number, events.CountUntil(request_.start - 1));
        const bool several = request_.decoded.Timelines().size() > 1;
        if (states.count == 0) return;
        const auto state = states.events[states.count - 1];
        const auto end = events.EndEvent(state);
        const auto flags = events.Flags(state);
        if ((end != host::kOpenEnd && events.Time(end) < request_.start) ||
            (flags & host::kFlagPaused))
            return;
        const auto code = events.Code(state);
        const bool suspended = flags & host::kFlagSuspended;
        attributes["state"] = code == host::Code(host::StateCode::Ready)
                                  ? (suspended ? "SUSPENDED" : "RUNNABLE")
                              : code == host::Code(host::StateCode::Dormant) ? "DORMANT"
                              : suspended                                    ? "WAITING-SUSPENDED"
                                                                             : "WAITING";
        if (code >= host::Code(host::StateCode::Sleeping))
            attributes["wait"] = host::StateName(code);
        if (several) attributes["prcId"] = timeline.processor;
    }

    bool IsOnlyOn(const Timeline& timeline, std::uint32_t number) const {
        const service::Context& context = timeline.contexts.Get(number);
        return std::ranges::none_of(request_.timelines, [&](const Timeline* other) {
            if (other == &timeline) return false;
            for (std::uint32_t i = 0; i < other->contexts.Count(); ++i)
                if (other->contexts.Get(i).key == context.key &&
                    other->contexts.Get(i).name == context.name)
                    return true;
            return false;
        });
    }

    void AddRunning(const Timeline& timeline) {
        const RunStack stack(timeline, request_.start);
        const auto below = stack.Below();
        if (below == service::kNoContext || timeline.contexts.Get(below).type == kContextUnknown)
            return;
        const service::Context& context = timeline.contexts.Get(below);
        Json attributes = {{"name", context.IsIdle() ? "None" : NameOf(context)}};
        for (const auto handler : stack.Handlers())
            attributes["handlers"].push_back(NameOf(timeline.contexts.Get(handler)));
        const bool several = request_.decoded.Timelines().size() > 1;
        resources_[several ? FormatText("CurrentContext_PRC%u", timeline.processor)
                           : "CurrentContext"] = {{"Type", "Context"},
                                                  {"Attributes", std::move(attributes)}};
        if (several && !context.IsIdle())
            resources_[NameOf(context)]["Attributes"]["prcId"] = timeline.processor;
    }

    // Those of the start of the range, by task.
    std::map<std::uint64_t, std::int32_t> Priorities() const {
        std::map<std::uint64_t, std::int32_t> priorities;
        const auto& changes = request_.decoded.BasePriorities().Changes();
        for (std::uint32_t i = 0; i < changes.size(); ++i) {
            const auto& change = changes[i];
            const bool holds = change.record == service::kNoRecord || change.time < request_.start;
            if (holds && change.priority >= 0) priorities[change.task] = change.priority;
        }
        return priorities;
    }

    const ExportRequest& request_;
    Json resources_ = Json::object();
    // Of resources. Processors may have handlers of one number and different names.
    std::map<std::pair<ContextKey, std::string>, std::string> names_;
    std::set<std::string> taken_;
    std::map<ContextKey, std::pair<std::int64_t, std::uint32_t>> places_;  // time and processor
};

}  // namespace

void WriteItronResources(const ExportRequest& request, std::ostream& out) {
    out << Resources(request).Build().dump(1, ' ', false, Json::error_handler_t::replace) << '\n';
}

std::int64_t ItronOrigin(const ExportRequest& request) {
    const auto& recording = request.decoded.GetRecording();
    const auto origin = recording.TimeOrigin();
    const auto again =
        service::OriginOf(request.start + origin, request.end + origin, recording.Clock());
    return again == origin ? origin : 0;
}

std::string ItronCallName(const std::string& name, bool isItron) {
    const auto isOther = [](char c) {
        return !((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                 c == '_');
    };
    std::string text = name.empty() ? "_" : name;
    if (std::ranges::none_of(text, isOther)) return text;
    if (isItron) {
        std::ranges::replace_if(text, isOther, '_');
        return text;
    }
    std::ranges::replace_if(
        text, [](char c) { return c == '"' || (c >= 0 && c < ' '); }, '_');
    return '"' + text + '"';
}

}  // namespace kvx::exports
