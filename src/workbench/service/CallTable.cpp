#include "workbench/service/CallTable.h"

#include <algorithm>
#include <array>
#include <string>
#include <unordered_map>

namespace kvx::service {
namespace {

// Calls of one class that wait for the same thing, separated by blanks.
struct Group {
    std::uint8_t cls;
    std::uint8_t waitCode;
    std::string_view names;
};

// The forms that begin with i, m and im are derived.
constexpr Group kItron[] = {
    {1, 0,
     "cre_tsk acre_tsk del_tsk act_tsk can_act get_tst sta_tsk ter_tsk chg_pri chg_spr get_pri "
     "get_inf ref_tsk ref_tst mig_tsk def_tex ras_tex dis_tex ena_tex sns_tex ref_tex ext_tsk "
     "exd_tsk"},
    {2, 3, "slp_tsk tslp_tsk"},
    {2, 4, "dly_tsk"},
    {2, 0, "wup_tsk can_wup rel_wai sus_tsk rsm_tsk frsm_tsk dis_wai ena_wai"},
    {3, 5, "wai_flg twai_flg"},
    {3, 0, "cre_flg acre_flg del_flg set_flg clr_flg pol_flg ini_flg ref_flg"},
    {4, 6, "wai_sem twai_sem"},
    {4, 0, "cre_sem acre_sem del_sem sig_sem pol_sem ini_sem ref_sem"},
    {5, 7, "rcv_mbx trcv_mbx"},
    {5, 0, "cre_mbx acre_mbx del_mbx snd_mbx prcv_mbx ini_mbx ref_mbx"},
    {6, 8, "snd_dtq tsnd_dtq rcv_dtq trcv_dtq snd_pdq tsnd_pdq rcv_pdq trcv_pdq"},
    {6, 9, "vsnd_dtq vtsnd_dtq vrcv_dtq vtrcv_dtq"},
    {6, 0,
     "cre_dtq acre_dtq del_dtq psnd_dtq fsnd_dtq prcv_dtq ini_dtq ref_dtq cre_pdq acre_pdq del_pdq "
     "psnd_pdq prcv_pdq ini_pdq ref_pdq vpsnd_dtq vfsnd_dtq vprcv_dtq vref_dtq vrst_dtq"},
    {7, 11, "snd_mbf tsnd_mbf rcv_mbf trcv_mbf cal_por tcal_por acp_por tacp_por"},
    {7, 0,
     "cre_mbf acre_mbf del_mbf psnd_mbf prcv_mbf ini_mbf ref_mbf cre_por acre_por del_por pacp_por "
     "fwd_por rpl_rdv ref_por ref_rdv"},
    {8, 12, "loc_mtx tloc_mtx"},
    {8, 0,
     "cre_mtx acre_mtx del_mtx ploc_mtx unl_mtx ini_mtx ref_mtx acre_spn del_spn ini_spn loc_spn "
     "try_spn unl_spn ref_spn"},
    {9, 10, "get_mpf tget_mpf"},
    {9, 13, "get_mpl tget_mpl"},
    {9, 0,
     "cre_mpf acre_mpf del_mpf pget_mpf rel_mpf ini_mpf ref_mpf cre_mpl acre_mpl del_mpl pget_mpl "
     "rel_mpl ini_mpl ref_mpl"},
    {10, 0,
     "def_inh att_isr cre_isr acre_isr del_isr ref_isr cfg_int dis_int ena_int clr_int ras_int "
     "prb_int ref_int chg_ixx get_ixx chg_ims get_ims chg_ipm get_ipm"},
    {11, 0,
     "set_tim get_tim adj_tim sig_tim get_utm fch_hrt cre_cyc acre_cyc del_cyc sta_cyc stp_cyc "
     "ref_cyc cre_alm acre_alm del_alm sta_alm stp_alm ref_alm def_ovr sta_ovr stp_ovr ref_ovr"},
    {12, 0,
     "rot_rdq get_tid get_pid get_did get_lod get_nth loc_cpu unl_cpu dis_dsp ena_dsp sns_ctx "
     "sns_loc sns_dsp sns_dpn sns_ker xsns_dpn xsns_xpn ref_sys vsys_dwn def_svc cal_svc def_exc "
     "ref_cfg ref_ver sta_ker ext_ker"},
};

constexpr Group kLinux[] = {
    {1, 0,
     "fork vfork clone clone3 execve execveat kill tkill tgkill setpriority getpriority getpid "
     "gettid getppid sched_setaffinity sched_getaffinity sched_setscheduler exit exit_group"},
    {1, 3, "wait4 waitid waitpid pause rt_sigsuspend rt_sigtimedwait"},
    {2, 4, "nanosleep clock_nanosleep"},
    {2, 0, "sched_yield"},
    {3, 5, "poll ppoll select pselect6 epoll_wait epoll_pwait epoll_pwait2"},
    {3, 0, "epoll_ctl epoll_create epoll_create1 eventfd eventfd2"},
    {4, 6, "semop semtimedop"},
    {4, 0, "semget semctl"},
    {6, 8, "msgsnd msgrcv mq_timedsend mq_timedreceive"},
    {7, 11,
     "read write readv writev pread64 pwrite64 recv recvfrom recvmsg send sendto sendmsg accept "
     "accept4 connect splice sendfile"},
    {8, 12, "futex"},
    {9, 13, "mmap munmap mremap brk mprotect madvise"},
    {11, 0,
     "timer_create timer_settime timer_gettime timer_delete timerfd_create timerfd_settime alarm "
     "setitimer clock_gettime gettimeofday"},
    {12, 0, "ioctl prctl sysinfo uname syslog"},
};

// Zephyr's calls by what they begin with.
struct Prefix {
    std::string_view begin;
    CallInfo info;
};
constexpr Prefix kZephyr[] = {
    {"thread_", {1, 3}},   {"sleep", {2, 4}},    {"usleep", {2, 4}},     {"msleep", {2, 4}},
    {"busy_wait", {2, 0}}, {"yield", {2, 0}},    {"wakeup", {2, 0}},     {"event", {3, 5}},
    {"poll_", {3, 5}},     {"sem_", {4, 6}},     {"semaphore_", {4, 6}}, {"mbox", {5, 7}},
    {"mailbox", {5, 7}},   {"fifo", {5, 7}},     {"lifo", {5, 7}},       {"queue", {5, 7}},
    {"stack_", {5, 7}},    {"msgq", {6, 8}},     {"pipe", {7, 11}},      {"stream", {7, 11}},
    {"mutex", {8, 12}},    {"condvar", {8, 12}}, {"futex_", {8, 12}},    {"mem_slab", {9, 10}},
    {"slab", {9, 10}},     {"heap", {9, 13}},    {"sys_heap", {9, 13}},  {"mempool", {9, 13}},
    {"irq", {10, 0}},      {"timer_", {11, 4}},  {"work", {12, 3}},      {"pm_", {12, 0}},
};

constexpr std::string_view kNeverReturns[] = {"ext_tsk", "exd_tsk", "ext_ker", "exit",
                                              "exit_group"};

using Table = std::unordered_map<std::string_view, CallInfo>;

template <std::size_t N>
Table MakeTable(const Group (&groups)[N]) {
    Table table;
    for (const auto& group : groups) {
        for (std::size_t at = 0; at < group.names.size();) {
            const auto end = std::min(group.names.find(' ', at), group.names.size());
            const auto name = group.names.substr(at, end - at);
            const bool returns = std::ranges::find(kNeverReturns, name) == std::end(kNeverReturns);
            table[name] = {group.cls, group.waitCode, returns};
            at = end + 1;
        }
    }
    return table;
}

const Table& ItronTable() {
    static const Table table = MakeTable(kItron);
    return table;
}

const CallInfo* Find(const Table& table, std::string_view name) {
    const auto at = table.find(name);
    return at == table.end() ? nullptr : &at->second;
}

// The name without the letters of its handler and processor forms, if that is a known call.
std::string_view Base(std::string_view name) {
    if (Find(ItronTable(), name)) return name;
    for (const auto form : {"im", "i", "m"})
        if (name.starts_with(form)) {
            const auto rest = name.substr(std::string_view(form).size());
            if (Find(ItronTable(), rest)) return rest;
        }
    return name;
}

}  // namespace

CallInfo FindCall(std::string_view name) {
    static const Table linuxCalls = MakeTable(kLinux);
    if (const auto* info = Find(ItronTable(), Base(name))) return *info;
    if (const auto* info = Find(linuxCalls, name)) return *info;
    for (const auto& prefix : kZephyr)
        if (name.starts_with(prefix.begin)) return prefix.info;
    return {};
}

bool SameCall(std::string_view one, std::string_view other) {
    return one == other || Base(one) == Base(other);
}

std::string_view CallPrefix(std::string_view text) {
    const auto end = std::min(text.find_first_not_of("abcdefghijklmnopqrstuvwxyz_"), text.size());
    for (auto length = end; length > 0; --length) {
        const auto name = text.substr(0, length);
        if (Find(ItronTable(), Base(name))) return name;
    }
    return {};
}

}  // namespace kvx::service
