// What kernels make of the events of recordings that describe them.

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "workbench/kernels/KnownKernels.h"
#include "workbench/kernels/linux_kernel/LinuxKernel.h"
#include "workbench/kernels/zephyr/Zephyr.h"

namespace kvx::kernels {
namespace {

using service::ContextKind;
using service::RecordKind;
using service::TaskState;

EventShape ShapeOf(std::string name, std::vector<std::string> fields) {
    EventShape shape{std::move(name), {}};
    for (auto& field : fields)
        shape.fields.push_back({std::move(field), EventField::Form::Unsigned, true});
    return shape;
}

const char* NameOf(RecordKind kind) {
    static constexpr const char* kNames[] = {"Comment", "Unreadable",   "DispatchTo",  "Runs",
                                             "Switch",  "DispatchFrom", "SwitchedOut", "State",
                                             "Blocks",  "Suspend",      "Resume",      "Enter",
                                             "Leave",   "Call",         "InstantCall", "Return"};
    return static_cast<std::size_t>(kind) < std::size(kNames) ? kNames[static_cast<int>(kind)]
                                                              : "Migrate";
}

// "Call:name of=field (details)"; none: the event says nothing about the schedule.
std::string Planned(const EventKernel& kernel, const EventShape& shape,
                    const EventNames& all = {}) {
    EventPlan plan;
    if (!kernel.Plan(shape, all, plan)) return "none";
    std::string text = NameOf(plan.kind);
    if (!plan.name.empty()) text += ":" + plan.name;
    if (plan.state == TaskState::Waiting) text += " waiting";
    if (plan.state == TaskState::Dormant) text += " dormant";
    if (plan.tellsReady) text += " told";
    if (plan.objectIsTask) text += " task";
    const std::pair<const char*, FieldRef> fields[] = {
        {"of", plan.subject},       {"from", plan.from},     {"object", plan.object},
        {"to", plan.target},        {"call", plan.callName}, {"if", plan.condition},
        {"named", plan.subjectName}};
    for (const auto& [role, field] : fields)
        if (field)
            text += std::string(" ") + role + "=" +
                    shape.fields[static_cast<std::size_t>(field.index)].name;
    for (const auto& detail : plan.details)
        text += " (" + detail.name +
                (detail.form == EventField::Form::Hexadecimal ? " as address)" : ")");
    return text;
}

struct Row {
    std::string event;
    std::vector<std::string> fields;
    std::string expected;
};

TEST(Plans, OfLinux) {
    const Row rows[] = {
        {"sched_switch",
         {"prev_comm", "prev_tid", "prev_state", "next_comm", "next_tid"},
         "Switch of=next_tid from=prev_tid named=next_comm (prev_state)"},
        {"sched_switch", {"next_tid"}, "none"},
        {"sched_switch", {"prev_tid"}, "none"},
        {"sched_waking", {"comm", "tid", "target_cpu"}, "State of=tid to=target_cpu named=comm"},
        {"sched_wakeup", {"pid", "success"}, "State of=pid if=success"},
        {"sched_wakeup", {"comm"}, "none"},
        {"sched_migrate_task", {"tid", "orig_cpu", "dest_cpu"}, "Migrate of=tid to=dest_cpu"},
        {"irq_handler_entry", {"irq", "name"}, "Enter of=irq named=name"},
        {"irq_handler_exit", {"irq", "name"}, "Leave of=irq"},
        {"softirq_entry", {"vec"}, "Enter of=vec"},
        {"irq_softirq_exit", {"vec"}, "Leave of=vec"},
        {"softirq_raise", {"vec"}, "none"},
        {"syscall_entry_read", {"fd", "count"}, "Call:read (fd) (count)"},
        {"compat_syscall_entry_read", {"fd"}, "Call:read (fd)"},
        {"syscall_exit_read", {"ret", "buf"}, "Return:read (ret)"},
        {"sys_enter_read", {"fd"}, "Call:read (fd)"},
        {"sys_exit_read", {"ret"}, "Return:read (ret)"},
        {"sys_read", {"fd"}, "Call:read (fd)"},
        {"sys_enter", {"id", "args"}, "Call call=id"},
        {"sys_exit", {"id", "ret"}, "Return (ret)"},
        {"exit_syscall", {"ret"}, "Return (ret)"},
        {"kmem_kfree", {"ptr"}, "none"},
    };
    for (const auto& [event, fields, expected] : rows)
        EXPECT_EQ(Planned(linux_kernel::Kernel(), ShapeOf(event, fields)), expected) << event;
}

TEST(Plans, OfZephyr) {
    const EventNames all = {"sem_take_enter", "sem_take_exit"};
    const Row rows[] = {
        {"idle", {}, "Runs"},
        {"isr_enter", {}, "Enter"},
        {"isr_exit_to_scheduler", {}, "Leave"},
        {"timer_expiry_enter", {"id"}, "Enter of=id"},
        {"timer_stop_fn_expiry_exit", {"id"}, "Leave of=id"},
        {"thread_switched_in", {"thread_id", "name"}, "DispatchTo of=thread_id named=name"},
        {"thread_switched_out", {"thread_id"}, "SwitchedOut of=thread_id"},
        {"thread_switched_out", {}, "SwitchedOut"},
        {"thread_switched_in", {"name"}, "Comment named=name"},
        {"thread_pend", {}, "Comment"},
        {"thread_ready", {"thread_id"}, "State told of=thread_id"},
        {"thread_sched_ready", {"thread_id"}, "State told of=thread_id"},
        {"thread_pend", {"thread_id"}, "State waiting of=thread_id"},
        {"thread_sched_abort", {"thread_id"}, "State dormant of=thread_id"},
        {"thread_suspend", {"thread_id"}, "Suspend of=thread_id"},
        {"thread_name_set", {"thread_id", "name"}, "Comment of=thread_id named=name"},
        {"thread_create",
         {"thread_id", "name", "priority"},
         "InstantCall:thread_create task of=thread_id object=thread_id named=name (thread_id as "
         "address) "
         "(name) (priority)"},
        {"sem_take_enter", {"id", "timeout"}, "Call:sem_take object=id (id as address) (timeout)"},
        {"sem_take_blocking", {"id", "timeout"}, "Blocks:sem_take object=id"},
        {"sem_take_exit", {"id", "timeout", "ret"}, "Return:sem_take object=id (ret)"},
        {"sem_give_exit", {"id"}, "none"},
        {"event_post",
         {"event_id", "mask"},
         "InstantCall:event_post object=event_id (event_id as address) (mask)"},
        {"named_event", {"name", "arg0"}, "InstantCall:named_event (name) (arg0)"},
        {"start_call", {"id"}, "Call call=id"},
        {"end_call", {"id"}, "Return"},
        {"thread_priority_set", {"thread_id", "prio"}, "none"},
        {"thread_sched_set_priority", {"thread_id"}, "none"},
        {"mystery", {"id"}, "none"},
    };
    for (const auto& [event, fields, expected] : rows)
        EXPECT_EQ(Planned(zephyr::Kernel(), ShapeOf(event, fields), all), expected) << event;
    // A kernel that records the ends of calls by one event of their own.
    EXPECT_EQ(Planned(zephyr::Kernel(), ShapeOf("sem_take", {"id"}), {"end_call"}),
              "Call:sem_take object=id (id as address)");
}

TEST(Plans, WhoseEventsTheyAreIsTold) {
    const auto nameOf = [](const EventNames& events) {
        const EventKernel* kernel = FindKernel(events);
        return kernel ? std::string(kernel->Name()) : "none";
    };
    EXPECT_EQ(nameOf({"sched_switch", "x"}), "Linux");
    EXPECT_EQ(nameOf({"thread_switched_in"}), "Zephyr");
    EXPECT_EQ(nameOf({"sched_switch", "thread_switched_in"}), "Zephyr");
    EXPECT_EQ(nameOf({"x"}), "none");
    EXPECT_EQ(KnownSwitchEvents(), "thread_switched_in (Zephyr), sched_switch (Linux)");
}

TEST(Plans, ContextsAreNamedAsTheKernelsPeopleNameThem) {
    const EventKernel& linux = linux_kernel::Kernel();
    EXPECT_EQ(linux.ContextName(ContextKind::ServiceRoutine, 0, ""), "softirq 0 HI");
    EXPECT_EQ(linux.ContextName(ContextKind::ServiceRoutine, 9, ""), "softirq 9 RCU");
    EXPECT_EQ(linux.ContextName(ContextKind::ServiceRoutine, 10, ""), "softirq 10");
    EXPECT_EQ(linux.ContextName(ContextKind::Interrupt, 7, "eth0"), "irq 7 eth0");
    EXPECT_EQ(linux.ContextName(ContextKind::Interrupt, 7, ""), "");
    EXPECT_EQ(linux.ContextName(ContextKind::Task, 7, "sh"), "sh");
    const EventKernel& zephyr = zephyr::Kernel();
    EXPECT_EQ(zephyr.ContextName(ContextKind::Interrupt, 7, ""), "ISR");
    EXPECT_EQ(zephyr.ContextName(ContextKind::Cyclic, 0xAB, ""), "timer AB");
    EXPECT_EQ(zephyr.ContextName(ContextKind::Task, 0xAB, ""), "thread AB");
    EXPECT_EQ(zephyr.ContextName(ContextKind::Task, 0xAB, "unknown"), "thread AB");
    EXPECT_EQ(zephyr.ContextName(ContextKind::Task, 0xAB, "main"), "main");
    EXPECT_TRUE(zephyr.IsIdle("idle 00"));
    EXPECT_FALSE(zephyr.IsIdle("main"));
}

TEST(Plans, LinuxStatesAreBits) {
    const auto state = [](std::uint64_t bits) { return linux_kernel::Kernel().StateOf(bits); };
    for (const auto bits : {0u, 0x100u, 0x200u}) EXPECT_EQ(state(bits), TaskState::Runnable);
    for (const auto bits : {1u, 2u, 0x82u, 0x402u}) EXPECT_EQ(state(bits), TaskState::Waiting);
    for (const auto bits : {4u, 8u, 0x108u}) EXPECT_EQ(state(bits), TaskState::Suspended);
    for (const auto bits : {0x10u, 0x20u, 0x40u, 0x80u}) EXPECT_EQ(state(bits), TaskState::Dormant);
}

}  // namespace
}  // namespace kvx::kernels
