// What the brute-force model counted, as rows of the tables.

#include <algorithm>

#include "timing/BruteForce.h"

namespace kvx::test {

using nlohmann::json;

nlohmann::json BruteForce::RowOf(const std::string& task, const Job& job,
                                 std::size_t number) const {
    const auto orNull = [](const std::optional<long long>& value) {
        return value ? json(*value) : json(nullptr);
    };
    long long cet = 0, ready = 0, suspended = 0, blocked = 0;
    for (const Slot& slot : slots_) {
        if (slot.from < job.from || slot.to > job.to || !slot.tasks.contains(task)) continue;
        const Now& now = slot.tasks.at(task);
        const auto time = slot.to - slot.from;
        if (now.suspended) suspended += time;
        if (now.doing == "runs") cet += time;
        if ((now.doing == "ready" || now.doing == "interrupted") && !now.suspended) ready += time;
        if (now.doing == "waits" || now.suspended) blocked += time;
    }
    json row = {{"task", task},
                {"job", number},
                {"activation", orNull(job.activation)},
                {"start", orNull(job.start)},
                {"end", orNull(job.end)},
                {"cut", job.IsCut()}};
    row["ends_in"] = job.endsIn.empty() ? json(nullptr) : json(job.endsIn);
    row["started_by"] = job.starter.empty()
                            ? json(nullptr)
                            : json({{"context", job.starter}, {"call", job.starterCall}});
    const bool whole = !job.IsCut();
    row["rt"] = job.activation && job.end ? json(*job.end - *job.activation) : json(nullptr);
    row["ipt"] = job.activation && job.start ? json(*job.start - *job.activation) : json(nullptr);
    row["cet"] = whole ? json(cet) : json(nullptr);
    row["ready"] = whole ? json(ready) : json(nullptr);
    row["blocked"] = whole ? json(blocked) : json(nullptr);
    row["preemptions"] = whole ? json(job.preemptions) : json(nullptr);
    row["suspended"] = whole ? json(suspended) : json(nullptr);
    return row;
}

json BruteForce::JobRows() const {
    json rows = json::array();
    for (const auto& [task, jobs] : jobs_)
        for (std::size_t i = 0; i < jobs.size(); ++i) rows.push_back(RowOf(task, jobs[i], i + 1));
    return rows;
}

json BruteForce::WaitRows() const {
    json rows = json::array();
    for (const auto& [key, sum] : waits_) {
        const auto& [task, cause, object] = key;
        json by = json::array();
        for (const auto& [who, count] : sum.by)
            by.push_back({{"context", who.first.empty() ? json(nullptr) : json(who.first)},
                          {"call", who.second.empty() ? json(nullptr) : json(who.second)},
                          {"count", count}});
        rows.push_back({{"task", task},
                        {"cause", cause},
                        {"object", object.empty() ? json(nullptr)
                                                  : json(object.substr(object.rfind(' ') + 1))},
                        {"count", sum.count},
                        {"total", sum.total},
                        {"max", sum.max},
                        {"max_at", sum.maxAt},
                        {"released_by", by}});
    }
    return rows;
}

json BruteForce::LockRows() const {
    json rows = json::array();
    for (const auto& object : locks_) {
        const auto at = lockSums_.find(object);
        if (at == lockSums_.end()) continue;
        const LockSum& sum = at->second;
        if (sum.takes == 0 && sum.holds == 0 && !sum.waitMax) continue;
        rows.push_back(
            {{"object", object.substr(object.rfind(' ') + 1)},
             {"kind", object.substr(0, object.rfind(' '))},
             {"takes", sum.takes},
             {"contended", sum.contended},
             {"hold", sum.holds == 0 ? json(nullptr)
                                     : json({{"min", sum.min},
                                             {"max", sum.max},
                                             {"avg", static_cast<double>(sum.total) /
                                                         static_cast<double>(sum.holds)}})},
             {"longest_holder", sum.holds == 0 ? json(nullptr) : json(sum.longest)},
             {"wait_max", sum.waitMax ? json(*sum.waitMax) : json(nullptr)},
             {"wait_max_at", sum.waitMax ? json(sum.waitMaxAt) : json(nullptr)}});
    }
    return rows;
}

}  // namespace kvx::test
