#include "workbench/timing/Sentence.h"

#include <algorithm>
#include <map>
#include <utility>

#include "workbench/timing/Times.h"

namespace kvx::timing {
namespace {

// How much of a job went the same way.
struct Share {
    std::int64_t time = 0;
    std::string text;
    bool hasTail = false;  // what would follow would seem to speak of the holder
};

using TimeByContext = std::map<ContextId, std::int64_t>;

class SentenceWriter {
  public:
    SentenceWriter(const Model& model, const Explanation& explanation)
        : model_(model), explanation_(explanation) {}

    std::string Write(std::optional<std::int64_t> deadline) {
        const Job& job = explanation_.job;
        const auto total = job.seen.end - job.seen.start;
        auto shares = Shares();
        std::ranges::stable_sort(
            shares, {}, [](const Share& share) { return std::pair(share.hasTail, share.time); });
        std::erase_if(shares, [&](const Share& share) { return share.time * 20 < total; });
        std::string text = JobName(model_, explanation_.context, job.number);
        if (const auto response = job.Response())
            text += " took " + Time(*response);
        else
            text += " is not complete in the recording, which shows " + Time(total) + " of it";
        if (deadline) text += " (deadline " + ExactTimeText(*deadline, Clock()) + ")";
        text += ": it ran " + Time(TimeOf(PartKind::Runs));
        for (std::size_t i = 0; i < shares.size(); ++i)
            text += (i + 1 == shares.size() ? " and " : ", ") + shares[i].text;
        return text + ".";
    }

  private:
    const service::TraceClock& Clock() const { return model_.Recording().Clock(); }
    std::string Time(std::int64_t count) const { return TimeText(count, Clock()); }
    std::string Name(ContextId id) const { return model_.AllContexts().NameOf(id); }

    std::int64_t TimeOf(PartKind kind) const {
        std::int64_t time = 0;
        for (const Part& part : explanation_.parts)
            if (part.kind == kind) time += part.Time();
        return time;
    }

    std::vector<Share> Shares() const {
        std::vector<Share> shares;
        AddKept(PartKind::WaitsToStart, "waited ", " to start", " while ", " ran", shares);
        AddKept(PartKind::Preempted, "was preempted for ", "", " by ", "", shares);
        AddKept(PartKind::Interrupted, "was interrupted for ", "", " by ", "", shares);
        AddPlain(PartKind::Suspended, "was suspended for ", "", shares);
        AddPlain(PartKind::Unknown, "did for ", " what the recording does not tell", shares);
        std::vector<std::pair<ObjectId, std::uint8_t>> seen;
        for (const Part& part : explanation_.parts) {
            const std::pair key(part.object, part.cause);
            if (part.kind != PartKind::Blocked || std::ranges::count(seen, key)) continue;
            seen.push_back(key);
            AddBlocked(part, shares);
        }
        return shares;
    }

    void AddPlain(PartKind kind, const char* verb, const char* after,
                  std::vector<Share>& shares) const {
        if (const auto time = TimeOf(kind); time > 0)
            shares.push_back({time, verb + Time(time) + after, false});
    }

    void AddKept(PartKind kind, const char* verb, const char* after, const char* joint,
                 const char* end, std::vector<Share>& shares) const {
        TimeByContext by;
        for (const Part& part : explanation_.parts)
            if (part.kind == kind) by[part.by] += part.Time();
        const auto time = TimeOf(kind);
        if (time == 0) return;
        const auto names = Names(by, time);
        shares.push_back(
            {time, verb + Time(time) + after + (names.empty() ? "" : joint + names + end)});
    }

    // Those that count, the longest first.
    std::string Names(const TimeByContext& by, std::int64_t total) const {
        std::vector<std::pair<std::int64_t, ContextId>> order;
        for (const auto& [context, time] : by)
            if (context != kNobody && time * 10 >= total) order.emplace_back(-time, context);
        std::ranges::sort(order);
        if (order.size() > 3) order.resize(3);
        std::string text;
        for (std::size_t i = 0; i < order.size(); ++i)
            text += (i == 0 ? "" : i + 1 == order.size() ? " and " : ", ") + Name(order[i].second);
        return text;
    }

    // What the holder did is told of the holder that kept the job longest.
    void AddBlocked(const Part& like, std::vector<Share>& shares) const {
        std::int64_t time = 0;
        TimeByContext holders;
        bool inversion = false;
        bool deadlock = false;
        for (const Part& part : explanation_.parts) {
            if (part.kind != PartKind::Blocked || part.object != like.object ||
                part.cause != like.cause)
                continue;
            time += part.Time();
            inversion |= part.inversion;
            deadlock |= part.deadlock;
            if (!part.chain.empty()) holders[part.chain.front().context] += part.Time();
        }
        std::string text =
            like.object == kNoObject
                ? "waited " + Time(time) + " in " + std::string(CauseName(like.cause))
                : "was blocked " + Time(time) + " on " + WaitName(model_, like.object, like.cause);
        if (!holders.empty()) {
            const auto holder = std::ranges::max_element(holders, {}, [](const auto& entry) {
                                    return entry.second;
                                })->first;
            text += " held by " + Name(holder) + HolderText(like, holder, time);
        }
        if (deadlock) text += ": deadlock";
        if (inversion) text += ": priority inversion";
        shares.push_back({time, std::move(text), !holders.empty()});
    }

    // What the end of the chain behind that holder mostly did other than run.
    std::string HolderText(const Part& like, ContextId holder, std::int64_t total) const {
        std::map<std::string, std::int64_t> times;
        for (const Part& part : explanation_.parts) {
            const bool same = part.kind == PartKind::Blocked && part.object == like.object &&
                              !part.chain.empty() && part.chain.front().context == holder;
            if (same) times[LinkText(part)] += part.Time();
        }
        times.erase("");
        if (times.empty()) return {};
        const auto most =
            std::ranges::max_element(times, {}, [](const auto& entry) { return entry.second; });
        if (most->second * 20 < total) return {};
        auto text = most->first;
        const auto at = text.find('#');
        return ", which itself " + text.replace(at, 1, Time(most->second));
    }

    // With # for the time.
    std::string LinkText(const Part& part) const {
        const HolderLink& first = part.chain.front();
        if (first.doing == Doing::Waits) {
            std::string text =
                first.object == kNoObject
                    ? "waited for # in " + std::string(CauseName(first.cause))
                    : "was blocked for # on " + WaitName(model_, first.object, first.cause);
            if (part.chain.size() > 1) text += " held by " + Name(part.chain[1].context);
            return text;
        }
        if (first.suspended) return "was suspended for #";
        const bool ready = first.doing == Doing::Ready || first.doing == Doing::Interrupted;
        if (!ready) return {};
        return "stood ready for #" +
               (first.by == kNobody ? "" : " while " + Name(first.by) + " ran");
    }

    const Model& model_;
    const Explanation& explanation_;
};

}  // namespace

std::string SentenceOf(const Model& model, const Explanation& explanation,
                       std::optional<std::int64_t> deadline) {
    return SentenceWriter(model, explanation).Write(deadline);
}

std::string JobName(const Model& model, ContextId context, std::uint32_t number) {
    return model.AllContexts().NameOf(context) + " job " + std::to_string(number);
}

std::string WaitName(const Model& model, ObjectId object, std::uint8_t cause) {
    if (object != kNoObject) return model.Facts().AllObjects().Get(object).Name();
    return std::string(CauseName(cause));
}

}  // namespace kvx::timing
