// Events of Zephyr kernels.

#include <algorithm>
#include <array>

#include "workbench/formats/ctf/Plan.h"
#include "workbench/service/CallTable.h"

namespace kvx::formats::ctf {
namespace {

using service::ContextKind;
using service::RecordKind;
using service::TaskState;

struct ThreadEvent {
    std::string_view name;
    RecordKind kind;
    TaskState state = TaskState::Runnable;
    bool recordsStates = false;
};

constexpr std::array<ThreadEvent, 12> kThreadEvents = {
    {{"thread_switched_out", RecordKind::SwitchedOut},
     {"thread_switched_in", RecordKind::DispatchTo},
     {"thread_ready", RecordKind::State, TaskState::Runnable, true},
     {"thread_sched_ready", RecordKind::State, TaskState::Runnable, true},
     {"thread_pending", RecordKind::State, TaskState::Waiting, true},
     {"thread_pend", RecordKind::State, TaskState::Waiting, true},
     {"thread_sched_pend", RecordKind::State, TaskState::Waiting, true},
     {"thread_suspend", RecordKind::Suspend},
     {"thread_resume", RecordKind::Resume},
     {"thread_abort", RecordKind::State, TaskState::Dormant},
     {"thread_info", RecordKind::Comment},
     {"thread_name_set", RecordKind::Comment}}};

constexpr std::string_view kEnter = "_enter";
constexpr std::string_view kBlocking = "_blocking";
constexpr std::string_view kExit = "_exit";

bool PlanThread(const EventShape& shape, Plan& plan) {
    const auto at = std::ranges::find(kThreadEvents, shape.Name(), &ThreadEvent::name);
    if (at == kThreadEvents.end()) return false;
    plan.kind = at->kind;
    plan.state = at->state;
    plan.recordsStates = at->recordsStates;
    plan.namesOnly = at->kind == RecordKind::Comment;
    plan.subject = shape.Find({"thread_id"});
    plan.subjectName = shape.Find({"name"});
    return static_cast<bool>(plan.subject);
}

bool PlanInterrupt(const EventShape& shape, Plan& plan) {
    const auto& name = shape.Name();
    plan.subjectKind = ContextKind::Interrupt;
    if (name == "isr_enter")
        plan.kind = RecordKind::Enter;
    else if (name == "isr_exit" || name == "isr_exit_to_scheduler")
        plan.kind = RecordKind::Leave;
    else
        return false;
    return true;
}

void PlanCall(const EventShape& shape, std::string_view name, RecordKind kind, Plan& plan) {
    plan.kind = kind;
    plan.name = name;
    plan.object = shape.Find({"id"});
    plan.details = shape.Details();
}

// A return shows its result; its other fields repeat the parameters.
void PlanReturn(const EventShape& shape, std::string_view name, Plan& plan) {
    PlanCall(shape, name, RecordKind::Return, plan);
    std::erase_if(plan.details, [](const DetailField& field) {
        return field.name != "ret" && field.name != "result" && field.name != "return";
    });
}

// A call that older kernels record with one event. What the scheduler does by itself is none.
bool IsPlainCall(std::string_view name) {
    return service::FindCall(name).cls != service::CallInfo().cls &&
           name != "thread_priority_set" && !name.starts_with("thread_sched_");
}

bool PlanServiceCall(const EventShape& shape, Plan& plan) {
    const std::string_view name = shape.Name();
    const auto without = [&](std::string_view end) {
        return name.substr(0, name.size() - end.size());
    };
    if (name == "start_call" || name == "end_call") {
        plan.kind = name == "start_call" ? RecordKind::Call : RecordKind::Return;
        plan.callName = plan.kind == RecordKind::Call ? shape.Find({"id"}) : FieldPlace();
    } else if (name == "thread_create") {
        PlanCall(shape, name, RecordKind::InstantCall, plan);
        plan.object = plan.subject = shape.Find({"thread_id"});
        plan.subjectName = shape.Find({"name"});
        plan.objectIsThread = true;
    } else if (name.ends_with(kEnter)) {
        PlanCall(shape, without(kEnter), RecordKind::Call, plan);
    } else if (name.ends_with(kExit)) {
        PlanReturn(shape, without(kExit), plan);
    } else if (name.ends_with(kBlocking)) {
        PlanCall(shape, without(kBlocking), RecordKind::Blocks, plan);
        plan.details.clear();
    } else if (IsPlainCall(name)) {
        PlanCall(shape, name, shape.EndsCallsAlike() ? RecordKind::Call : RecordKind::InstantCall,
                 plan);
    } else {
        return false;
    }
    return true;
}

}  // namespace

bool PlanZephyr(const EventShape& shape, Plan& plan) {
    if (shape.Name() == "idle") {
        plan.kind = RecordKind::Runs;
        return true;
    }
    if (PlanInterrupt(shape, plan)) return true;
    plan.subjectKind = ContextKind::Task;
    return PlanThread(shape, plan) || PlanServiceCall(shape, plan);
}

}  // namespace kvx::formats::ctf
