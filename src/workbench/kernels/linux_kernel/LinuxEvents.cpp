// Scheduling, interrupt and system-call events, as LTTng and perf name them.

#include <algorithm>
#include <array>

#include "workbench/kernels/linux_kernel/LinuxKernel.h"

namespace kvx::kernels::linux_kernel {
namespace {

using service::ContextKind;
using service::RecordKind;

void KeepDetail(const EventShape& shape, std::string_view name, EventPlan& plan) {
    plan.details = shape.Payload();
    std::erase_if(plan.details, [&](const EventDetail& detail) { return detail.name != name; });
}

bool PlanScheduling(const EventShape& shape, EventPlan& plan) {
    const auto& name = shape.name;
    if (name == "sched_switch") {
        plan.kind = RecordKind::Switch;
        plan.subject = shape.Find({"next_tid", "next_pid"});
        plan.subjectName = shape.Find({"next_comm"});
        plan.from = shape.Find({"prev_tid", "prev_pid"});
        plan.fromName = shape.Find({"prev_comm"});
        plan.fromState = shape.Find({"prev_state"});
        KeepDetail(shape, "prev_state", plan);
        return plan.subject && plan.from;
    }
    if (name == "sched_wakeup" || name == "sched_waking" || name == "sched_wakeup_new") {
        plan.kind = RecordKind::State;
        plan.target = shape.Find({"target_cpu"});
        plan.condition = shape.Find({"success"});
        plan.priority = shape.Find({"prio"});
    } else if (name == "sched_migrate_task") {
        plan.kind = RecordKind::Migrate;
        plan.target = shape.Find({"dest_cpu"});
    } else {
        return false;
    }
    plan.subject = shape.Find({"tid", "pid"});
    plan.subjectName = shape.Find({"comm"});
    return static_cast<bool>(plan.subject);
}

struct InterruptEvent {
    std::string_view name;
    RecordKind kind;
    ContextKind context;
    std::string_view number;
};
constexpr std::array<InterruptEvent, 6> kInterrupts = {
    {{"irq_handler_entry", RecordKind::Enter, ContextKind::Interrupt, "irq"},
     {"irq_handler_exit", RecordKind::Leave, ContextKind::Interrupt, "irq"},
     {"softirq_entry", RecordKind::Enter, ContextKind::ServiceRoutine, "vec"},
     {"softirq_exit", RecordKind::Leave, ContextKind::ServiceRoutine, "vec"},
     {"irq_softirq_entry", RecordKind::Enter, ContextKind::ServiceRoutine, "vec"},
     {"irq_softirq_exit", RecordKind::Leave, ContextKind::ServiceRoutine, "vec"}}};

bool PlanInterrupt(const EventShape& shape, EventPlan& plan) {
    const auto at = std::ranges::find(kInterrupts, shape.name, &InterruptEvent::name);
    if (at == kInterrupts.end()) return false;
    plan.kind = at->kind;
    plan.subjectKind = at->context;
    plan.subject = shape.Find({at->number});
    if (at->kind == RecordKind::Enter) plan.subjectName = shape.Find({"name"});
    return static_cast<bool>(plan.subject);
}

struct CallEvent {
    std::string_view begin;
    RecordKind kind;
};
constexpr std::array<CallEvent, 7> kCalls = {{{"syscall_entry_", RecordKind::Call},
                                              {"compat_syscall_entry_", RecordKind::Call},
                                              {"syscall_exit_", RecordKind::Return},
                                              {"compat_syscall_exit_", RecordKind::Return},
                                              {"sys_enter_", RecordKind::Call},
                                              {"sys_exit_", RecordKind::Return},
                                              {"sys_", RecordKind::Call}}};

bool PlanServiceCall(const EventShape& shape, EventPlan& plan) {
    const std::string_view name = shape.name;
    if (name == "sys_enter") {
        plan.kind = RecordKind::Call;
        plan.callName = shape.Find({"id"});
        KeepDetail(shape, "", plan);
        return true;
    }
    if (name == "sys_exit" || name == "exit_syscall") {
        plan.kind = RecordKind::Return;
    } else {
        const auto at = std::ranges::find_if(
            kCalls, [&](const CallEvent& call) { return name.starts_with(call.begin); });
        if (at == kCalls.end()) return false;
        plan.kind = at->kind;
        plan.name = name.substr(at->begin.size());
    }
    if (plan.kind == RecordKind::Return)
        KeepDetail(shape, "ret", plan);
    else
        plan.details = shape.Payload();
    return true;
}

}  // namespace

bool PlanEvent(const EventShape& shape, EventPlan& plan) {
    plan.processor = shape.Find({"cpu_id", "perf_cpu"});
    return PlanScheduling(shape, plan) || PlanInterrupt(shape, plan) ||
           PlanServiceCall(shape, plan);
}

}  // namespace kvx::kernels::linux_kernel
