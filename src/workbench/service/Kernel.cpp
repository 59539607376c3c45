#include "workbench/service/Kernel.h"

namespace kvx::service {
namespace {

class Nameless final : public Kernel {
  public:
    std::string_view Name() const override { return "unknown"; }
    CallInfo FindCall(std::string_view /*name*/) const override { return {}; }
};

}  // namespace

std::string Kernel::ErrorName(std::int64_t result) const {
    return result < 0 ? std::to_string(result) : std::string();
}

const Kernel& UnknownKernel() {
    static const Nameless kernel;
    return kernel;
}

}  // namespace kvx::service
