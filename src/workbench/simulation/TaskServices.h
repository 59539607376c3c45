#pragma once
// Services that manage tasks and let them wait for each other.

#include "workbench/simulation/Service.h"

namespace kvx::simulation {

inline constexpr std::int32_t TSK_SELF = 0;
inline constexpr std::int32_t kMostRequests = 7;  // activations, and wake-ups, that are queued

extern const ServiceOf<1> act_tsk, iact_tsk, can_act, ter_tsk, get_pri;
extern const ServiceOf<2> chg_pri;
extern const ServiceOf<0> ext_tsk;  // what a program does that ends

extern const ServiceOf<0> slp_tsk;
extern const ServiceOf<1> tslp_tsk, dly_tsk;
extern const ServiceOf<1> wup_tsk, iwup_tsk, can_wup, rel_wai, irel_wai, sus_tsk, rsm_tsk;
extern const ServiceOf<1> rot_rdq, irot_rdq;

}  // namespace kvx::simulation
