#pragma once
// Kernels of the ITRON family: their calls with the forms for handlers (i...) and for other
// processors (m..., im...).

#include <string_view>

#include "workbench/service/Kernel.h"

namespace kvx::kernels::itron {

// Forms of one call count as the same (irot_rdq, imrot_rdq). What is not in the table is the
// application's own, whatever other kernels call by that name.
const service::Kernel& Kernel();

// The longest known call that text begins with; empty when there is none.
std::string_view CallPrefix(std::string_view text);

}  // namespace kvx::kernels::itron
