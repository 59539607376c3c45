#pragma once
// Takes the events of a CTF trace in and packs them into records.

#include <deque>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "workbench/formats/OpenRecording.h"
#include "workbench/formats/ctf/ContextNames.h"
#include "workbench/formats/ctf/EventSink.h"
#include "workbench/formats/ctf/RecordStore.h"
#include "workbench/kernels/EventKernel.h"

namespace kvx::formats::ctf {

// What is kept of a trace.
struct Trace {
    RecordStore records;
    std::deque<kernels::EventPlan> plans;
    const kernels::EventKernel* kernel = nullptr;  // null: not known
    std::optional<ContextNames> contexts;          // where the kernel is known
    std::deque<std::string> callNames;             // those that stand in fields
    std::set<std::uint32_t> processors;
    bool hasClock = true;
    bool tellsReady = false;
    bool saysWhoRuns = false;  // some event does
    std::uint64_t discardedEvents = 0;
    std::uint64_t discardedPackets = 0;
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

class Loader final : public IEventSink {
  public:
    // bytes: of all streams together. Events that take less than one each have no end.
    Loader(Trace& trace, std::uint64_t bytes, IOpenProgress* progress)
        : trace_(trace), bytes_(bytes), progress_(progress) {
        trace_.plans.emplace_back();  // for kinds beyond what can be numbered: comments
    }

    void OnKind(const kernels::EventShape& shape, const kernels::EventNames& all) override;
    bool OnEvent(std::uint32_t kind, std::optional<std::int64_t> nanoseconds,
                 std::span<const Value> values) override;
    void OnDiscarded(Discarded what, std::uint64_t count) override;
    bool OnBatch() override;
    // There were more events than the streams have room for.
    bool IsEndless() const { return endless_; }

  private:
    void NoteProcessor(std::uint16_t processor);
    void Pack(const kernels::EventPlan& plan);
    void PackDetails(const kernels::EventPlan& plan);
    void LearnNames(const kernels::EventPlan& plan);
    std::uint64_t CallName(const Value& value);
    Value ValueOf(kernels::FieldRef field) const;

    Trace& trace_;
    const std::uint64_t bytes_;
    IOpenProgress* progress_;
    bool endless_ = false;
    std::span<const Value> values_;  // of the event at hand
    std::vector<std::uint16_t> planOfKind_;
    std::unordered_map<std::string, std::uint64_t> callNumbers_;
    std::uint64_t running_ = 0;  // number of the task, of a kernel that says who idles
    std::int64_t latest_ = 0;
    std::uint16_t latestProcessor_ = 0;
};

}  // namespace kvx::formats::ctf
