// The index of kernels: one line each. Text logs whose form belongs to one kernel name it
// themselves.

#include <algorithm>
#include <array>

#include "workbench/kernels/KnownKernels.h"
#include "workbench/kernels/linux_kernel/LinuxKernel.h"
#include "workbench/kernels/zephyr/Zephyr.h"

namespace kvx::kernels {
namespace {

constexpr std::array kKernels = {
    &zephyr::Kernel,
    &linux_kernel::Kernel,
};

}  // namespace

const EventKernel* FindKernel(const EventNames& events) {
    const EventKernel* found = nullptr;
    for (const auto kernel : kKernels)
        if (kernel().Recognises(events) && (!found || kernel().Priority() > found->Priority()))
            found = &kernel();
    return found;
}

std::string KnownSwitchEvents() {
    std::string known;
    for (const auto kernel : kKernels)
        known.append(known.empty() ? "" : ", ")
            .append(kernel().SwitchEvents())
            .append(" (")
            .append(kernel().Name())
            .append(")");
    return known;
}

}  // namespace kvx::kernels
