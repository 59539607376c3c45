#include "workbench/kernels/SystemViewKernel.h"

#include <array>

#include "workbench/kernels/freertos/FreeRtos.h"
#include "workbench/kernels/zephyr/Zephyr.h"

namespace kvx::kernels {
namespace {

class Bare final : public SystemViewKernel {
  public:
    std::string_view Name() const override { return "bare"; }
    service::CallInfo FindCall(std::string_view /*name*/) const override { return {}; }
    std::string_view DescriptionFile() const override { return {}; }
    std::string_view CallName(std::string_view, std::uint32_t) const override { return {}; }
};

constexpr std::array kKernels = {&freertos::Kernel, &zephyr::KernelOfSystemView};

}  // namespace

const SystemViewKernel& BareKernel() {
    static const Bare kernel;
    return kernel;
}

const SystemViewKernel& FindSystemViewKernel(std::string_view name) {
    for (const auto kernel : kKernels)
        if (name.starts_with(kernel().Name())) return kernel();
    return BareKernel();
}

}  // namespace kvx::kernels
