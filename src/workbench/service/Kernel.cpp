#include "workbench/service/Kernel.h"

namespace kvx::service {
namespace {

class Nameless final : public Kernel {
  public:
    std::string_view Name() const override { return "unknown"; }
    CallInfo FindCall(std::string_view /*name*/) const override { return {}; }
};

}  // namespace

const Kernel& UnknownKernel() {
    static const Nameless kernel;
    return kernel;
}

}  // namespace kvx::service
