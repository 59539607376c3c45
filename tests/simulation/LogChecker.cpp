#include "simulation/LogChecker.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace kvx::simulation {
namespace {

using Kind = LogLine::Kind;

constexpr std::int64_t kLowest = 1000;
// The interrupt of a tick may be pending when a wait begins, which then counts it.
constexpr std::int64_t kTickLatency = 100;
constexpr std::size_t kMostFaults = 10;

const std::map<std::string, std::string>& HandlerTypes() {
    static const std::map<std::string, std::string> types = {{"InterruptHandler", "int handler"},
                                                             {"InterruptServiceRoutine", "isr"},
                                                             {"CyclicHandler", "cyclic handler"},
                                                             {"AlarmHandler", "alarm handler"}};
    return types;
}

// Without the letter of its handler form.
std::string Base(const std::string& call) {
    static const std::set<std::string> forms = {"iact_tsk", "iwup_tsk",  "irel_wai", "isig_sem",
                                                "iset_flg", "ipsnd_dtq", "irot_rdq"};
    return forms.contains(call) ? call.substr(1) : call;
}

// Without the letter of its form with a time-out or without waiting.
std::string Plain(const std::string& call) {
    const std::string base = Base(call);
    const bool isForm = base.size() == 8 && (base[0] == 't' || base[0] == 'p') && base[4] == '_';
    return isForm ? base.substr(1) : base;
}

bool HasTimeout(const LogLine& wait) {
    return wait.values.contains("tmout") || wait.values.contains("dlytim");
}

}  // namespace

LogChecker::LogChecker(const std::string& resource, std::vector<CheckedMutex> mutexes)
    : mutexes_(std::move(mutexes)) {
    const auto json = nlohmann::json::parse(resource);
    for (const auto& entry : json.at("Resources")) {
        const std::string type = entry.at("Type");
        const auto& attributes = entry.at("Attributes");
        if (type == "Task") {
            Task& task = tasks_[attributes.at("id")];
            task.priority = attributes.at("pri");
            task.state = attributes.at("state");
        } else if (const auto kind = HandlerTypes().find(type); kind != HandlerTypes().end()) {
            declared_.emplace(kind->second, attributes.at("id"));
        }
    }
}

void LogChecker::Check(const std::vector<LogLine>& lines) {
    std::int64_t time = 0;
    for (const auto& line : lines) {
        line_ = &line;
        if (line.time < time) Fault("the time steps back");
        time = line.time;
        switch (line.kind) {
            case Kind::DispatchTo:
                OnDispatchTo();
                break;
            case Kind::DispatchFrom:
                OnDispatchFrom();
                break;
            case Kind::State:
                OnState();
                break;
            case Kind::HandlerEnter:
                OnHandlerEnter();
                break;
            case Kind::HandlerLeave:
                OnHandlerLeave();
                break;
            case Kind::CallEnter:
                OnCallEnter();
                break;
            case Kind::CallLeave:
                OnCallLeave();
                break;
            case Kind::Note:
                CheckActor();
                break;
            case Kind::Bad:
                Fault("not a line of the log");
        }
        if (faults_.size() >= kMostFaults) return;
    }
}

void LogChecker::Fault(const std::string& why) {
    faults_.push_back(line_->text + "  <- " + why);
}

void LogChecker::OnDispatchTo() {
    if (!handlers_.empty()) Fault("a dispatch inside a handler");
    if (running_ != 0) Fault("two tasks run");
    const auto at = tasks_.find(line_->id);
    if (at == tasks_.end()) return Fault("no such task");
    if (!IsReady(at->second)) Fault("the task is not ready");
    if (Effective(at->second) != HighestReady()) Fault("a task of higher priority is ready");
    if (Effective(at->second) < at->second.priority) ++boosts_;
    running_ = line_->id;
    rotated_ = false;
}

void LogChecker::OnDispatchFrom() {
    if (!handlers_.empty()) Fault("a dispatch inside a handler");
    if (running_ != line_->id) return Fault("this task does not run");
    const Task& task = tasks_.at(running_);
    running_ = 0;
    if (!IsReady(task)) return;
    ++preemptions_;
    const bool isTurn = rotated_ && HighestReady() == Effective(task);
    if (HighestReady() >= Effective(task) && !isTurn) Fault("nothing preempts this task");
}

void LogChecker::OnState() {
    const auto at = tasks_.find(line_->id);
    if (at == tasks_.end()) return Fault("no such task");
    Task& task = at->second;
    states_.insert(line_->name);
    const std::string from = std::exchange(task.state, line_->name);
    const std::string change = from + " to " + line_->name;
    if (change == "RUNNABLE to WAITING")
        OnWaiting(task);
    else if (change == "DORMANT to RUNNABLE")
        OnActivated(task);
    else if (change == "WAITING to RUNNABLE" || change == "WAITING-SUSPENDED to SUSPENDED")
        OnReleased(task);
    else if (change == "SUSPENDED to RUNNABLE" || change == "WAITING-SUSPENDED to WAITING")
        CheckCall("rsm_tsk");
    else if (change == "RUNNABLE to SUSPENDED" || change == "WAITING to WAITING-SUSPENDED")
        CheckCall("sus_tsk");
    else if (line_->name == "DORMANT" && from != "DORMANT")
        OnDormant(task);
    else
        Fault("from " + from);
}

void LogChecker::OnWaiting(Task& task) {
    if (running_ != line_->id || !handlers_.empty())
        Fault("only the running task can begin to wait");
    if (!task.call) return Fault("it waits in no call");
    if (Plain(task.call->name) == "loc_mtx") task.waitsForMutex = task.call->Value("mtxid");
}

void LogChecker::OnDormant(Task& task) {
    const bool exits = running_ == line_->id && task.call && task.call->name == "ext_tsk";
    if (!exits) CheckCall("ter_tsk");
    if (!task.held.empty() || task.waitsForMutex) Fault("it has to do with a mutex");
    task.call.reset();
}

// The open call is that one, on this task.
void LogChecker::CheckCall(const std::string& name) {
    const Call& by = OpenCall();
    if (!by || Base(by->name) != name || by->Value("tskid") != line_->id)
        Fault("it is not in " + name);
}

void LogChecker::OnActivated(Task& task) {
    CheckCall("act_tsk");
    task.released.clear();
}

// A wait ends.
void LogChecker::OnReleased(Task& task) {
    if (!task.call) return Fault("it waited in no call");
    const LogLine& wait = *task.call;
    const Call& by = OpenCall();
    const bool inTimer = !handlers_.empty() && handlers_.back().kind == "int handler" &&
                         handlers_.back().id == 1 && !by;
    if (inTimer) {
        task.released = "time";
        if (!HasTimeout(wait)) return Fault("the wait has no time-out");
        const std::int64_t limit = wait.Value(wait.name == "dly_tsk" ? "dlytim" : "tmout");
        const std::int64_t waited = line_->time - wait.time;
        if (waited < limit * 1000 - kTickLatency) Fault("the time-out is not over");
        if (waited > limit * 1000 + 2500) Fault("the time-out comes late");
    } else if (by && Base(by->name) == "rel_wai" && by->Value("tskid") == line_->id) {
        task.released = "force";
    } else if (by && Releases(*by, wait, line_->id)) {
        task.released = "call";
        if (task.waitsForMutex) task.held.insert(task.waitsForMutex);
    } else {
        Fault("nobody releases it from " + wait.text);
    }
    task.waitsForMutex = 0;
}

void LogChecker::OnHandlerEnter() {
    if (!declared_.contains({line_->name, line_->id})) Fault("no such handler");
    if (line_->name != "int handler" && handlers_.empty()) Fault("outside an interrupt");
    for (const auto& handler : handlers_)
        if (handler.kind == line_->name && handler.id == line_->id) Fault("it runs already");
    if (handlers_.empty() && running_ == 0) {
        wasIdle_ = true;
        if (HighestReady() != kLowest) Fault("idle while a task is ready");
    } else if (handlers_.empty() && HighestReady() < Effective(tasks_.at(running_))) {
        Fault("a task of higher priority should run");
    }
    handlers_.push_back({line_->name, line_->id, {}});
    handlerKinds_.insert(line_->name);
    deepest_ = std::max(deepest_, static_cast<int>(handlers_.size()));
}

void LogChecker::OnHandlerLeave() {
    if (handlers_.empty() || handlers_.back().kind != line_->name ||
        handlers_.back().id != line_->id)
        return Fault("not the innermost handler");
    if (handlers_.back().call) Fault("its call is open");
    handlers_.pop_back();
}

void LogChecker::OnCallEnter() {
    CheckActor();
    if (running_ == 0 && handlers_.empty()) return Fault("nobody runs");
    const bool isHandlerForm = Base(line_->name) != line_->name;
    if (isHandlerForm == handlers_.empty()) Fault("the form of the call does not fit");
    if (OpenCall()) Fault("the last call is open");
    OpenCall() = *line_;
    calls_.insert(line_->name);
    if (Base(line_->name) == "rot_rdq") rotated_ = true;
    if (line_->name == "unl_mtx") tasks_.at(running_).held.erase(line_->Value("mtxid"));
    if (Plain(line_->name) == "loc_mtx" && !OwnerOf(line_->Value("mtxid")))
        tasks_.at(running_).held.insert(line_->Value("mtxid"));
}

void LogChecker::OnCallLeave() {
    CheckActor();
    if (running_ == 0 && handlers_.empty()) return Fault("nobody runs");
    Call& call = OpenCall();
    if (!call || call->name != line_->name) return Fault("this call is not open");
    if (handlers_.empty()) {
        Task& task = tasks_.at(running_);
        CheckReturn(task, *call);
        const bool locked = Plain(call->name) == "loc_mtx" && line_->Value("ercd") == 0;
        if (locked && OwnerOf(call->Value("mtxid")) != running_) Fault("it is locked already");
        task.released.clear();
    }
    call.reset();
}

void LogChecker::CheckReturn(const Task& task, const LogLine& call) {
    const std::int64_t ercd = line_->Value("ercd");
    if (task.released.empty()) return;
    waits_.insert(ercd < 0 ? call.name + " " + std::to_string(ercd) : call.name);
    const std::int64_t expected = task.released == "force" ? -49 : -50;
    if (task.released == "call" || call.name == "dly_tsk") {
        if (ercd < 0) Fault("it was released, but returns an error");
    } else if (ercd != expected) {
        Fault("it should return " + std::to_string(expected));
    }
}

void LogChecker::CheckActor() {
    if (!handlers_.empty() || running_ == 0) return;
    const Task& task = tasks_.at(running_);
    if (!IsReady(task)) return Fault("it does not run");
    if (HighestReady() < Effective(task)) Fault("a task of higher priority should run");
}

LogChecker::Call& LogChecker::OpenCall() {
    static Call none;
    if (!handlers_.empty()) return handlers_.back().call;
    none.reset();
    return running_ ? tasks_.at(running_).call : none;
}

// 0: nobody.
std::int64_t LogChecker::OwnerOf(std::int64_t mutex) const {
    for (const auto& [id, task] : tasks_)
        if (task.held.contains(mutex)) return id;
    return 0;
}

std::int64_t LogChecker::Effective(const Task& task) const {
    std::int64_t priority = task.priority;
    for (const auto id : task.held) {
        const CheckedMutex& mutex = mutexes_.at(static_cast<std::size_t>(id - 1));
        if (mutex.ceiling) priority = std::min(priority, mutex.ceiling);
        if (!mutex.inherits) continue;
        for (const auto& [other, waiter] : tasks_)
            if (waiter.waitsForMutex == id) priority = std::min(priority, Effective(waiter));
    }
    return priority;
}

std::int64_t LogChecker::HighestReady() const {
    std::int64_t highest = kLowest;
    for (const auto& [id, task] : tasks_)
        if (IsReady(task)) highest = std::min(highest, Effective(task));
    return highest;
}

bool LogChecker::Releases(const LogLine& by, const LogLine& wait, std::int64_t task) const {
    static const std::map<std::string, std::pair<std::string, std::string>> releasers = {
        {"wai_sem", {"sig_sem", "semid"}}, {"wai_flg", {"set_flg", "flgid"}},
        {"rcv_dtq", {"snd_dtq", "dtqid"}}, {"snd_dtq", {"rcv_dtq", "dtqid"}},
        {"rcv_mbx", {"snd_mbx", "mbxid"}}, {"rcv_mbf", {"snd_mbf", "mbfid"}},
        {"snd_mbf", {"rcv_mbf", "mbfid"}}, {"loc_mtx", {"unl_mtx", "mtxid"}},
        {"get_mpf", {"rel_mpf", "mpfid"}}, {"get_mpl", {"rel_mpl", "mplid"}}};
    if (Plain(wait.name) == "slp_tsk")
        return Base(by.name) == "wup_tsk" && by.Value("tskid") == task;
    const std::string plain = wait.name[0] == 't' ? wait.name.substr(1) : wait.name;
    const auto at = releasers.find(plain);
    if (at == releasers.end()) return false;
    const auto& [call, object] = at->second;
    return Plain(by.name) == call && by.Value(object) == wait.Value(object);
}

}  // namespace kvx::simulation
