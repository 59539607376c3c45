#include "workbench/kernels/zephyr/Zephyr.h"

#include <algorithm>
#include <array>
#include <optional>

#include "platform/base/Text.h"
#include "workbench/kernels/ErrnoName.h"

namespace kvx::kernels::zephyr {
namespace {

using host::CallClass;
using host::StateCode;
using service::ContextKind;

enum class Effect : std::uint8_t { None, Sleeps, Yields };

// Calls by what their names begin with; the first that fits holds.
struct Prefix {
    std::string_view begin;
    CallClass cls;
    std::optional<StateCode> wait;
    Effect effect = Effect::None;
};
constexpr Prefix kCalls[] = {
    {"k_queue_", CallClass::DataQueues, StateCode::DataQueue},
    {"k_fifo_", CallClass::DataQueues, StateCode::DataQueue},
    {"k_lifo_", CallClass::DataQueues, StateCode::DataQueue},
    {"k_stack_", CallClass::DataQueues, StateCode::DataQueue},
    {"thread_msleep", CallClass::TaskSynchronization, StateCode::Delay, Effect::Sleeps},
    {"thread_usleep", CallClass::TaskSynchronization, StateCode::Delay, Effect::Sleeps},
    {"thread_busy_wait", CallClass::TaskSynchronization, std::nullopt},
    {"thread_yield", CallClass::TaskSynchronization, std::nullopt, Effect::Yields},
    {"thread_wakeup", CallClass::TaskSynchronization, std::nullopt},
    {"thread_", CallClass::TaskManagement, StateCode::Sleeping},
    {"k_sleep", CallClass::TaskSynchronization, StateCode::Delay, Effect::Sleeps},
    {"sleep", CallClass::TaskSynchronization, StateCode::Delay, Effect::Sleeps},
    {"usleep", CallClass::TaskSynchronization, StateCode::Delay, Effect::Sleeps},
    {"msleep", CallClass::TaskSynchronization, StateCode::Delay, Effect::Sleeps},
    {"busy_wait", CallClass::TaskSynchronization, std::nullopt},
    {"yield", CallClass::TaskSynchronization, std::nullopt, Effect::Yields},
    {"wakeup", CallClass::TaskSynchronization, std::nullopt},
    {"event_", CallClass::EventFlags, StateCode::EventFlag},
    {"poll_", CallClass::EventFlags, StateCode::EventFlag},
    {"sem_", CallClass::Semaphores, StateCode::Semaphore},
    {"semaphore_", CallClass::Semaphores, StateCode::Semaphore},
    {"mbox", CallClass::Mailboxes, StateCode::Mailbox},
    {"mailbox", CallClass::Mailboxes, StateCode::Mailbox},
    {"fifo", CallClass::Mailboxes, StateCode::Mailbox},
    {"lifo", CallClass::Mailboxes, StateCode::Mailbox},
    {"queue", CallClass::Mailboxes, StateCode::Mailbox},
    {"stack_", CallClass::Mailboxes, StateCode::Mailbox},
    {"msgq", CallClass::DataQueues, StateCode::DataQueue},
    {"pipe", CallClass::MessageBuffers, StateCode::MessageBuffer},
    {"stream", CallClass::MessageBuffers, StateCode::MessageBuffer},
    {"mutex", CallClass::Mutexes, StateCode::Mutex},
    {"condvar", CallClass::Mutexes, StateCode::Mutex},
    {"futex_", CallClass::Mutexes, StateCode::Mutex},
    {"mem_slab", CallClass::MemoryManagement, StateCode::FixedPool},
    {"slab", CallClass::MemoryManagement, StateCode::FixedPool},
    {"heap", CallClass::MemoryManagement, StateCode::VariablePool},
    {"sys_heap", CallClass::MemoryManagement, StateCode::VariablePool},
    {"mempool", CallClass::MemoryManagement, StateCode::VariablePool},
    {"irq", CallClass::InterruptManagement, std::nullopt},
    {"timer_", CallClass::TimerManagement, StateCode::Delay},
    {"work", CallClass::SystemManagement, StateCode::Sleeping},
    {"pm_", CallClass::SystemManagement, std::nullopt},
};

class ZephyrKernel final : public EventKernel {
  public:
    std::string_view Name() const override { return "Zephyr"; }
    int Priority() const override { return 20; }
    std::string_view SwitchEvents() const override { return "thread_switched_in"; }
    bool NamesByAddress() const override { return true; }
    // Kernels differ in what they record: some no ready times, none what a sleep is.
    bool RecordsStates() const override { return false; }

    service::CallInfo FindCall(std::string_view name) const override {
        const auto at = std::ranges::find_if(
            kCalls, [&](const Prefix& prefix) { return name.starts_with(prefix.begin); });
        // The port for SystemView puts the letter of the kernel's own calls in front.
        if (at == std::end(kCalls) && name.starts_with("k_")) return FindCall(name.substr(2));
        service::CallInfo info;
        if (at == std::end(kCalls)) return info;
        info.cls = host::Code(at->cls);
        if (at->wait) info.waitCode = host::Code(*at->wait);
        info.sleeps = at->effect == Effect::Sleeps;
        info.yields = at->effect == Effect::Yields;
        return info;
    }
    bool Releases(std::string_view call) const override {
        constexpr std::array kVerbs = {"give", "unlock", "put",    "send", "post",    "set",
                                       "free", "signal", "append", "push", "release", "broadcast"};
        return std::ranges::any_of(kVerbs, [&](std::string_view verb) {
            const auto at = call.rfind(verb);
            return at != std::string_view::npos && at > 0 && call[at - 1] == '_';
        });
    }
    service::CallUse UseOf(std::string_view call) const override {
        using service::CallUse;
        if (!call.starts_with("sem") && !call.starts_with("mutex_")) return CallUse::None;
        if (call.ends_with("_take") || call.ends_with("_lock")) return CallUse::Takes;
        return call.ends_with("_give") || call.ends_with("_unlock") ? CallUse::Gives
                                                                    : CallUse::None;
    }
    std::string ErrorName(std::int64_t result) const override { return kernels::ErrnoName(result); }
    bool Recognises(const EventNames& events) const override {
        return events.contains("thread_switched_in");
    }
    bool Plan(const EventShape& shape, const EventNames& all, EventPlan& plan) const override {
        return PlanEvent(shape, all, plan);
    }
    bool IsIdle(std::string_view name) const override { return name.starts_with("idle"); }
    std::string ContextName(ContextKind kind, std::uint64_t id,
                            std::string_view told) const override {
        const auto address = static_cast<unsigned long long>(id);
        if (kind == ContextKind::Interrupt) return "ISR";
        if (kind == ContextKind::Cyclic) return FormatText("timer %llX", address);
        const bool named = !told.empty() && told != "unknown";
        return named ? std::string(told) : FormatText("thread %llX", address);
    }
};

}  // namespace

const EventKernel& Kernel() {
    static const ZephyrKernel kernel;
    return kernel;
}

}  // namespace kvx::kernels::zephyr
