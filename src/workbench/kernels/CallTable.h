#pragma once
// The calls of a kernel by name.

#include <optional>
#include <span>
#include <string_view>
#include <unordered_map>

#include "workbench/service/Kernel.h"

namespace kvx::kernels {

// Calls of one class in which a task waits for the same thing, separated by blanks.
struct CallGroup {
    host::CallClass cls;
    std::optional<host::StateCode> wait;  // none: they are not known to wait
    std::string_view names;
};

class CallTable {
  public:
    // neverReturn: those of the calls that have no return. The texts must outlive the table.
    CallTable(std::span<const CallGroup> groups, std::span<const std::string_view> neverReturn);

    // Null: not one of the kernel's.
    const service::CallInfo* Find(std::string_view name) const;

  private:
    std::unordered_map<std::string_view, service::CallInfo> calls_;
};

}  // namespace kvx::kernels
