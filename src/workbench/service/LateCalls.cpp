#include "workbench/service/LateCalls.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

#include "workbench/service/RecordWindow.h"

namespace kvx::service {
namespace {

constexpr std::uint32_t kNever = 0xFFFFFFFFu;

struct KnownCall {
    std::uint32_t record = kNever;
    CallInfo info;
};

struct Sleeper {
    // Out: lost the processor, and nothing says yet whether it waits.
    enum class Why : std::uint8_t { NotSeen, Runs, Out, Waits, Ready };
    Why why = Why::NotSeen;
    std::uint32_t since = kNever;        // Out, Waits: the record from which on
    std::uint32_t idleRuns = 0;          // how often the idle state had run by then
    std::uint32_t unexplained = kNever;  // a wait whose call is still to come
    KnownCall last;                      // its last call since it runs
};

class Pass {
  public:
    explicit Pass(Recording& recording)
        : recording_(recording),
          kernel_(recording.GetKernel()),
          alone_(recording.Processors().size() == 1) {}

    Inferred Run() {
        RecordWindow window(recording_);
        for (record_ = 0; record_ < recording_.RecordCount(); ++record_) Apply(window.At(record_));
        ForgetAll();
        std::ranges::sort(inferred_.waits);
        if (tellsWaits_) {
            std::erase_if(inferred_.causes, [&](const WaitCause& cause) {
                return std::ranges::binary_search(inferred_.waits, cause.wait);
            });
            inferred_.waits.clear();
            inferred_.unknown.clear();
        }
        std::ranges::sort(inferred_.unknown);
        std::ranges::sort(inferred_.causes, {}, &WaitCause::wait);
        return std::move(inferred_);
    }

  private:
    struct Processor {
        Sleeper* running = nullptr;
        std::uint64_t id = 0;
        std::uint32_t handlers = 0;
    };

    void Apply(const Record& record) {
        Processor& on = ProcessorOf(record.processor);
        switch (record.kind) {
            case RecordKind::Enter:
                ++on.handlers;
                return;
            case RecordKind::Leave:
                if (on.handlers > 0) --on.handlers;
                return;
            case RecordKind::Runs:
            case RecordKind::DispatchTo:
                return OnRuns(on, record.subject.id);
            case RecordKind::DispatchFrom:
                return OnRuns(on, 0);
            case RecordKind::State:
                return OnState(on, record);
            case RecordKind::Call:
            case RecordKind::InstantCall:
                if (on.running && on.handlers == 0) OnCall(*on.running, record);
                return;
            case RecordKind::Gap:
                return ForgetAll();
            default:
                return;
        }
    }

    Processor& ProcessorOf(std::uint32_t number) {
        if (!last_ || lastNumber_ != number) last_ = &processors_[number];
        lastNumber_ = number;
        return *last_;
    }

    void OnRuns(Processor& on, std::uint64_t id) {
        on.handlers = 0;
        if (on.running && on.id == id) return;
        if (on.running && on.running->why == Sleeper::Why::Runs) OnOut(*on.running);
        on.running = id == 0 ? nullptr : &sleepers_[id];
        on.id = id;
        if (id == 0) {
            ++idleRuns_;
            return;
        }
        Sleeper& task = *on.running;
        if (task.why == Sleeper::Why::Out && alone_ && task.idleRuns != idleRuns_) NoteWait(task);
        task.why = Sleeper::Why::Runs;
        task.last = {};
    }

    void OnOut(Sleeper& task) {
        task.why = Sleeper::Why::Out;
        task.since = record_;
        task.idleRuns = idleRuns_;
        if (task.last.info.recordedFirst) NoteWait(task);
    }

    // It waits since it lost the processor.
    void NoteWait(Sleeper& task) {
        task.why = Sleeper::Why::Waits;
        inferred_.waits.push_back(task.since);
        Explain(task, task.since);
    }

    void Explain(Sleeper& task, std::uint32_t wait) {
        const CallInfo& last = task.last.info;
        task.unexplained = last.recordedFirst ? kNever : wait;
        if (last.recordedFirst)
            inferred_.causes.push_back(
                {wait, task.last.record, last.waitCode, last.suspends, false});
    }

    void OnState(Processor& on, const Record& record) {
        if (record.subject.id == 0) return;
        Sleeper& task = sleepers_[record.subject.id];
        if (record.state == TaskState::Runnable) {
            if (task.why == Sleeper::Why::Out) NoteWait(task);
            if (task.why != Sleeper::Why::Runs) task.why = Sleeper::Why::Ready;
        } else if (record.state == TaskState::Waiting) {
            tellsWaits_ = true;
            const bool others = on.running && on.running != &task;
            if (others && on.running->last.info.suspends)
                inferred_.causes.push_back({record_, on.running->last.record, 0, true, false});
            else if (task.why == Sleeper::Why::Runs)
                Explain(task, record_);
            task.why = Sleeper::Why::Waits;
        } else {
            task.why = Sleeper::Why::Ready;
            task.unexplained = kNever;
        }
    }

    void OnCall(Sleeper& task, const Record& record) {
        task.last = {record_, FindCall(record.name)};
        const auto wait = std::exchange(task.unexplained, kNever);
        const CallInfo& info = task.last.info;
        if (wait != kNever && info.waitCode != 0 && !info.recordedFirst)
            inferred_.causes.push_back({wait, record_, info.waitCode, false, true});
    }

    const CallInfo& FindCall(std::string_view name) {
        const auto [at, isNew] = calls_.try_emplace(name);
        if (isNew) at->second = kernel_.FindCall(name);
        return at->second;
    }

    void ForgetAll() {
        for (auto& [id, task] : sleepers_) {
            if (task.why != Sleeper::Why::Out) continue;
            if (alone_ && task.idleRuns != idleRuns_)
                NoteWait(task);
            else
                inferred_.unknown.push_back(task.since);
        }
        sleepers_.clear();
        processors_.clear();
        last_ = nullptr;
    }

    Recording& recording_;
    const Kernel& kernel_;
    const bool alone_;  // there is one processor
    Inferred inferred_;
    std::unordered_map<std::string_view, CallInfo> calls_;  // names are the recording's
    std::unordered_map<std::uint64_t, Sleeper> sleepers_;
    std::unordered_map<std::uint32_t, Processor> processors_;
    Processor* last_ = nullptr;  // the one of the record before
    std::uint32_t lastNumber_ = 0;
    std::uint32_t record_ = 0;
    std::uint32_t idleRuns_ = 0;
    bool tellsWaits_ = false;
};

}  // namespace

Inferred InferFromLateCalls(Recording& recording) {
    return Pass(recording).Run();
}

}  // namespace kvx::service
