#pragma once
// Takes the events of a CTF trace in and packs them into records.

#include <cstdint>
#include <deque>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "workbench/formats/OpenRecording.h"
#include "workbench/formats/ctf/Graph.h"
#include "workbench/formats/ctf/Plan.h"
#include "workbench/formats/ctf/RecordStore.h"

namespace kvx::formats::ctf {

// A thread of a Zephyr kernel. Its number is its place in order of appearance, from 1.
struct Thread {
    std::uint64_t address = 0;
    std::string name;
    bool isIdle = false;
};

// What is kept of a trace.
struct Trace {
    RecordStore records;
    std::deque<Plan> plans;
    std::vector<Thread> threads;                          // Zephyr
    std::map<std::uint64_t, std::string> tasks;           // Linux: thread id and name
    std::map<service::ContextKey, std::string> handlers;  // those that events name
    std::deque<std::string> callNames;                    // those that stand in fields
    std::set<std::uint32_t> processors;
    Kernel kernel = Kernel::Other;
    bool hasClock = true;
    bool recordsStates = false;
    std::uint64_t discarded = 0;
    std::uint64_t leftOut = 0;  // events beyond what can be numbered
};

// The values of a record, in the order in which they are packed.
struct PackedOrder {
    template <class Visitor>
    static void Visit(const Plan& plan, Visitor visit) {
        if (plan.subject) visit(plan.subject);
        if (plan.from) visit(plan.from);
        if (plan.fromState) visit(plan.fromState);
        if (plan.object) visit(plan.object);
        if (plan.target) visit(plan.target);
        if (plan.callName) visit(plan.callName);
    }
};

class Loader final : public IMessages {
  public:
    // bytes: of all streams together. Events that take less than one each have no end.
    Loader(Trace& trace, std::uint64_t bytes, IOpenProgress* progress)
        : trace_(trace), bytes_(bytes), progress_(progress) {
        trace_.plans.emplace_back();  // for classes beyond what can be numbered: comments
    }

    bool OnEvent(const bt_event* event, std::optional<std::int64_t> nanoseconds) override;
    void OnDiscarded(std::uint64_t events) override { trace_.discarded += events; }
    bool OnBatch() override;
    // There were more events than the streams have room for.
    bool IsEndless() const { return endless_; }

  private:
    std::uint16_t PlanOf(const bt_event* event);
    void Pack(const bt_event* event, const Plan& plan);
    void LearnNames(const bt_event* event, const Plan& plan);
    std::uint64_t ThreadNumber(std::uint64_t address);
    std::uint64_t CallName(const bt_event* event, FieldPlace place);
    void PackDetails(const bt_event* event, const Plan& plan);

    Trace& trace_;
    const std::uint64_t bytes_;
    IOpenProgress* progress_;
    bool endless_ = false;
    std::unordered_map<const bt_event_class*, std::uint16_t> plans_;
    std::unordered_map<std::uint64_t, std::uint64_t> threadNumbers_;
    std::unordered_map<std::string, std::uint64_t> callNumbers_;
    std::uint64_t running_ = 0;  // Zephyr: number of the thread
    std::int64_t latest_ = 0;
};

}  // namespace kvx::formats::ctf
