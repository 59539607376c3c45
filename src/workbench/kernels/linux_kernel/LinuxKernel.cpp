#include "workbench/kernels/linux_kernel/LinuxKernel.h"

#include <array>

#include "platform/base/Text.h"
#include "workbench/kernels/CallTable.h"
#include "workbench/kernels/ErrnoName.h"

namespace kvx::kernels::linux_kernel {
namespace {

using host::CallClass;
using host::StateCode;
using service::ContextKind;
using service::TaskState;

constexpr CallGroup kCalls[] = {
    {CallClass::TaskManagement, std::nullopt,
     "fork vfork clone clone3 execve execveat kill tkill tgkill setpriority getpriority getpid "
     "gettid getppid sched_setaffinity sched_getaffinity sched_setscheduler exit exit_group"},
    {CallClass::TaskManagement, StateCode::Sleeping,
     "wait4 waitid waitpid pause rt_sigsuspend rt_sigtimedwait"},
    {CallClass::TaskSynchronization, StateCode::Delay, "nanosleep clock_nanosleep"},
    {CallClass::TaskSynchronization, std::nullopt, "sched_yield"},
    {CallClass::EventFlags, StateCode::EventFlag,
     "poll ppoll select pselect6 epoll_wait epoll_pwait epoll_pwait2"},
    {CallClass::EventFlags, std::nullopt, "epoll_ctl epoll_create epoll_create1 eventfd eventfd2"},
    {CallClass::Semaphores, StateCode::Semaphore, "semop semtimedop"},
    {CallClass::Semaphores, std::nullopt, "semget semctl"},
    {CallClass::DataQueues, StateCode::DataQueue, "msgsnd msgrcv mq_timedsend mq_timedreceive"},
    {CallClass::MessageBuffers, StateCode::MessageBuffer,
     "read write readv writev pread64 pwrite64 recv recvfrom recvmsg send sendto sendmsg accept "
     "accept4 connect splice sendfile"},
    {CallClass::Mutexes, StateCode::Mutex, "futex"},
    {CallClass::MemoryManagement, StateCode::VariablePool,
     "mmap munmap mremap brk mprotect madvise"},
    {CallClass::TimerManagement, std::nullopt,
     "timer_create timer_settime timer_gettime timer_delete timerfd_create timerfd_settime alarm "
     "setitimer clock_gettime gettimeofday"},
    {CallClass::SystemManagement, std::nullopt, "ioctl prctl sysinfo uname syslog"},
};

constexpr std::string_view kNeverReturn[] = {"exit", "exit_group"};

// By vector; the order has been the same since 2009.
constexpr std::array kSoftInterrupts = {"HI",       "TIMER",   "NET_TX", "NET_RX",  "BLOCK",
                                        "IRQ_POLL", "TASKLET", "SCHED",  "HRTIMER", "RCU"};

class LinuxKernel final : public EventKernel {
  public:
    std::string_view Name() const override { return "Linux"; }
    int Priority() const override { return 10; }
    std::string_view SwitchEvents() const override { return "sched_switch"; }
    bool RecordsStates() const override { return true; }
    bool NamesByAddress() const override { return false; }

    service::CallInfo FindCall(std::string_view name) const override {
        static const CallTable table(kCalls, kNeverReturn);
        const auto* info = table.Find(name);
        return info ? *info : service::CallInfo();
    }
    std::string ErrorName(std::int64_t result) const override { return kernels::ErrnoName(result); }
    bool Recognises(const EventNames& events) const override {
        return events.contains("sched_switch");
    }
    bool Plan(const EventShape& shape, const EventNames& /*all*/, EventPlan& plan) const override {
        return PlanEvent(shape, plan);
    }
    // The lowest bits hold in every version: 1 and 2 sleep, 4 and 8 are stopped, 16 and up are
    // dead. Bits above say how it sleeps, or that the task was preempted.
    TaskState StateOf(std::uint64_t state) const override {
        if (state & 0x03) return TaskState::Waiting;
        if (state & 0x0C) return TaskState::Suspended;
        return state & 0xF0 ? TaskState::Dormant : TaskState::Runnable;
    }
    std::string ContextName(ContextKind kind, std::uint64_t id,
                            std::string_view told) const override {
        const auto number = static_cast<unsigned long long>(id);
        if (kind == ContextKind::ServiceRoutine)
            return FormatText("softirq %llu", number) +
                   (id < kSoftInterrupts.size() ? std::string(" ") + kSoftInterrupts[id] : "");
        if (kind == ContextKind::Task || told.empty()) return std::string(told);
        return FormatText("irq %llu ", number).append(told);
    }
};

}  // namespace

const EventKernel& Kernel() {
    static const LinuxKernel kernel;
    return kernel;
}

}  // namespace kvx::kernels::linux_kernel
