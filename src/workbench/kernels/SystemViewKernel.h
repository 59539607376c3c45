#pragma once
// A kernel whose recordings name calls by numbers: whose numbers, and what the causes mean for
// which a task stops being ready.

#include <cstdint>
#include <string>
#include <string_view>

#include "workbench/service/Kernel.h"
#include "workbench/service/Record.h"

namespace kvx::kernels {

class SystemViewKernel : public service::Kernel {
  public:
    // The file that describes its calls; empty: it has none.
    virtual std::string_view DescriptionFile() const = 0;
    // The name of a call in one of its numberings; empty: not known. numbering: empty where the
    // recording does not tell, or the kernel has only one.
    virtual std::string_view CallName(std::string_view numbering, std::uint32_t call) const = 0;
    // The numbering in which the call of that name has that number; empty: it does not tell.
    virtual std::string_view NumberingOf(std::string_view /*name*/, std::uint32_t /*call*/) const {
        return {};
    }
    // True: a call is recorded when it is issued, and again when it returns.
    virtual bool RecordsReturns() const { return false; }
    // The call gives a task, its first value, the priority that is its second.
    virtual bool SetsPriority(std::string_view /*name*/) const { return false; }
};

// That of a recording which does not say what wrote it.
const SystemViewKernel& BareKernel();
// By the name that the recording gives its operating system; the bare one for any other.
const SystemViewKernel& FindSystemViewKernel(std::string_view name);

}  // namespace kvx::kernels
