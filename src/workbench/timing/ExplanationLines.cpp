#include "workbench/timing/ExplanationLines.h"

#include <algorithm>
#include <functional>
#include <span>

#include "workbench/timing/Sentence.h"
#include "workbench/timing/Times.h"

namespace kvx::timing {
namespace {

// A run of a handler ends in nothing.
std::string EndOf(const Job& job) {
    if (!job.end) return "is cut";
    if (job.endsIn == kEndUnknown) return "ends";
    return "ends in " + std::string(CauseName(job.endsIn));
}

bool IsSameWait(const Part& one, const Part& other) {
    return one.kind == PartKind::Blocked && other.kind == one.kind && one.cause == other.cause &&
           one.object == other.object;
}

class LineWriter {
  public:
    explicit LineWriter(const Model& model) : model_(model) {}

    std::vector<ExplanationLine> Write(const Explanation& explanation) {
        const auto& parts = explanation.parts;
        for (std::size_t first = 0; first < parts.size();) {
            auto end = first + 1;
            while (end < parts.size() && IsSameWait(parts[first], parts[end])) ++end;
            AddParts(std::span(parts).subspan(first, end - first));
            first = end;
        }
        const Job& job = explanation.job;
        const std::string end = EndOf(job);
        lines_.push_back({At(job.seen.end), "", end, false, job.seen.end, job.seen.end});
        return std::move(lines_);
    }

  private:
    std::string Time(std::int64_t count) const {
        return TimeText(count, model_.Recording().Clock());
    }
    std::string At(std::int64_t count) const { return model_.Recording().Clock().Format(count); }
    std::string Name(ContextId id) const { return model_.AllContexts().NameOf(id); }

    void AddParts(std::span<const Part> parts) {
        std::vector<std::pair<std::string, std::int64_t>> meanwhile;
        for (const Part& part : parts) {
            const auto text = ChainText(part);
            const auto at =
                std::ranges::find(meanwhile, text, [](const auto& row) { return row.first; });
            if (at == meanwhile.end())
                meanwhile.emplace_back(text, part.Time());
            else
                at->second += part.Time();
        }
        const std::int64_t start = parts.front().start;
        const std::int64_t end = parts.back().end;
        lines_.push_back({At(start), Time(end - start), TextOf(parts.front()), false, start, end});
        std::ranges::stable_sort(meanwhile, std::ranges::greater(),
                                 [](const auto& row) { return row.second; });
        for (const auto& [text, time] : meanwhile)
            if (!text.empty()) lines_.push_back({"", Time(time), text, true, start, end});
    }

    std::string TextOf(const Part& part) const {
        const std::string by = part.by == kNobody ? "" : Name(part.by);
        switch (part.kind) {
            case PartKind::Runs:
                return "runs";
            case PartKind::WaitsToStart:
                return by.empty() ? "waits to start" : "waits to start while " + by + " runs";
            case PartKind::Preempted:
                return by.empty() ? "is ready while nobody runs" : "is preempted by " + by;
            case PartKind::Interrupted:
                return "is interrupted by " + by;
            case PartKind::Blocked:
                return "is blocked on " + WaitName(model_, part.object, part.cause);
            case PartKind::Suspended:
                return "is suspended";
            case PartKind::Unknown:
                break;
        }
        return "is not told of";
    }

    // What the holders do meanwhile; empty: nobody holds it.
    std::string ChainText(const Part& part) const {
        std::string text;
        for (const HolderLink& link : part.chain) {
            text += (text.empty() ? "held by " : ", held by ") + Name(link.context) + ", which ";
            if (link.doing == Doing::Waits)
                text += "is blocked on " + WaitName(model_, link.object, link.cause);
            else if (link.suspended)
                text += "is suspended";
            else if (link.doing == Doing::Runs)
                text += "runs";
            else if (link.doing == Doing::Ready || link.doing == Doing::Interrupted)
                text +=
                    link.by == kNobody ? "is ready" : "is ready while " + Name(link.by) + " runs";
            else
                text += link.doing == Doing::Dormant ? "is dormant" : "is not told of";
        }
        if (part.deadlock) text += ": deadlock";
        if (part.inversion) text += ": priority inversion";
        return text;
    }

    const Model& model_;
    std::vector<ExplanationLine> lines_;
};

}  // namespace

std::vector<ExplanationLine> LinesOf(const Model& model, const Explanation& explanation) {
    return LineWriter(model).Write(explanation);
}

std::string StarterSentence(const Model& model, const Job& job) {
    if (job.startedBy.context == kNobody) return {};
    std::string text = "Started by " + model.AllContexts().NameOf(job.startedBy.context);
    if (job.startedByJob) text += " job " + std::to_string(job.startedByJob);
    const auto call = model.CallName(job.startedBy.call);
    if (!call.empty()) text += " in " + call;
    return text + " at " + model.Recording().Clock().Format(job.seen.start) + ".";
}

}  // namespace kvx::timing
