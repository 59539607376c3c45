#pragma once
// Takes the events of a trace in and packs them into records.

#include <deque>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "workbench/formats/OpenRecording.h"
#include "workbench/formats/events/ContextNames.h"
#include "workbench/formats/events/EventSink.h"
#include "workbench/formats/events/RecordStore.h"
#include "workbench/kernels/EventKernel.h"

namespace kvx::formats {

// What is kept of a trace.
struct EventTrace {
    std::string format;  // for people, without the kernel
    RecordStore records;
    std::deque<kernels::EventPlan> plans;
    const kernels::EventKernel* kernel = nullptr;  // null: not known
    std::optional<ContextNames> contexts;          // where the kernel is known
    std::deque<std::string> callNames;             // those that stand in fields
    std::set<std::uint32_t> processors;
    std::set<std::uint32_t> idleAtStart;  // processors on which nothing runs at the start
    service::TimeUnit unit = service::TimeUnit::Nanoseconds;  // of the events' times
    std::int64_t origin = 0;                                  // taken off all times
    bool tellsReady = false;
    bool saysWhoRuns = false;  // some event does
    service::LossCounters losses;
    std::uint64_t leftOut = 0;  // events beyond what can be numbered
};

// The values of a record, in the order in which they are packed.
struct PackedOrder {
    template <class Visitor>
    static void Visit(const kernels::EventPlan& plan, Visitor visit) {
        if (plan.subject) visit(plan.subject);
        if (plan.from) visit(plan.from);
        if (plan.fromState) visit(plan.fromState);
        if (plan.object) visit(plan.object);
        if (plan.target) visit(plan.target);
        if (plan.callName) visit(plan.callName);
        if (plan.priority) visit(plan.priority);
    }
};

class EventLoader final : public IEventSink {
  public:
    // Called once, if at all, with a copy of what is read by then: enough for a first look.
    std::function<void(EventTrace beginning)> onBeginning;

    // bytes: of all streams together. Events that take less than one each have no end. The kernel
    // is the trace's, or, where that has none, the first one that recognises a kind.
    EventLoader(EventTrace& trace, std::uint64_t bytes, IOpenProgress* progress);

    void OnKind(const kernels::EventShape& shape, const kernels::EventNames& all) override;
    bool OnEvent(std::uint32_t kind, std::optional<std::int64_t> time,
                 std::span<const EventValue> values) override;
    void OnDiscarded(Discarded what, std::uint64_t count) override;
    bool OnBatch() override;
    // What comes next on the processor is lost.
    void AddGap(std::uint16_t processor);
    // There were more events than the streams have room for.
    bool IsEndless() const { return endless_; }
    // After the last event: puts the records in order of time.
    void Finish() { PutInOrder(trace_); }

  private:
    static constexpr std::size_t kProcessors = 0x10000;
    static constexpr std::uint32_t kBeginning = 20000;  // records

    static void PutInOrder(EventTrace& trace);
    void NoteProcessor(std::uint16_t processor);
    void Pack(const kernels::EventPlan& plan);
    void PackDetails(const kernels::EventPlan& plan);
    void LearnNames(const kernels::EventPlan& plan);
    std::uint64_t CallName(const EventValue& value, bool keepsCase);
    std::uint64_t CallNamed(std::string_view told, bool keepsCase);
    EventValue ValueOf(kernels::FieldRef field) const;

    EventTrace& trace_;
    const std::uint64_t bytes_;
    IOpenProgress* progress_;
    const bool kernelIsGiven_;
    bool endless_ = false;
    bool isNumbered_ = false;  // there are no times: the place of an event stands for its time
    std::span<const EventValue> values_;  // of the event at hand
    std::vector<std::uint16_t> planOfKind_;
    std::unordered_map<std::string, std::uint64_t> callNumbers_;
    std::unordered_map<std::uint64_t, std::uint64_t> numberedCalls_;  // of calls without a name
    std::uint64_t running_ = 0;  // number of the task, of a kernel that says who idles
    std::int64_t latest_ = 0;
    std::vector<bool> seenProcessors_ = std::vector<bool>(kProcessors);
};

}  // namespace kvx::formats
