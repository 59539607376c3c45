#include "workbench/service/Inference.h"

#include <algorithm>
#include <array>
#include <deque>
#include <string_view>
#include <unordered_map>

#include "workbench/service/RecordWindow.h"

namespace kvx::service {
namespace {

constexpr std::uint32_t kNever = 0xFFFFFFFFu;

// What the pass knows of a task that does not run.
struct Sleeper {
    enum class Why : std::uint8_t { NotSeen, Runs, Out, Waits, Ready };
    Why why = Why::NotSeen;
    std::uint32_t since = kNever;  // record from which this holds
    std::uint64_t object = 0;      // Waits: what for; 0: for time
    std::uint32_t idleRuns = 0;    // how often the idle state had run by then
    std::uint64_t blocksOn = 0;    // Runs: object of the call that has to wait
    bool blocks = false;
};

bool Releases(std::string_view call) {
    constexpr std::array kVerbs = {"give", "unlock", "put",    "send", "post",    "set",
                                   "free", "signal", "append", "push", "release", "broadcast"};
    return std::ranges::any_of(kVerbs, [&](std::string_view verb) {
        const auto at = call.rfind(verb);
        return at != std::string_view::npos && at > 0 && call[at - 1] == '_';
    });
}

class Pass {
  public:
    explicit Pass(Recording& recording) : recording_(recording) {}

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
                return;
            case RecordKind::Call:
            case RecordKind::InstantCall:
                return OnCall(record);
            case RecordKind::Blocks:
                if (running_) running_->blocks = true;
                return;
            case RecordKind::Return:
                if (running_) running_->blocks = false;
                return;
            case RecordKind::SwitchedOut:
                return OnOut(sleepers_[record.subject.id]);
            case RecordKind::Suspend:
                return OnSuspend(sleepers_[record.subject.id]);
            case RecordKind::DispatchTo:
            case RecordKind::Runs:
                return OnIn(record.subject.id);
            default:
                return;
        }
    }

    void OnCall(const Record& record) {
        if (record.name == "thread_create") {
            sleepers_[record.object] = {Sleeper::Why::Out, record_, 0, idleRuns_, 0, false};
            created_.insert_or_assign(record.object, record_);
        }
        if (record.object == 0) return;
        if (Releases(record.name))
            releases_[record.object].push_back(record_);
        else if (running_)
            running_->blocksOn = record.object;
    }

    void OnOut(Sleeper& task) {
        task.why = task.blocks ? Sleeper::Why::Waits : Sleeper::Why::Out;
        task.object = task.blocks ? task.blocksOn : 0;
        task.since = record_;
        task.idleRuns = idleRuns_;
        task.blocks = false;
        if (running_ == &task) running_ = nullptr;
    }

    // Suspended before the idle state ran: the task was ready until then.
    void OnSuspend(Sleeper& task) {
        if (task.why == Sleeper::Why::Out && task.idleRuns == idleRuns_)
            task.why = Sleeper::Why::Ready;
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
        task = {Sleeper::Why::Runs, record_, 0, 0, 0, false};
        running_ = &task;
    }

    void AddReady(std::uint64_t id, std::uint32_t record) {
        if (record != kNever) inferred_.ready.emplace_back(record, id);
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
    Inferred inferred_;
    std::unordered_map<std::uint64_t, Sleeper> sleepers_;
    std::unordered_map<std::uint64_t, std::uint32_t> created_;
    std::unordered_map<std::uint64_t, std::deque<std::uint32_t>> releases_;
    Sleeper* running_ = nullptr;
    std::uint32_t record_ = 0;
    std::uint32_t idleRuns_ = 0;
    std::uint32_t lastInterrupt_ = kNever;
};

}  // namespace

Inferred InferStates(Recording& recording) {
    return Pass(recording).Run();
}

}  // namespace kvx::service
