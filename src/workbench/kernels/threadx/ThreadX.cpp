#include "workbench/kernels/threadx/ThreadX.h"

#include <algorithm>
#include <array>

#include "workbench/kernels/CallTable.h"

namespace kvx::kernels::threadx {
namespace {

using host::CallClass;
using host::StateCode;
using service::TaskState;

struct NumberedCall {
    std::uint32_t event;
    Call call;
};
constexpr NumberedCall kNumbered[] = {
    {10, {"tx_block_allocate", "pool:o memory:x wait:w remaining:u"}},
    {11, {"tx_block_pool_create", "pool:o start:x blocks:u size:u"}},
    {12, {"tx_block_pool_delete", "pool:o"}},
    {13, {"tx_block_pool_info_get", "pool:o"}},
    {14, {"tx_block_pool_performance_info_get", "pool:o"}},
    {15, {"tx_block_pool_performance_system_info_get", ""}},
    {16, {"tx_block_pool_prioritize", "pool:o suspended:u"}},
    {17, {"tx_block_release", "pool:o memory:x suspended:u"}},
    {20, {"tx_byte_allocate", "pool:o size:u wait:w available:u"}},
    {21, {"tx_byte_pool_create", "pool:o start:x size:u"}},
    {22, {"tx_byte_pool_delete", "pool:o"}},
    {23, {"tx_byte_pool_info_get", "pool:o"}},
    {24, {"tx_byte_pool_performance_info_get", "pool:o"}},
    {25, {"tx_byte_pool_performance_system_info_get", ""}},
    {26, {"tx_byte_pool_prioritize", "pool:o suspended:u"}},
    {27, {"tx_byte_release", "pool:o memory:x suspended:u available:u"}},
    {30, {"tx_event_flags_create", "group:o"}},
    {31, {"tx_event_flags_delete", "group:o"}},
    {32, {"tx_event_flags_get", "group:o requested:x current:x option:u"}},
    {33, {"tx_event_flags_info_get", "group:o"}},
    {34, {"tx_event_flags_performance_info_get", "group:o"}},
    {35, {"tx_event_flags_performance_system_info_get", ""}},
    {36, {"tx_event_flags_set", "group:o flags:x option:u suspended:u"}},
    {37, {"tx_event_flags_set_notify", "group:o"}},
    {40, {"tx_interrupt_control", "posture:u"}},
    {50, {"tx_mutex_create", "mutex:o inherit:u"}},
    {51, {"tx_mutex_delete", "mutex:o owner:o"}},
    {52, {"tx_mutex_get", "mutex:o wait:w owner:o count:u"}},
    {53, {"tx_mutex_info_get", "mutex:o"}},
    {54, {"tx_mutex_performance_info_get", "mutex:o"}},
    {55, {"tx_mutex_performance_system_info_get", ""}},
    {56, {"tx_mutex_prioritize", "mutex:o suspended:u"}},
    {57, {"tx_mutex_put", "mutex:o owner:o count:u"}},
    {60, {"tx_queue_create", "queue:o message_size:u start:x size:u"}},
    {61, {"tx_queue_delete", "queue:o"}},
    {62, {"tx_queue_flush", "queue:o"}},
    {63, {"tx_queue_front_send", "queue:o source:x wait:w enqueued:u"}},
    {64, {"tx_queue_info_get", "queue:o"}},
    {65, {"tx_queue_performance_info_get", "queue:o"}},
    {66, {"tx_queue_performance_system_info_get", ""}},
    {67, {"tx_queue_prioritize", "queue:o suspended:u"}},
    {68, {"tx_queue_receive", "queue:o destination:x wait:w enqueued:u"}},
    {69, {"tx_queue_send", "queue:o source:x wait:w enqueued:u"}},
    {70, {"tx_queue_send_notify", "queue:o"}},
    {80, {"tx_semaphore_ceiling_put", "semaphore:o count:u suspended:u ceiling:u"}},
    {81, {"tx_semaphore_create", "semaphore:o count:u"}},
    {82, {"tx_semaphore_delete", "semaphore:o"}},
    {83, {"tx_semaphore_get", "semaphore:o wait:w count:u"}},
    {84, {"tx_semaphore_info_get", "semaphore:o"}},
    {85, {"tx_semaphore_performance_info_get", "semaphore:o"}},
    {86, {"tx_semaphore_performance_system_info_get", ""}},
    {87, {"tx_semaphore_prioritize", "semaphore:o suspended:u"}},
    {88, {"tx_semaphore_put", "semaphore:o count:u suspended:u"}},
    {89, {"tx_semaphore_put_notify", "semaphore:o"}},
    {100, {"tx_thread_create", "thread:o priority:u stack:x stack_size:u"}},
    {101, {"tx_thread_delete", "thread:o"}},
    {102, {"tx_thread_entry_exit_notify", "thread:o"}},
    {103, {"tx_thread_identify", ""}},
    {104, {"tx_thread_info_get", "thread:o"}},
    {105, {"tx_thread_performance_info_get", "thread:o"}},
    {106, {"tx_thread_performance_system_info_get", ""}},
    {107, {"tx_thread_preemption_change", "thread:o threshold:u before:u"}},
    {108, {"tx_thread_priority_change", "thread:o priority:u before:u"}},
    {109, {"tx_thread_relinquish", ":x next:o"}},
    {110, {"tx_thread_reset", "thread:o"}},
    {111, {"tx_thread_resume", "thread:o"}},
    {112, {"tx_thread_sleep", "ticks:u"}},
    {113, {"tx_thread_stack_error_notify", ""}},
    {114, {"tx_thread_suspend", "thread:o"}},
    {115, {"tx_thread_terminate", "thread:o"}},
    {116, {"tx_thread_time_slice_change", "thread:o slice:u before:u"}},
    {117, {"tx_thread_wait_abort", "thread:o"}},
    {120, {"tx_time_get", "time:u"}},
    {121, {"tx_time_set", "time:u"}},
    {122, {"tx_timer_activate", "timer:o"}},
    {123, {"tx_timer_change", "timer:o initial:u reschedule:u"}},
    {124, {"tx_timer_create", "timer:o initial:u reschedule:u"}},
    {125, {"tx_timer_deactivate", "timer:o"}},
    {126, {"tx_timer_delete", "timer:o"}},
    {127, {"tx_timer_info_get", "timer:o"}},
    {128, {"tx_timer_performance_info_get", "timer:o"}},
    {129, {"tx_timer_performance_system_info_get", ""}},
};

// By the event's first number. The others, by what their names begin with.
struct ClassOfRange {
    std::string_view begin;
    CallClass cls;
};
constexpr ClassOfRange kClasses[] = {
    {"tx_block_", CallClass::MemoryManagement},
    {"tx_byte_", CallClass::MemoryManagement},
    {"tx_event_flags_", CallClass::EventFlags},
    {"tx_interrupt_", CallClass::InterruptManagement},
    {"tx_mutex_", CallClass::Mutexes},
    {"tx_queue_", CallClass::DataQueues},
    {"tx_semaphore_", CallClass::Semaphores},
    {"tx_thread_relinquish", CallClass::TaskSynchronization},
    {"tx_thread_resume", CallClass::TaskSynchronization},
    {"tx_thread_sleep", CallClass::TaskSynchronization},
    {"tx_thread_suspend", CallClass::TaskSynchronization},
    {"tx_thread_wait_abort", CallClass::TaskSynchronization},
    {"tx_thread_", CallClass::TaskManagement},
    {"tx_time", CallClass::TimerManagement},
};

struct WaitOfCall {
    std::string_view name;
    StateCode wait;
};
constexpr WaitOfCall kWaits[] = {
    {"tx_block_allocate", StateCode::FixedPool},   {"tx_byte_allocate", StateCode::VariablePool},
    {"tx_event_flags_get", StateCode::EventFlag},  {"tx_mutex_get", StateCode::Mutex},
    {"tx_queue_front_send", StateCode::DataQueue}, {"tx_queue_receive", StateCode::DataQueue},
    {"tx_queue_send", StateCode::DataQueue},       {"tx_semaphore_get", StateCode::Semaphore},
    {"tx_thread_sleep", StateCode::Delay},
};

// By number. Those of drivers and of what is built on the kernel have no code of their own.
constexpr std::array<ThreadState, 14> kStates = {
    {{"READY", TaskState::Runnable, 0},
     {"COMPLETED", TaskState::Dormant, 0},
     {"TERMINATED", TaskState::Dormant, 0},
     {"SUSPENDED", TaskState::Suspended, 0},
     {"SLEEP", TaskState::Waiting, host::Code(StateCode::Delay)},
     {"QUEUE", TaskState::Waiting, host::Code(StateCode::DataQueue)},
     {"SEMAPHORE", TaskState::Waiting, host::Code(StateCode::Semaphore)},
     {"EVENT FLAGS", TaskState::Waiting, host::Code(StateCode::EventFlag)},
     {"BLOCK POOL", TaskState::Waiting, host::Code(StateCode::FixedPool)},
     {"BYTE POOL", TaskState::Waiting, host::Code(StateCode::VariablePool)},
     {"IO DRIVER", TaskState::Waiting, host::Code(StateCode::Sleeping)},
     {"FILE", TaskState::Waiting, host::Code(StateCode::Sleeping)},
     {"TCP/IP", TaskState::Waiting, host::Code(StateCode::MessageBuffer)},
     {"MUTEX", TaskState::Waiting, host::Code(StateCode::Mutex)}}};

class ThreadX final : public service::Kernel {
  public:
    std::string_view Name() const override { return "ThreadX"; }
    service::CallInfo FindCall(std::string_view name) const override {
        service::CallInfo info;
        info.returns = false;
        for (const auto& range : kClasses) {
            if (!name.starts_with(range.begin)) continue;
            info.cls = host::Code(range.cls);
            break;
        }
        const auto wait = std::ranges::find(kWaits, name, &WaitOfCall::name);
        if (wait != std::end(kWaits)) info.waitCode = host::Code(wait->wait);
        return info;
    }
    bool Releases(std::string_view call) const override {
        return call.ends_with("_put") || call.ends_with("_send") || call.ends_with("_set") ||
               call.ends_with("_release") || call == "tx_queue_receive";
    }
};

}  // namespace

const service::Kernel& Kernel() {
    static const ThreadX kernel;
    return kernel;
}

std::optional<Call> FindCall(std::uint32_t event) {
    const auto at = std::ranges::lower_bound(kNumbered, event, {}, &NumberedCall::event);
    if (at == std::end(kNumbered) || at->event != event) return std::nullopt;
    return at->call;
}

ThreadState StateOf(std::uint32_t state) {
    if (state < kStates.size()) return kStates[state];
    return {"", TaskState::Waiting, host::Code(StateCode::Sleeping)};
}

}  // namespace kvx::kernels::threadx
