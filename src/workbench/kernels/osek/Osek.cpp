#include "workbench/kernels/osek/Osek.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/base/Text.h"
#include "workbench/kernels/CallTable.h"

namespace kvx::kernels::osek {
namespace {

using host::CallClass;
using host::StateCode;
using service::ContextKind;
using service::RecordKind;
using service::TaskState;

constexpr std::string_view kRequest = "requestsemaphore";

struct Meaning {
    std::string_view event;
    RecordKind kind;
    ContextKind subject = ContextKind::Task;
};
constexpr Meaning kMeanings[] = {{"run", RecordKind::Runs},
                                 {"create", RecordKind::State},
                                 {"becomes ", RecordKind::State},  // and a state
                                 {"stop ", RecordKind::Switch},    // and a state
                                 {"migrate", RecordKind::Migrate},
                                 {"interrupted", RecordKind::SwitchedOut},
                                 {"enter", RecordKind::Enter, ContextKind::Interrupt},
                                 {"leave", RecordKind::Leave, ContextKind::Interrupt},
                                 {"call", RecordKind::Call},
                                 {"return", RecordKind::Return},
                                 {"instant", RecordKind::InstantCall}};

// "RDY", "WAI (SEM)+SUS" and so on. What is no state is not known.
void PlanState(std::string_view text, EventPlan& plan) {
    constexpr std::string_view kSuspended = "+SUS";
    const bool suspended = text.ends_with(kSuspended);
    if (suspended) text.remove_suffix(kSuspended.size());
    plan.state = TaskState::Unknown;
    if (text == "WAI") plan.state = TaskState::Waiting;
    for (int code = 1; code <= host::kStateCodes; ++code) {
        if (text != host::StateName(code)) continue;
        plan.waitCode = static_cast<std::uint8_t>(code);
        plan.state = TaskState::Waiting;
    }
    if (text == "RDY") plan.state = suspended ? TaskState::Suspended : TaskState::Runnable;
    if (text == "DMT") plan.state = TaskState::Dormant;
    if (plan.state == TaskState::Waiting && suspended) plan.state = TaskState::WaitingSuspended;
}

bool PlanEvent(const EventShape& shape, EventPlan& plan) {
    const auto at = std::ranges::find_if(kMeanings, [&](const Meaning& meaning) {
        return meaning.event.ends_with(' ') ? shape.name.starts_with(meaning.event)
                                            : shape.name == meaning.event;
    });
    if (at == std::end(kMeanings)) return false;
    plan.kind = at->kind;
    plan.subjectKind = at->subject;
    const bool hasState = at->kind == RecordKind::State || at->kind == RecordKind::Switch;
    if (hasState) PlanState(std::string_view(shape.name).substr(at->event.size()), plan);
    plan.processor = shape.Find({"core"});
    if (at->kind == RecordKind::State || at->kind == RecordKind::Migrate)
        plan.target = plan.processor;
    plan.callName = shape.Find({"call"});
    plan.keepsCase = true;
    plan.priority = shape.Find({"priority"});
    plan.subject = shape.Find({"process"});
    plan.subjectName = shape.Find({"name"});
    if (at->kind == RecordKind::Switch) {
        plan.from = std::exchange(plan.subject, shape.Find({"next"}));
        plan.fromName = std::exchange(plan.subjectName, shape.Find({"next_name"}));
    }
    plan.details = shape.Payload();
    std::erase_if(plan.details, [](const EventDetail& detail) { return !detail.name.empty(); });
    return true;
}

constexpr CallGroup kFreeRtosCalls[] = {
    {CallClass::Semaphores, std::nullopt, "sem_create sem_delete sem_take sem_give"},
    {CallClass::Mutexes, std::nullopt, "mutex_create mutex_delete mutex_take mutex_give"},
    {CallClass::DataQueues, std::nullopt, "queue_create queue_delete queue_send queue_recv"},
    {CallClass::TaskManagement, std::nullopt,
     "task_create task_delete task_suspend task_resume task_set_priority"},
    {CallClass::TimerManagement, std::nullopt, "timer_create timer_delete TICK"},
};

class BtfKernel : public EventKernel {
  public:
    bool Recognises(const EventNames& /*events*/) const override { return false; }
    int Priority() const override { return 0; }
    bool Plan(const EventShape& shape, const EventNames& /*all*/, EventPlan& plan) const override {
        return PlanEvent(shape, plan);
    }
    bool NamesByAddress() const override { return false; }
    std::string ContextName(ContextKind /*kind*/, std::uint64_t /*id*/,
                            std::string_view told) const override {
        return std::string(told);
    }
    std::string_view SwitchEvents() const override { return "start and resume of tasks"; }
    bool RecordsStates() const override { return true; }
    bool LargerIsMoreUrgent() const override { return true; }
};

class OsekKernel final : public BtfKernel {
  public:
    std::string_view Name() const override { return "OSEK/AUTOSAR"; }
    // What is held from the request of a semaphore to its release goes across runnables.
    service::CallInfo FindCall(std::string_view name) const override {
        service::CallInfo info;
        if (name != kRequest) return info;
        info.cls = host::Code(CallClass::Semaphores);
        info.waitCode = host::Code(StateCode::Semaphore);
        info.overlaps = true;
        return info;
    }
};

class FreeRtosKernel final : public BtfKernel {
  public:
    std::string_view Name() const override { return "FreeRTOS"; }
    service::CallInfo FindCall(std::string_view name) const override {
        static const CallTable table(kFreeRtosCalls, {});
        const auto* info = table.Find(name);
        return info ? *info : service::CallInfo();
    }
};

}  // namespace

const EventKernel& Kernel() {
    static const OsekKernel kernel;
    return kernel;
}

const EventKernel& FreeRtos() {
    static const FreeRtosKernel kernel;
    return kernel;
}

}  // namespace kvx::kernels::osek
