#include "workbench/service/Inference.h"

#include <algorithm>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

#include "workbench/service/RecordWindow.h"

namespace kvx::service {
namespace {

constexpr std::uint32_t kNever = 0xFFFFFFFFu;

// What the pass knows of a task.
struct Sleeper {
    // Out: switched out, and nothing says yet whether it waits. Told: the recording says it all.
    enum class Why : std::uint8_t { NotSeen, Runs, Out, Waits, Told };
    Why why = Why::NotSeen;
    std::uint32_t since = kNever;  // record from which this holds
    std::uint64_t object = 0;      // Waits: what for; 0: for time
    std::uint32_t idleRuns = 0;    // how often the idle state had run by then
    std::uint64_t blocksOn = 0;    // Runs: object of the call that has to wait
    bool blocks = false;           // Runs: it is recorded that the call has to wait
    bool sleeps = false;           // Runs: in a call that sleeps
    bool suspended = false;
};

class Pass {
  public:
    explicit Pass(Recording& recording)
        : recording_(recording),
          kernel_(recording.GetKernel()),
          tellsReady_(recording.TellsReady()) {}

    Inferred Run() {
        RecordWindow window(recording_);
        for (record_ = 0; record_ < recording_.RecordCount(); ++record_) Apply(window.At(record_));
        for (const auto& [id, sleeper] : sleepers_)
            if (sleeper.why == Sleeper::Why::Out && sleeper.idleRuns != idleRuns_)
                inferred_.waits.push_back(sleeper.since);
        std::ranges::sort(inferred_.waits);
        std::ranges::sort(inferred_.ready);
        return std::move(inferred_);
    }

  private:
    void Apply(const Record& record) {
        switch (record.kind) {
            case RecordKind::Enter:
                lastInterrupt_ = record_;
                ++handlers_;
                return;
            case RecordKind::Leave:
                if (handlers_ > 0) --handlers_;
                return;
            case RecordKind::Call:
            case RecordKind::InstantCall:
                return OnCall(record);
            case RecordKind::Blocks:
                if (running_) running_->blocks = true;
                return;
            case RecordKind::Return:
                if (running_ && handlers_ == 0) running_->blocks = running_->sleeps = false;
                return;
            case RecordKind::SwitchedOut:
                if (record.subject.kind != ContextKind::Unknown)
                    OnOut(sleepers_[record.subject.id]);
                else if (running_)
                    OnOut(*running_);
                return;
            case RecordKind::State:
                return OnState(record.subject.id, record.state);
            case RecordKind::Suspend:
                return OnSuspend(sleepers_[record.subject.id]);
            case RecordKind::Resume:
                sleepers_[record.subject.id].suspended = false;
                return;
            case RecordKind::DispatchTo:
            case RecordKind::Runs:
                return OnIn(record.subject.id);
            case RecordKind::Gap:
                return OnGap();
            default:
                return;
        }
    }

    void OnCall(const Record& record) {
        const CallInfo& call = FindCall(record.name);
        const bool creates = record.subject.kind == ContextKind::Task && record.subject.id != 0;
        if (creates) {
            Sleeper& task = sleepers_[record.subject.id];
            task = {};
            task.why = Sleeper::Why::Out;
            task.since = record_;
            task.idleRuns = idleRuns_;
            created_.insert_or_assign(record.subject.id, record_);
        }
        if (record.object != 0 && kernel_.Releases(record.name))
            releases_[record.object].push_back(record_);
        if (!running_ || handlers_ > 0 || creates) return;
        if (record.kind == RecordKind::Call) running_->sleeps = call.sleeps;
        if (call.yields) running_->sleeps = false;
        if (record.object != 0) running_->blocksOn = record.object;
    }

    const CallInfo& FindCall(std::string_view name) {
        const auto [at, isNew] = calls_.try_emplace(std::string(name));
        if (isNew) at->second = kernel_.FindCall(name);
        return at->second;
    }

    void OnOut(Sleeper& task) {
        const bool waits = task.blocks || task.sleeps;
        if (task.sleeps && !task.blocks) inferred_.waits.push_back(record_);
        if (task.why != Sleeper::Why::Told) {
            task.why = waits            ? Sleeper::Why::Waits
                       : task.suspended ? Sleeper::Why::Told
                                        : Sleeper::Why::Out;
            task.object = task.blocks ? task.blocksOn : 0;
            task.since = record_;
            task.idleRuns = idleRuns_;
        }
        task.blocks = task.sleeps = false;
        if (running_ == &task) running_ = nullptr;
    }

    // What is recorded stands; that a task becomes ready tells besides that it was not before.
    void OnState(std::uint64_t id, TaskState state) {
        Sleeper& task = sleepers_[id];
        const bool ready = state == TaskState::Runnable;
        if (ready && task.why == Sleeper::Why::Runs) return;
        if (ready && task.why == Sleeper::Why::Out && !created_.contains(id))
            inferred_.waits.push_back(task.since);
        task.why = Sleeper::Why::Told;
        task.sleeps = false;
    }

    // Suspended before the idle state ran: the task was ready until then.
    void OnSuspend(Sleeper& task) {
        task.suspended = true;
        if (task.why == Sleeper::Why::Out && task.idleRuns == idleRuns_)
            task.why = Sleeper::Why::Told;
    }

    void OnIn(std::uint64_t id) {
        running_ = nullptr;
        if (id == 0) {
            ++idleRuns_;
            return;
        }
        Sleeper& task = sleepers_[id];
        const auto created = created_.extract(id);
        const bool waited = task.why == Sleeper::Why::Out && task.idleRuns != idleRuns_;
        if (task.why == Sleeper::Why::Waits)
            AddReady(id, ReleaseAfter(task.since, task.object));
        else if (created)
            AddReady(id, waited ? InterruptAfter(task.since) : task.since);
        else if (waited) {
            inferred_.waits.push_back(task.since);
            AddReady(id, InterruptAfter(task.since));
        }
        task = {};
        task.why = Sleeper::Why::Runs;
        running_ = &task;
    }

    // Nothing is concluded across it.
    void OnGap() {
        sleepers_.clear();
        created_.clear();
        releases_.clear();
        running_ = nullptr;
        lastInterrupt_ = kNever;
        handlers_ = 0;
    }

    void AddReady(std::uint64_t id, std::uint32_t record) {
        if (record != kNever && !tellsReady_) inferred_.ready.emplace_back(record, id);
    }

    // The first release that no other waiting task has taken yet.
    std::uint32_t ReleaseAfter(std::uint32_t record, std::uint64_t object) {
        auto& list = releases_[object];
        const auto at = std::ranges::lower_bound(list, record);
        if (at == list.end()) return InterruptAfter(record);
        const auto release = *at;
        list.erase(at);
        return release;
    }

    std::uint32_t InterruptAfter(std::uint32_t record) const {
        return lastInterrupt_ != kNever && lastInterrupt_ > record ? lastInterrupt_ : kNever;
    }

    Recording& recording_;
    const Kernel& kernel_;
    const bool tellsReady_;
    Inferred inferred_;
    std::unordered_map<std::string, CallInfo> calls_;
    std::unordered_map<std::uint64_t, Sleeper> sleepers_;
    std::unordered_map<std::uint64_t, std::uint32_t> created_;
    std::unordered_map<std::uint64_t, std::deque<std::uint32_t>> releases_;
    Sleeper* running_ = nullptr;
    std::uint32_t record_ = 0;
    std::uint32_t idleRuns_ = 0;
    std::uint32_t lastInterrupt_ = kNever;
    std::uint32_t handlers_ = 0;  // that run nested
};

}  // namespace

Inferred InferStates(Recording& recording) {
    return Pass(recording).Run();
}

}  // namespace kvx::service
