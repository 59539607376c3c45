#include "timing/BruteForce.h"

#include <algorithm>
#include <sstream>
#include <tuple>

namespace kvx::test {

using nlohmann::json;

namespace {

bool IsTask(const std::string& name) {
    return name.starts_with("T");
}
bool IsHandler(const std::string& name) {
    return name.starts_with("int handler");
}
bool IsMutex(const std::string& object) {
    return object.starts_with("mutex");
}

std::string NameOfCall(const std::string& detail) {
    return detail.substr(0, detail.find('('));
}
// "0" of "... -> ercd=0"; empty: no return.
std::string ResultOf(const std::string& detail) {
    const auto at = detail.find("-> ercd=");
    return at == std::string::npos ? "" : detail.substr(at + 8);
}
bool Succeeds(const std::string& detail) {
    const auto result = ResultOf(detail);
    return !result.empty() && result[0] != '-';
}
bool Fails(const std::string& detail) {
    return ResultOf(detail).starts_with("-");
}
// "semaphore 1" of "wai_sem(semid=1) ..."
std::string ObjectOf(const std::string& detail) {
    for (const auto& [key, name] :
         {std::pair("semid=", "semaphore "), {"mtxid=", "mutex "}, {"dtqid=", "data queue "}}) {
        const auto at = detail.find(key);
        if (at != std::string::npos) return name + detail.substr(at + 6, 1);
    }
    return "";
}

}  // namespace

BruteForce::BruteForce(const std::string& events, long long end) : end_(end) {
    Read(events);
    Pass();
    for (const auto& [object, use] : uses_) {
        const bool semaphore = object.starts_with("semaphore");
        const bool lock = IsMutex(object) || (semaphore && use.taken && !use.wrong &&
                                              (use.giver.empty() || use.again));
        if (!lock) continue;
        locks_.insert(object);
        if (use.again) heldAtStart_[object] = use.giver;
    }
    counts_ = true;
    Pass();
}

void BruteForce::Read(const std::string& events) {
    std::istringstream lines(events);
    std::string line;
    std::getline(lines, line);
    std::map<std::string, std::size_t> lastCall;
    while (std::getline(lines, line)) {
        std::istringstream cells(line);
        Row row;
        std::string cell;
        std::getline(cells, cell, '\t');
        std::getline(cells, cell, '\t');
        row.time = std::stoll(cell);
        std::getline(cells, row.kind, '\t');
        std::getline(cells, row.context, '\t');
        std::getline(cells, row.detail, '\t');
        std::getline(cells, row.cpu, '\t');
        if (row.kind == "syscall") lastCall[row.context] = rows_.size();
        if (row.kind == "state" && row.detail.starts_with("WAI") && lastCall.contains(row.context))
            rows_[lastCall[row.context]].waits = true;
        rows_.push_back(row);
    }
}

void BruteForce::Pass() {
    time_ = rows_.front().time;
    now_.clear();
    current_.clear();
    below_.clear();
    handlers_.clear();
    holder_ = heldAtStart_;
    uses_.clear();
    jobs_.clear();
    open_.clear();
    Start();
    const auto pass = [&](long long to) {
        if (to <= time_) return;
        if (counts_) slots_.push_back({time_, to, now_, current_, holder_});
        time_ = to;
    };
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        pass(rows_[i].time);
        if (rows_[i].kind == "dispatch") Dispatch(rows_[i]);
        if (rows_[i].kind == "state") State(i);
        if (rows_[i].kind == "syscall") Call(rows_[i]);
    }
    pass(end_);
    for (auto& [task, jobs] : jobs_)
        if (open_[task]) jobs.back().to = end_;
    if (!counts_) return;
    std::set<std::string> cpus;
    for (const Row& row : rows_) cpus.insert(row.cpu);
    for (const auto& cpu : cpus) CountPreemptions(cpu);
}

void BruteForce::Start() {
    std::set<std::string> seen;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const Row& row = rows_[i];
        if (row.kind != "dispatch" || !seen.insert(row.cpu).second) continue;
        current_[row.cpu] = row.context;
        if (IsHandler(row.context)) handlers_[row.cpu] = {row.context};
        if (!IsTask(row.context)) continue;
        below_[row.cpu] = row.context;
        Now now;
        now.doing = "runs";
        now.cpu = row.cpu;
        Set(row.context, now, i);
    }
}

void BruteForce::Dispatch(const Row& row) {
    const auto at = static_cast<std::size_t>(&row - rows_.data());
    const std::string to = row.detail;
    current_[row.cpu] = to;
    auto& stack = handlers_[row.cpu];
    if (IsHandler(to)) {
        const auto known = std::ranges::find(stack, to);
        if (known != stack.end()) {
            stack.erase(known + 1, stack.end());
            return;
        }
        const auto below = below_[row.cpu];
        if (stack.empty() && !below.empty() && now_[below].doing == "runs") {
            Now now = now_[below];
            now.doing = "interrupted";
            Set(below, now, at);
        }
        stack.push_back(to);
        return;
    }
    stack.clear();
    const auto left = below_[row.cpu];
    below_[row.cpu] = IsTask(to) ? to : "";
    if (!left.empty() && left != to &&
        (now_[left].doing == "runs" || now_[left].doing == "interrupted")) {
        Now now;
        now.unseen = false;
        now.cpu = now_[left].cpu;
        Set(left, now, at);
    }
    if (!IsTask(to)) return;
    Now now;
    now.doing = "runs";
    now.unseen = now_[to].doing == "unknown" && (now_[to].unseen || since_[to] < row.time);
    now.cpu = row.cpu;
    Set(to, now, at);
}

void BruteForce::State(std::size_t at) {
    const Row& row = rows_[at];
    if (row.detail.find("PAUSE") != std::string::npos || !IsTask(row.context)) return;
    const Now before = now_[row.context];
    Now now;
    now.cpu = row.cpu;
    now.suspended = row.detail.find("+SUS") != std::string::npos;
    now.unseen = before.doing == "unknown" && (before.unseen || since_[row.context] < row.time);
    if (row.detail.starts_with("RDY")) now.doing = "ready";
    if (row.detail.starts_with("DMT")) now.doing = "dormant";
    if (row.detail.starts_with("WAI")) {
        now.doing = "waits";
        now.cause = row.detail.substr(5, row.detail.find(')') - 5);
        now.wait = at;
        for (std::size_t i = at; i-- > 0;)
            if (rows_[i].kind == "syscall" && rows_[i].context == row.context) {
                now.object = ObjectOf(rows_[i].detail);
                now.call = rows_[i].detail;
                break;
            }
        if (before.doing == "waits" && before.call == now.call && before.cause == now.cause) {
            now.wait = before.wait;
            now.unseen = before.unseen;
        }
    }
    if (now.doing == "dormant" ||
        (now.doing == "waits" && now.cause != "SEM" && now.cause != "MTX"))
        ending_.insert(row.context);
    Set(row.context, now, at);
}

void BruteForce::Set(const std::string& task, Now now, std::size_t at) {
    const Now before = now_[task];
    now_[task] = now;
    since_[task] = time_;
    const bool waited =
        before.doing == "waits" && (now.doing != "waits" || now.wait != before.wait);
    if (waited) EndWait(task, before, now, at);
    if (now.doing == "dormant" && before.doing != "dormant")
        for (const auto& [object, holder] : std::map(holder_))
            if (IsMutex(object) && holder == task) Give(object, "");
    const bool between = IsBetween(task, now);
    if (open_[task]) {
        Job& job = jobs_[task].back();
        if (between) {
            job.end = job.to = time_;
            job.endsIn = now.doing == "dormant" ? "DMT" : now.cause;
            open_[task] = false;
        } else if (now.doing == "runs" && job.activation && !job.start && !job.unknown) {
            job.start = time_;
        }
        return;
    }
    if (between || now.doing == "unknown") return;
    open_[task] = true;
    Job job;
    job.from = job.to = time_;
    if (IsBetween(task, before) && now.doing == "ready") {
        job.activation = time_;
        std::tie(job.starter, job.starterCall) = WokenBy(at, before.object);
    }
    jobs_[task].push_back(job);
}

// The latest call of that time that is about the task, or about what it waited for, is who woke it.
std::pair<std::string, std::string> BruteForce::WokenBy(std::size_t at,
                                                        const std::string& object) const {
    const auto about = "(tskid=" + rows_[at].context.substr(1) + ")";
    for (std::size_t i = at; i-- > 0 && rows_[i].time == rows_[at].time;) {
        if (rows_[i].kind != "syscall" || rows_[i].context == rows_[at].context) continue;
        const bool task = rows_[i].detail.find(about) != std::string::npos;
        if (task || (!object.empty() && ObjectOf(rows_[i].detail) == object))
            return {rows_[i].context, NameOfCall(rows_[i].detail)};
    }
    return {};
}

void BruteForce::EndWait(const std::string& task, const Now& before, const Now& now,
                         std::size_t at) {
    const bool takes = before.call.starts_with("wai_sem") || before.call.starts_with("loc_mtx");
    if (takes && Succeeds(before.call) && (!counts_ || IsLock(before.object))) {
        if (counts_) ++lockSums_[before.object].contended;
        Take(before.object, task);
    }
    if (!counts_ || before.unseen || now.doing == "runs") return;
    const auto since = rows_[before.wait].time;
    const auto time = time_ - since;
    auto& sum = waits_[{task, before.cause, before.object}];
    sum.total += time;
    if (sum.count++ == 0 || time > sum.max) {
        sum.max = time;
        sum.maxAt = since;
    }
    ++sum.by[now.doing == "ready" ? WokenBy(at, before.object)
                                  : std::pair<std::string, std::string>()];
    if (!IsLock(before.object)) return;
    auto& lock = lockSums_[before.object];
    if (time > lock.waitMax.value_or(-1)) {
        lock.waitMax = time;
        lock.waitMaxAt = since;
    }
}

void BruteForce::Call(const Row& row) {
    const auto call = NameOfCall(row.detail);
    const auto object = ObjectOf(row.detail);
    if (counts_ && !IsLock(object)) return;
    const bool takes = call == "wai_sem" || call == "pol_sem" || call == "loc_mtx";
    const bool gives = call == "sig_sem" || call == "isig_sem" || call == "unl_mtx";
    if (gives && !Fails(row.detail)) Give(object, row.context);
    if (takes && Succeeds(row.detail) && !row.waits) Take(object, row.context);
}

void BruteForce::Take(const std::string& object, const std::string& by) {
    Use& use = uses_[object];
    const auto before = holder_[object];
    use.any = use.taken = true;
    if (by == use.giver) use.again = true;
    if (!before.empty() || !IsTask(by)) use.wrong = true;
    holder_[object] = by;
    auto& sum = lockSums_[object];
    if (!counts_) return;
    ++sum.takes;
    sum.heldSince = time_;
    sum.known = true;
}

// by: empty: the kernel, from a task that ends.
void BruteForce::Give(const std::string& object, const std::string& by) {
    Use& use = uses_[object];
    const auto before = holder_[object];
    if (by != before && !by.empty()) {
        if (!use.any && IsTask(by))
            use.giver = by;
        else
            use.wrong = true;
        use.any = true;
        if (IsMutex(object)) return;
    }
    use.any = true;
    holder_[object].clear();
    auto& sum = lockSums_[object];
    if (!counts_ || before.empty() || !sum.known) return;
    sum.known = false;
    const auto time = time_ - sum.heldSince;
    sum.min = sum.holds == 0 ? time : std::min(sum.min, time);
    if (sum.holds == 0 || time > sum.max) {
        sum.max = time;
        sum.longest = before;
    }
    sum.total += time;
    ++sum.holds;
}

bool BruteForce::IsBetween(const std::string& task, const Now& now) const {
    if (now.doing == "dormant") return true;
    if (now.doing != "waits" || now.cause == "MTX") return false;
    if (now.cause != "SEM") return true;
    return !ending_.contains(task) && !IsLock(now.object);
}

// Another task gets the processor that the task had left, and all that was told of the task since
// is that it is ready.
void BruteForce::CountPreemptions(const std::string& cpu) {
    std::string last;
    std::size_t ran = 0;
    std::size_t left = 0;  // 0: it has not left
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const Row& row = rows_[i];
        if (row.kind != "dispatch" || row.cpu != cpu || IsHandler(row.detail)) continue;
        const bool same = row.detail == last;
        if (!last.empty() && !same && left == 0) left = i;
        if (!IsTask(row.detail)) continue;
        if (!last.empty() && !same && IsPreempted(last, ran, left, i))
            for (auto& job : jobs_[last])
                if (job.from <= rows_[left].time && row.time <= job.to) ++job.preemptions;
        last = row.detail;
        ran = i;
        left = 0;
    }
}

bool BruteForce::IsPreempted(const std::string& task, std::size_t ran, std::size_t left,
                             std::size_t taken) const {
    bool first = true;
    bool ready = false;
    for (std::size_t i = ran + 1; i < rows_.size(); ++i) {
        const Row& row = rows_[i];
        if (i >= taken && ready) return true;
        if (row.kind == "dispatch" && row.detail == task && i > left) return false;
        const bool state = row.kind == "state" && row.context == task &&
                           row.detail.find("PAUSE") == std::string::npos;
        if (!state) continue;
        if (first && (row.detail != "RDY" || row.time != rows_[left].time)) return false;
        if (!row.detail.starts_with("RDY")) return false;
        if (i > taken && !first) return ready;
        first = false;
        ready = row.detail == "RDY";
    }
    return ready;
}

}  // namespace kvx::test
