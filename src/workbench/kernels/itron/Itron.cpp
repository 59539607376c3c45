#include "workbench/kernels/itron/Itron.h"

#include <algorithm>

#include "workbench/kernels/CallTable.h"

namespace kvx::kernels::itron {
namespace {

using host::CallClass;
using host::StateCode;

// The forms that begin with i, m and im are derived.
constexpr CallGroup kCalls[] = {
    {CallClass::TaskManagement, std::nullopt,
     "cre_tsk acre_tsk del_tsk act_tsk can_act get_tst sta_tsk ter_tsk chg_pri chg_spr get_pri "
     "get_inf ref_tsk ref_tst mig_tsk def_tex ras_tex dis_tex ena_tex sns_tex ref_tex ext_tsk "
     "exd_tsk"},
    {CallClass::TaskSynchronization, StateCode::Sleeping, "slp_tsk tslp_tsk"},
    {CallClass::TaskSynchronization, StateCode::Delay, "dly_tsk"},
    {CallClass::TaskSynchronization, std::nullopt,
     "wup_tsk can_wup rel_wai sus_tsk rsm_tsk frsm_tsk dis_wai ena_wai"},
    {CallClass::EventFlags, StateCode::EventFlag, "wai_flg twai_flg"},
    {CallClass::EventFlags, std::nullopt,
     "cre_flg acre_flg del_flg set_flg clr_flg pol_flg ini_flg ref_flg"},
    {CallClass::Semaphores, StateCode::Semaphore, "wai_sem twai_sem"},
    {CallClass::Semaphores, std::nullopt,
     "cre_sem acre_sem del_sem sig_sem pol_sem ini_sem ref_sem"},
    {CallClass::Mailboxes, StateCode::Mailbox, "rcv_mbx trcv_mbx"},
    {CallClass::Mailboxes, std::nullopt,
     "cre_mbx acre_mbx del_mbx snd_mbx prcv_mbx ini_mbx ref_mbx"},
    {CallClass::DataQueues, StateCode::DataQueue,
     "snd_dtq tsnd_dtq rcv_dtq trcv_dtq snd_pdq tsnd_pdq rcv_pdq trcv_pdq"},
    {CallClass::DataQueues, StateCode::VariableDataQueue, "vsnd_dtq vtsnd_dtq vrcv_dtq vtrcv_dtq"},
    {CallClass::DataQueues, std::nullopt,
     "cre_dtq acre_dtq del_dtq psnd_dtq fsnd_dtq prcv_dtq ini_dtq ref_dtq cre_pdq acre_pdq del_pdq "
     "psnd_pdq prcv_pdq ini_pdq ref_pdq vpsnd_dtq vfsnd_dtq vprcv_dtq vref_dtq vrst_dtq"},
    {CallClass::MessageBuffers, StateCode::MessageBuffer,
     "snd_mbf tsnd_mbf rcv_mbf trcv_mbf cal_por tcal_por acp_por tacp_por"},
    {CallClass::MessageBuffers, std::nullopt,
     "cre_mbf acre_mbf del_mbf psnd_mbf prcv_mbf ini_mbf ref_mbf cre_por acre_por del_por pacp_por "
     "fwd_por rpl_rdv ref_por ref_rdv"},
    {CallClass::Mutexes, StateCode::Mutex, "loc_mtx tloc_mtx"},
    {CallClass::Mutexes, std::nullopt,
     "cre_mtx acre_mtx del_mtx ploc_mtx unl_mtx ini_mtx ref_mtx acre_spn del_spn ini_spn loc_spn "
     "try_spn unl_spn ref_spn"},
    {CallClass::MemoryManagement, StateCode::FixedPool, "get_mpf tget_mpf"},
    {CallClass::MemoryManagement, StateCode::VariablePool, "get_mpl tget_mpl"},
    {CallClass::MemoryManagement, std::nullopt,
     "cre_mpf acre_mpf del_mpf pget_mpf rel_mpf ini_mpf ref_mpf cre_mpl acre_mpl del_mpl pget_mpl "
     "rel_mpl ini_mpl ref_mpl"},
    {CallClass::InterruptManagement, std::nullopt,
     "def_inh att_isr cre_isr acre_isr del_isr ref_isr cfg_int dis_int ena_int clr_int ras_int "
     "prb_int ref_int chg_ixx get_ixx chg_ims get_ims chg_ipm get_ipm"},
    {CallClass::TimerManagement, std::nullopt,
     "set_tim get_tim adj_tim sig_tim get_utm fch_hrt cre_cyc acre_cyc del_cyc sta_cyc stp_cyc "
     "ref_cyc cre_alm acre_alm del_alm sta_alm stp_alm ref_alm def_ovr sta_ovr stp_ovr ref_ovr"},
    {CallClass::SystemManagement, std::nullopt,
     "rot_rdq get_tid get_pid get_did get_lod get_nth loc_cpu unl_cpu dis_dsp ena_dsp sns_ctx "
     "sns_loc sns_dsp sns_dpn sns_ker xsns_dpn xsns_xpn ref_sys vsys_dwn def_svc cal_svc def_exc "
     "ref_cfg ref_ver sta_ker ext_ker"},
};

constexpr std::string_view kNeverReturn[] = {"ext_tsk", "exd_tsk", "ext_ker"};

struct NamedUse {
    std::string_view call;
    service::CallUse use;
};
constexpr NamedUse kUses[] = {
    {"wai_sem", service::CallUse::Takes},  {"twai_sem", service::CallUse::Takes},
    {"pol_sem", service::CallUse::Takes},  {"sig_sem", service::CallUse::Gives},
    {"loc_mtx", service::CallUse::Takes},  {"tloc_mtx", service::CallUse::Takes},
    {"ploc_mtx", service::CallUse::Takes}, {"unl_mtx", service::CallUse::Gives},
    {"loc_spn", service::CallUse::Takes},  {"try_spn", service::CallUse::Takes},
    {"unl_spn", service::CallUse::Gives},  {"act_tsk", service::CallUse::Starts},
    {"sta_tsk", service::CallUse::Starts}, {"wup_tsk", service::CallUse::Starts},
};

struct NamedError {
    std::int64_t code;
    const char* name;
};
constexpr NamedError kErrors[] = {
    {-5, "E_SYS"},     {-9, "E_NOSPT"},  {-10, "E_RSFN"},  {-11, "E_RSATR"}, {-17, "E_PAR"},
    {-18, "E_ID"},     {-25, "E_CTX"},   {-26, "E_MACV"},  {-27, "E_OACV"},  {-28, "E_ILUSE"},
    {-33, "E_NOMEM"},  {-34, "E_NOID"},  {-35, "E_NORES"}, {-41, "E_OBJ"},   {-42, "E_NOEXS"},
    {-43, "E_QOVR"},   {-49, "E_RLWAI"}, {-50, "E_TMOUT"}, {-51, "E_DLT"},   {-52, "E_CLS"},
    {-53, "E_RASTER"}, {-57, "E_WBLK"},  {-58, "E_BOVR"},
};

const CallTable& Calls() {
    static const CallTable table(kCalls, kNeverReturn);
    return table;
}

// The name without the letters of its handler and processor forms, if that is a known call.
std::string_view Base(std::string_view name) {
    if (Calls().Find(name)) return name;
    for (const std::string_view form : {"im", "i", "m"}) {
        if (!name.starts_with(form)) continue;
        const auto rest = name.substr(form.size());
        if (Calls().Find(rest)) return rest;
    }
    return name;
}

class Itron final : public service::Kernel {
  public:
    std::string_view Name() const override { return "ITRON"; }
    service::CallInfo FindCall(std::string_view name) const override {
        const auto* info = Calls().Find(Base(name));
        return info ? *info : service::CallInfo();
    }
    service::CallUse UseOf(std::string_view call) const override {
        const auto at = std::ranges::find(kUses, Base(call), &NamedUse::call);
        return at == std::end(kUses) ? service::CallUse::None : at->use;
    }
    std::string ErrorName(std::int64_t result) const override {
        const auto at = std::ranges::find(kErrors, result, &NamedError::code);
        return at == std::end(kErrors) ? service::Kernel::ErrorName(result) : at->name;
    }
    bool SameCall(std::string_view one, std::string_view other) const override {
        return one == other || Base(one) == Base(other);
    }
};

}  // namespace

const service::Kernel& Kernel() {
    static const Itron kernel;
    return kernel;
}

std::string_view CallPrefix(std::string_view text) {
    const auto end = std::min(text.find_first_not_of("abcdefghijklmnopqrstuvwxyz_"), text.size());
    for (auto length = end; length > 0; --length) {
        const auto name = text.substr(0, length);
        if (Calls().Find(Base(name))) return name;
    }
    return {};
}

}  // namespace kvx::kernels::itron
