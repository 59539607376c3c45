#pragma once
// Services of the kernel's clock, and those that keep interrupts away.

#include "workbench/simulation/Service.h"

namespace kvx::simulation {

extern const ServiceOf<1> sta_cyc, stp_cyc;
extern const ServiceOf<2> sta_alm;
extern const ServiceOf<1> stp_alm;
extern const ServiceOf<0> get_tim;  // milliseconds

extern const ServiceOf<0> loc_cpu, unl_cpu;
extern const ServiceOf<1> dis_int, ena_int;

}  // namespace kvx::simulation
