#include "workbench/kernels/nuttx/Nuttx.h"

#include "platform/base/Text.h"
#include "workbench/kernels/CallTable.h"
#include "workbench/kernels/linux_kernel/LinuxKernel.h"

namespace kvx::kernels::nuttx {
namespace {

using host::CallClass;
using host::StateCode;
using service::ContextKind;
using service::TaskState;

constexpr CallGroup kCalls[] = {
    {CallClass::TaskManagement, std::nullopt,
     "task_create task_spawn task_delete task_restart kthread_create pthread_create pthread_exit "
     "pthread_cancel pthread_detach exit _exit getpid gettid sched_setparam sched_getparam "
     "sched_setscheduler sched_getscheduler nxsched_get_stackinfo up_fork vfork execv posix_spawn "
     "kill tkill tgkill"},
    {CallClass::TaskManagement, StateCode::Sleeping,
     "pthread_join waitpid waitid wait sigsuspend sigtimedwait sigwaitinfo pause"},
    {CallClass::TaskSynchronization, StateCode::Delay,
     "clock_nanosleep nanosleep sleep usleep nxsig_usleep"},
    {CallClass::TaskSynchronization, std::nullopt, "sched_yield sched_lock sched_unlock"},
    {CallClass::EventFlags, StateCode::EventFlag,
     "poll ppoll select pselect epoll_wait nxevent_wait nxevent_tickwait"},
    {CallClass::EventFlags, std::nullopt, "epoll_ctl epoll_create1 eventfd nxevent_post"},
    {CallClass::Semaphores, StateCode::Semaphore,
     "sem_wait sem_timedwait sem_clockwait nxsem_wait nxsem_timedwait nxsem_clockwait "
     "nxsem_tickwait nxsem_wait_uninterruptible nxsem_wait_slow"},
    {CallClass::Semaphores, std::nullopt,
     "sem_post sem_trywait sem_destroy sem_setprotocol nxsem_post nxsem_trywait nxsem_destroy "
     "nxsem_set_protocol nxsem_post_slow"},
    {CallClass::DataQueues, StateCode::DataQueue,
     "mq_send mq_timedsend mq_receive mq_timedreceive nxmq_send nxmq_timedsend nxmq_receive "
     "nxmq_timedreceive"},
    {CallClass::DataQueues, std::nullopt, "mq_open mq_close mq_notify mq_unlink"},
    {CallClass::MessageBuffers, StateCode::MessageBuffer,
     "read write pread pwrite readv writev recv recvfrom recvmsg send sendto sendmsg accept "
     "accept4 connect sendfile"},
    {CallClass::Mutexes, StateCode::Mutex,
     "pthread_mutex_lock pthread_mutex_timedlock pthread_cond_wait pthread_cond_clockwait "
     "nxmutex_lock"},
    {CallClass::Mutexes, std::nullopt,
     "pthread_mutex_unlock pthread_mutex_trylock pthread_cond_signal pthread_cond_broadcast "
     "nxmutex_unlock"},
    {CallClass::TimerManagement, std::nullopt,
     "timer_create timer_settime timer_gettime timer_delete clock_gettime clock_settime "
     "gettimeofday timerfd_create timerfd_settime"},
    {CallClass::SystemManagement, std::nullopt, "ioctl prctl uname sysinfo boardctl"},
};

constexpr std::string_view kNeverReturn[] = {"exit", "_exit", "pthread_exit"};

class NuttxKernel final : public EventKernel {
  public:
    std::string_view Name() const override { return "NuttX"; }
    int Priority() const override { return 0; }
    std::string_view SwitchEvents() const override { return "sched_switch"; }
    bool RecordsStates() const override { return true; }
    bool NamesByAddress() const override { return false; }
    bool LargerIsMoreUrgent() const override { return true; }

    service::CallInfo FindCall(std::string_view name) const override {
        static const CallTable table(kCalls, kNeverReturn);
        const auto* info = table.Find(name);
        return info ? *info : service::CallInfo();
    }
    // Its events are Linux's by name: only the form of the text tells the two apart.
    bool Recognises(const EventNames& /*events*/) const override { return false; }
    bool Plan(const EventShape& shape, const EventNames& /*all*/, EventPlan& plan) const override {
        return linux_kernel::PlanEvent(shape, plan);
    }
    TaskState StateOf(std::uint64_t state) const override {
        return linux_kernel::Kernel().StateOf(state);
    }
    std::string ContextName(ContextKind kind, std::uint64_t id,
                            std::string_view told) const override {
        const auto number = static_cast<unsigned long long>(id);
        if (kind == ContextKind::Task) return std::string(told);
        auto name = FormatText("irq %llu", number);
        return told.empty() ? name : name.append(" ").append(told);
    }
};

}  // namespace

const EventKernel& Kernel() {
    static const NuttxKernel kernel;
    return kernel;
}

}  // namespace kvx::kernels::nuttx
