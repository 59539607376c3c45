#include "workbench/cli/TimingJson.h"

#include <cmath>

#include "workbench/timing/Sentence.h"

namespace kvx::cli {
namespace {

using timing::Doing;
using timing::HolderLink;
using timing::Model;
using timing::Part;

Json ObjectOf(const Model& model, timing::ObjectId object, std::uint8_t cause) {
    return timing::WaitName(model, object, cause);
}

const char* DoingName(const HolderLink& link) {
    if (link.doing == Doing::Waits) return "blocked";
    if (link.suspended) return "suspended";
    switch (link.doing) {
        case Doing::Runs:
            return "runs";
        case Doing::Interrupted:
            return "interrupted";
        case Doing::Ready:
            return "ready";
        case Doing::Dormant:
            return "dormant";
        default:
            return "unknown";
    }
}

Json JsonOfLink(const Model& model, const HolderLink& link) {
    Json json;
    json["context"] = JsonOfContext(model, link.context);
    json["does"] = DoingName(link);
    json["by"] = JsonOfContext(model, link.by);
    const bool waits = link.doing == Doing::Waits;
    json["object"] = waits ? ObjectOf(model, link.object, link.cause) : Json(nullptr);
    return json;
}

Json JsonOfPart(const Model& model, const Part& part) {
    const bool waits = part.kind == timing::PartKind::Blocked || part.object != timing::kNoObject;
    Json json;
    json["kind"] = timing::PartKindName(part.kind);
    json["by"] = JsonOfContext(model, part.by);
    json["object"] = waits ? ObjectOf(model, part.object, part.cause) : Json(nullptr);
    json["holder"] =
        part.chain.empty() ? Json(nullptr) : JsonOfContext(model, part.chain.front().context);
    json["chain"] = Json::array();
    for (const HolderLink& link : part.chain) json["chain"].push_back(JsonOfLink(model, link));
    json["deadlock"] = part.deadlock;
    json["start"] = part.start;
    json["end"] = part.end;
    json["time"] = part.Time();
    return json;
}

// Whole numbers without a point.
Json NumberOf(const std::optional<double>& value) {
    if (!value) return nullptr;
    const bool whole = std::nearbyint(*value) == *value && std::abs(*value) < 9e15;
    return whole ? Json(static_cast<std::int64_t>(*value)) : Json(*value);
}

}  // namespace

Json JsonOfContext(const Model& model, timing::ContextId id) {
    return id == timing::kNobody ? Json(nullptr) : Json(model.AllContexts().NameOf(id));
}

Json JsonOfParts(const Model& model, const timing::Explanation& explanation) {
    Json parts = Json::array();
    for (const Part& part : explanation.parts) parts.push_back(JsonOfPart(model, part));
    return parts;
}

Json JsonOfStarter(const Model& model, const timing::Job& job) {
    if (job.startedBy.context == timing::kNobody) return nullptr;
    const auto call = model.CallName(job.startedBy.call);
    Json json;
    json["context"] = JsonOfContext(model, job.startedBy.context);
    json["call"] = call.empty() ? Json(nullptr) : Json(call);
    json["job"] = job.startedByJob == 0 ? Json(nullptr) : Json(job.startedByJob);
    return json;
}

Json JsonOfFinding(const Model& model, const timing::Finding& finding) {
    Json json;
    json["kind"] = timing::FindingKindName(finding.kind);
    json["rule"] = finding.rule.empty() ? Json(nullptr) : Json(finding.rule);
    json["severity"] = timing::SeverityName(finding.severity);
    json["contexts"] = Json::array();
    for (const auto id : finding.contexts) json["contexts"].push_back(JsonOfContext(model, id));
    json["cpu"] = finding.timeline ? Json(model.ProcessorOf(*finding.timeline)) : Json(nullptr);
    json["start"] = finding.start;
    json["end"] = finding.end;
    json["measured"] = NumberOf(finding.measured);
    json["limit"] = NumberOf(finding.limit);
    json["sentence"] = finding.sentence;
    json["evidence"] = Json::array();
    for (const auto& at : finding.evidence) {
        const auto& events = model.Decoded().Timelines()[at.timeline]->events;
        json["evidence"].push_back({{"event", at.event},
                                    {"time", events.Time(at.event)},
                                    {"cpu", model.ProcessorOf(at.timeline)}});
    }
    return json;
}

std::string Dump(const Json& json, int indent) {
    return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

}  // namespace kvx::cli
