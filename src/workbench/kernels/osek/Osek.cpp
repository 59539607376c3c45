#include "workbench/kernels/osek/Osek.h"

#include <algorithm>
#include <array>

#include "platform/Text.h"
#include "workbench/kernels/CallTable.h"

namespace kvx::kernels::osek {
namespace {

using host::CallClass;
using host::StateCode;
using service::ContextKind;
using service::RecordKind;
using service::TaskState;

constexpr std::uint8_t kNoCause = 0;
constexpr std::string_view kRequest = "requestsemaphore";
constexpr std::uint8_t kEvent = host::Code(StateCode::EventFlag);
constexpr std::uint8_t kSemaphore = host::Code(StateCode::Semaphore);

struct Meaning {
    std::string_view event;
    RecordKind kind;
    TaskState state = TaskState::Runnable;
    std::uint8_t waitCode = kNoCause;
    ContextKind subject = ContextKind::Task;
};
constexpr Meaning kMeanings[] = {
    {"ready", RecordKind::State},
    {"run", RecordKind::Runs},
    {"create", RecordKind::State, TaskState::Unknown},
    {"stop_ready", RecordKind::Switch, TaskState::Runnable},
    {"stop_wait", RecordKind::Switch, TaskState::Waiting},
    {"stop_wait_event", RecordKind::Switch, TaskState::Waiting, kEvent},
    {"stop_wait_semaphore", RecordKind::Switch, TaskState::Waiting, kSemaphore},
    {"stop_end", RecordKind::Switch, TaskState::Dormant},
    {"stop_unknown", RecordKind::Switch, TaskState::Unknown},
    {"interrupted", RecordKind::SwitchedOut},
    {"enter", RecordKind::Enter, TaskState::Runnable, kNoCause, ContextKind::Interrupt},
    {"leave", RecordKind::Leave, TaskState::Runnable, kNoCause, ContextKind::Interrupt},
    {"call", RecordKind::Call},
    {"return", RecordKind::Return},
    {"instant", RecordKind::InstantCall}};

bool PlanEvent(const EventShape& shape, EventPlan& plan) {
    const auto at = std::ranges::find(kMeanings, shape.name, &Meaning::event);
    if (at == std::end(kMeanings)) return false;
    plan.kind = at->kind;
    plan.state = at->state;
    plan.waitCode = at->waitCode;
    plan.subjectKind = at->subject;
    plan.processor = shape.Find({"core"});
    if (at->kind == RecordKind::State) plan.target = plan.processor;
    plan.callName = shape.Find({"call"});
    plan.keepsCase = true;
    plan.priority = shape.Find({"priority"});
    const auto process = shape.Find({"process"});
    const auto name = shape.Find({"name"});
    const bool gives = at->kind == RecordKind::Switch;
    (gives ? plan.from : plan.subject) = process;
    (gives ? plan.fromName : plan.subjectName) = name;
    if (gives) {
        plan.subject = shape.Find({"next"});
        plan.subjectName = shape.Find({"next_name"});
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
        info.waitCode = kSemaphore;
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
