#include "workbench/kernels/ErrnoName.h"

#include <cstring>

namespace kvx::kernels {
namespace {

constexpr std::int64_t kLast = 4095;  // what lies below is an address or a count

}  // namespace

std::string ErrnoName(std::int64_t result) {
    if (result >= 0 || result < -kLast) return {};
    const char* name = strerrorname_np(static_cast<int>(-result));
    return name ? std::string("-") + name : std::to_string(result);
}

}  // namespace kvx::kernels
