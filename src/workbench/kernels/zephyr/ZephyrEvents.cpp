// What the events of Zephyr's tracing mean.

#include <algorithm>
#include <array>

#include "workbench/kernels/zephyr/Zephyr.h"

namespace kvx::kernels::zephyr {
namespace {

using service::ContextKind;
using service::RecordKind;
using service::TaskState;

struct ThreadEvent {
    std::string_view name;
    RecordKind kind;
    TaskState state = TaskState::Runnable;
    bool tellsReady = false;
};

// Those that are comments tell names.
constexpr std::array<ThreadEvent, 13> kThreadEvents = {
    {{"thread_switched_out", RecordKind::SwitchedOut},
     {"thread_switched_in", RecordKind::DispatchTo},
     {"thread_ready", RecordKind::State, TaskState::Runnable, true},
     {"thread_sched_ready", RecordKind::State, TaskState::Runnable, true},
     {"thread_pending", RecordKind::State, TaskState::Waiting},
     {"thread_pend", RecordKind::State, TaskState::Waiting},
     {"thread_sched_pend", RecordKind::State, TaskState::Waiting},
     {"thread_suspend", RecordKind::Suspend},
     {"thread_resume", RecordKind::Resume},
     {"thread_abort", RecordKind::State, TaskState::Dormant},
     {"thread_sched_abort", RecordKind::State, TaskState::Dormant},
     {"thread_info", RecordKind::Comment},
     {"thread_name_set", RecordKind::Comment}}};

constexpr std::string_view kEnter = "_enter";
constexpr std::string_view kBlocking = "_blocking";
constexpr std::string_view kExit = "_exit";

// What the scheduler does is no call, even where it is not told with which thread.
bool PlanWithoutThread(std::string_view name, EventPlan& plan) {
    constexpr std::array kScheduler = {"thread_switched_in", "thread_ready", "thread_pend",
                                       "thread_pending"};
    if (name == "thread_switched_out") {
        plan.kind = RecordKind::SwitchedOut;
        plan.subjectKind = ContextKind::Unknown;
        return true;
    }
    return std::ranges::find(kScheduler, name) != std::end(kScheduler);
}

bool PlanThread(const EventShape& shape, EventPlan& plan) {
    const auto at = std::ranges::find(kThreadEvents, shape.name, &ThreadEvent::name);
    if (at == kThreadEvents.end()) return false;
    plan.subject = shape.Find({"thread_id"});
    plan.subjectName = shape.Find({"name"});
    if (!plan.subject) return PlanWithoutThread(shape.name, plan);
    plan.kind = at->kind;
    plan.state = at->state;
    plan.tellsReady = at->tellsReady;
    return true;
}

// The handlers that run when a timer expires or is stopped are the timer's, in whatever they run.
bool PlanHandler(const EventShape& shape, EventPlan& plan) {
    const auto& name = shape.name;
    if (name == "isr_enter") {
        plan.kind = RecordKind::Enter;
    } else if (name == "isr_exit" || name == "isr_exit_to_scheduler") {
        plan.kind = RecordKind::Leave;
    } else if (name.ends_with("expiry_enter") || name.ends_with("expiry_exit")) {
        plan.kind = name.ends_with(kEnter) ? RecordKind::Enter : RecordKind::Leave;
        plan.subjectKind = ContextKind::Cyclic;
        plan.subject = shape.Find({"id"});
        return true;
    } else {
        return false;
    }
    plan.subjectKind = ContextKind::Interrupt;
    return true;
}

void PlanCall(const EventShape& shape, std::string_view name, RecordKind kind, EventPlan& plan) {
    plan.kind = kind;
    plan.name = name;
    plan.object = shape.Find({"id", "event_id"});
    plan.details = shape.Payload();
    for (auto& detail : plan.details)  // objects are named by their addresses
        if (detail.name == "id" || detail.name == "event_id" || detail.name == "thread_id")
            detail.form = detail.form == EventField::Form::Unsigned ? EventField::Form::Hexadecimal
                                                                    : detail.form;
}

// A return shows its result; its other fields repeat the parameters.
void PlanReturn(const EventShape& shape, std::string_view name, EventPlan& plan) {
    PlanCall(shape, name, RecordKind::Return, plan);
    std::erase_if(plan.details, [](const EventDetail& detail) {
        return detail.name != "ret" && detail.name != "result" && detail.name != "return";
    });
}

// A call that is recorded with one event. What the scheduler does by itself is none; what the
// application records under a name of its own is shown as one.
bool IsPlainCall(std::string_view name) {
    if (name == "named_event") return true;
    return Kernel().FindCall(name).cls != service::CallInfo().cls &&
           name != "thread_priority_set" && !name.starts_with("thread_sched_");
}

bool PlanServiceCall(const EventShape& shape, const EventNames& all, EventPlan& plan) {
    const std::string_view name = shape.name;
    const auto without = [&](std::string_view end) {
        return name.substr(0, name.size() - end.size());
    };
    if (name == "start_call" || name == "end_call") {
        plan.kind = name == "start_call" ? RecordKind::Call : RecordKind::Return;
        plan.callName = plan.kind == RecordKind::Call ? shape.Find({"id"}) : FieldRef();
    } else if (name == "thread_create") {
        PlanCall(shape, name, RecordKind::InstantCall, plan);
        plan.object = plan.subject = shape.Find({"thread_id"});
        plan.subjectName = shape.Find({"name"});
        plan.objectIsTask = true;
    } else if (name.ends_with(kEnter)) {
        PlanCall(shape, without(kEnter), RecordKind::Call, plan);
    } else if (name.ends_with(kExit)) {
        // Some kernels record the end of what they do not record the beginning of.
        if (!all.contains(std::string(without(kExit)).append(kEnter))) return false;
        PlanReturn(shape, without(kExit), plan);
    } else if (name.ends_with(kBlocking)) {
        PlanCall(shape, without(kBlocking), RecordKind::Blocks, plan);
        plan.details.clear();
    } else if (IsPlainCall(name)) {
        const bool closed = all.contains("end_call") && name != "named_event";
        PlanCall(shape, name, closed ? RecordKind::Call : RecordKind::InstantCall, plan);
    } else {
        return false;
    }
    return true;
}

}  // namespace

bool PlanEvent(const EventShape& shape, const EventNames& all, EventPlan& plan) {
    if (shape.name == "idle") {
        plan.kind = RecordKind::Runs;
        return true;
    }
    if (PlanHandler(shape, plan)) return true;
    plan.subjectKind = ContextKind::Task;
    return PlanThread(shape, plan) || PlanServiceCall(shape, all, plan);
}

}  // namespace kvx::kernels::zephyr
