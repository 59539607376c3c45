// The index of kernels: one line each. Text logs whose form belongs to one kernel name it
// themselves.

#include <algorithm>
#include <array>

#include "workbench/kernels/KnownKernels.h"
#include "workbench/kernels/freertos/FreeRtos.h"
#include "workbench/kernels/itron/Itron.h"
#include "workbench/kernels/linux_kernel/LinuxKernel.h"
#include "workbench/kernels/nuttx/Nuttx.h"
#include "workbench/kernels/osek/Osek.h"
#include "workbench/kernels/threadx/ThreadX.h"
#include "workbench/kernels/zephyr/Zephyr.h"

namespace kvx::kernels {
namespace {

constexpr std::array kKernels = {
    &zephyr::Kernel,
    &linux_kernel::Kernel,
};

constexpr std::array kAll = {
    +[]() -> const service::Kernel& { return itron::Kernel(); },
    +[]() -> const service::Kernel& { return linux_kernel::Kernel(); },
    +[]() -> const service::Kernel& { return nuttx::Kernel(); },
    +[]() -> const service::Kernel& { return osek::Kernel(); },
    // Two kernels have the name: the one whose calls are known comes first.
    +[]() -> const service::Kernel& { return freertos::Kernel(); },
    +[]() -> const service::Kernel& { return osek::FreeRtos(); },
    +[]() -> const service::Kernel& { return threadx::Kernel(); },
    +[]() -> const service::Kernel& { return zephyr::Kernel(); },
    &service::UnknownKernel,
};

}  // namespace

const service::Kernel* FindKernelNamed(std::string_view name) {
    for (const auto kernel : kAll)
        if (kernel().Name() == name) return &kernel();
    return nullptr;
}

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
