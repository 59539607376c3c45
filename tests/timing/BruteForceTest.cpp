// Random recordings of one to three processors: jobs, waits, locks and parts of explanations agree
// with those that are counted from the list of events, to the count.

#include <algorithm>
#include <limits>
#include <random>

#include "timing/BruteForce.h"
#include "timing/RandomKernel.h"
#include "timing/TimingRun.h"
#include "workbench/formats/OpenRecording.h"
#include "workbench/timing/Explanation.h"

namespace kvx::test {
namespace {

using nlohmann::json;

// The sanitizers make each about ten times as long.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr unsigned kRecordings = 500;
#else
constexpr unsigned kRecordings = 2000;
#endif
constexpr int kSteps = 300;

// Only the keys that both know.
json Reduced(const json& rows, const json& like) {
    json reduced = json::array();
    for (const json& row : rows) {
        json kept;
        for (const auto& [key, value] : row.items())
            if (like.empty() || like[0].contains(key)) kept[key] = value;
        reduced.push_back(kept);
    }
    return reduced;
}

// Rows in whatever order.
json Sorted(json rows) {
    for (json& row : rows)
        if (row.contains("released_by"))
            std::sort(row["released_by"].begin(), row["released_by"].end());
    std::sort(rows.begin(), rows.end());
    return rows;
}

json TasksOnly(const json& rows) {
    json tasks = json::array();
    for (const json& row : rows)
        if (row["task"].get<std::string>().starts_with("T")) tasks.push_back(row);
    return tasks;
}

// What the recordings showed, all together.
struct Seen {
    long long complete = 0, cut = 0, preempted = 0, suspended = 0, blocked = 0, startedByTasks = 0;
    long long contended = 0, inferred = 0, chains = 0, deadlocks = 0;
};

class Recording {
  public:
    explicit Recording(unsigned seed)
        : kernel_(seed, 3 + static_cast<int>(seed % 4), 1 + static_cast<int>(seed / 2 % 3)),
          run_(kernel_.Run(kSteps), kernel_.Priorities()),
          brute_(Events(), run_.Json("info")["last_time"].get<long long>()) {}

    void CompareTables(Seen& seen) {
        const json jobs = brute_.JobRows();
        for (const json& job : jobs) {
            ++(job["cut"] ? seen.cut : seen.complete);
            if (job["cut"]) continue;
            seen.preempted += job["preemptions"] > 0;
            seen.suspended += job["suspended"] > 0;
            seen.blocked += job["blocked"] > job["suspended"];
            const auto& by = job["started_by"];
            seen.startedByTasks +=
                !by.is_null() && by["context"].get<std::string>().starts_with('T');
        }
        EXPECT_EQ(Sorted(Reduced(TasksOnly(run_.Table("jobs")), jobs)), Sorted(jobs));
        const json waits = brute_.WaitRows();
        EXPECT_EQ(Sorted(Reduced(run_.Table("waits"), waits)), Sorted(waits));
        const json locks = brute_.LockRows();
        for (const json& lock : locks) {
            seen.contended += lock["contended"].get<long long>();
            seen.inferred += lock["kind"] == "semaphore";
        }
        EXPECT_EQ(Sorted(Reduced(run_.Table("locks"), locks)), Sorted(locks));
    }

    // The longest job of every task, and one that is cut.
    void CompareExplanations(Seen& seen) {
        for (const auto& [task, jobs] : brute_.Jobs()) {
            bool complete = false;
            for (const auto& job : jobs) complete |= !job.IsCut();
            if (complete) CompareParts(run_.Json("explain", {"--task", task}), jobs, seen);
            CompareParts(
                run_.Json("explain", {"--task", task, "--job", std::to_string(jobs.size())}), jobs,
                seen);
        }
    }

  private:
    std::string Events() {
        EXPECT_EQ(run_.Run("events"), 0);
        return run_.Out();
    }

    void CompareParts(const json& explained, const std::vector<BruteForce::Job>& jobs,
                      Seen& seen) const {
        const auto number = explained["job"].get<std::size_t>();
        const auto& job = jobs.at(number - 1);
        const auto& parts = explained["parts"];
        long long at = job.from;
        for (const json& part : parts) {
            EXPECT_EQ(part["start"], at) << "parts follow each other";
            at = part["end"];
            seen.chains += part["chain"].size() > 1;
            seen.deadlocks += part["deadlock"].get<bool>();
        }
        EXPECT_EQ(at, job.to);
        if (!job.IsCut()) {
            EXPECT_EQ(explained["response"], at - job.from);
        }
        std::size_t part = 0;
        for (const auto& slot : brute_.Slots()) {
            if (slot.from < job.from || slot.to > job.to) continue;
            while (part < parts.size() && parts[part]["end"] <= slot.from) ++part;
            ASSERT_LT(part, parts.size());
            const json expected = Expected(explained["task"], job, slot);
            json found;
            for (const char* key : {"kind", "by", "object", "holder", "deadlock"})
                found[key] = parts[part][key];
            EXPECT_EQ(found, expected)
                << explained["task"] << " job " << number << " at " << slot.from;
        }
    }

    static json Name(const std::string& name) {
        return name.empty() || name == "Idle" || name == "Unknown" ? json(nullptr) : json(name);
    }

    json Expected(const std::string& task, const BruteForce::Job& job,
                  const BruteForce::Slot& slot) const {
        const auto& now = slot.tasks.at(task);
        json part = {{"kind", "unknown"},
                     {"by", nullptr},
                     {"object", nullptr},
                     {"holder", nullptr},
                     {"deadlock", false}};
        const auto current = [&](const std::string& cpu) {
            const auto name = slot.current.contains(cpu) ? slot.current.at(cpu) : std::string();
            return name;
        };
        if (now.doing == "runs") part["kind"] = "runs";
        if (now.doing == "ready" || now.doing == "interrupted") {
            const auto by = current(now.cpu);
            const bool started = !job.activation || (job.start && *job.start <= slot.from);
            part["kind"] = !started                        ? "waits_to_start"
                           : by.starts_with("int handler") ? "interrupted"
                                                           : "preempted";
            part["by"] = by == task ? json(nullptr) : Name(by);
            if (now.suspended) part["by"] = nullptr;
        }
        if (now.doing == "waits") {
            part["kind"] = "blocked";
            part["object"] = now.object.empty() ? now.cause : now.object;
            Follow(task, slot, part);
        }
        if (now.suspended) part["kind"] = "suspended";
        return part;
    }

    // The holders, one after the other.
    void Follow(const std::string& task, const BruteForce::Slot& slot, json& part) const {
        std::set<std::string> seen = {task};
        std::string object = slot.tasks.at(task).object;
        while (brute_.IsLock(object)) {
            const auto holder =
                slot.holders.contains(object) ? slot.holders.at(object) : std::string();
            if (holder.empty()) return;
            if (!seen.insert(holder).second) {
                part["deadlock"] = true;
                return;
            }
            if (seen.size() == 2) part["holder"] = holder;
            const auto& now = slot.tasks.at(holder);
            const bool ready = now.doing == "ready" || now.doing == "interrupted";
            if (ready && !now.suspended && slot.current.contains(now.cpu)) {
                const auto by = slot.current.at(now.cpu);
                if (by != holder) part["by"] = Name(by);
            }
            if (now.doing != "waits") return;
            object = now.object;
        }
    }

    RandomKernel kernel_;
    TimingRun run_;
    BruteForce brute_;
};

TEST(TimingModel, AgreesWithTheListOfEvents) {
    Seen seen;
    for (unsigned seed = 1; seed <= kRecordings && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Recording recording(seed);
        recording.CompareTables(seen);
        if (seed % 3 == 0) recording.CompareExplanations(seen);
    }
    for (const auto& [what, count] : {std::pair("complete jobs", seen.complete),
                                      {"cut jobs", seen.cut},
                                      {"preempted jobs", seen.preempted},
                                      {"suspended jobs", seen.suspended},
                                      {"blocked jobs", seen.blocked},
                                      {"jobs started by tasks", seen.startedByTasks},
                                      {"contended locks", seen.contended},
                                      {"inferred locks", seen.inferred},
                                      {"chains of locks", seen.chains},
                                      {"deadlocks", seen.deadlocks}}) {
        RecordProperty(what, std::to_string(count));
        EXPECT_GT(count, static_cast<long long>(kRecordings / 40))
            << what << ": the recordings hardly show any";
    }
}

// Lines of a log that are lost or stand where they do not belong.
std::string Disordered(const std::string& log, unsigned seed) {
    std::mt19937 random(seed);
    std::istringstream lines(log);
    std::vector<std::string> kept;
    for (std::string line; std::getline(lines, line);) {
        if (random() % 12 == 0) continue;
        const auto back = random() % 12 == 0 ? random() % 5 : 0;
        kept.insert(
            kept.end() - static_cast<std::ptrdiff_t>(std::min<std::size_t>(back, kept.size())),
            line);
    }
    std::string text;
    for (const auto& line : kept) text += line + "\n";
    return text;
}

TEST(TimingModel, SumsHoldWhateverTheLog) {
    long long complete = 0;
    for (unsigned seed = 1; seed <= 400 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomKernel kernel(seed, 5, 1 + static_cast<int>(seed % 3));
        TimingRun run(Disordered(kernel.Run(kSteps), seed), kernel.Priorities());
        for (const json& job : run.Table("jobs")) {
            if (job["cut"]) continue;
            ++complete;
            EXPECT_EQ(job["rt"], job["cet"].get<long long>() + job["ready"].get<long long>() +
                                     job["blocked"].get<long long>());
            for (const char* key : {"rt", "cet", "ready", "blocked", "suspended", "preemptions"})
                EXPECT_GE(job[key], 0) << job;
            EXPECT_LE(job["suspended"], job["blocked"]) << job;
        }
        EXPECT_EQ(run.Json("check")["schema"], 1);
    }
    EXPECT_GT(complete, 500);
}

// A job is explained from a place near it, of which there are few: here after every fifth event.
TEST(TimingModel, ExplainsAsFromTheStart) {
    std::size_t parts = 0;
    for (unsigned seed = 1; seed <= 40 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomKernel kernel(seed, 5, 1 + static_cast<int>(seed % 3));
        const TimingRun run(kernel.Run(kSteps), kernel.Priorities());
        const service::DecodedRecording decoded(std::move(*formats::OpenRecording(run.Path())));
        const timing::Model near(decoded, {}, 5);
        const timing::Model far(decoded, {}, std::numeric_limits<std::size_t>::max());
        for (timing::ContextId id = 0; id < far.AllContexts().Count(); ++id)
            for (std::size_t job = 0; job < far.AllJobs().CountOf(id); ++job) {
                const auto here = timing::Explain(near, id, job).parts;
                const auto there = timing::Explain(far, id, job).parts;
                parts += there.size();
                EXPECT_TRUE(std::ranges::equal(here, there,
                                               [](const auto& a, const auto& b) {
                                                   return a.IsLike(b) && a.start == b.start &&
                                                          a.end == b.end;
                                               }))
                    << id << " job " << job;
            }
    }
    EXPECT_GT(parts, 2000u);
}

}  // namespace
}  // namespace kvx::test
