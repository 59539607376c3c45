#pragma once
// What the records of a kernel mean beyond what the file says: its calls, and what they do to the
// task that issues them. Kernels implement it (workbench/kernels), a recording names its own.

#include <cstdint>
#include <string>
#include <string_view>

#include "host/TraceCodes.h"

namespace kvx::service {

struct CallInfo {
    std::uint8_t cls = host::Code(host::CallClass::Unknown);
    std::uint8_t waitCode = 0;  // state code of a wait in the call; 0: it is not known to wait
    bool returns = true;        // false: such as ext_tsk
    bool overlaps = false;      // others may return while it is open: what it holds
    bool sleeps = false;        // who loses the processor in it waits, though no record says so
    bool yields = false;        // ... and whoever yields instead stays ready
    bool suspends = false;      // who stops being ready by it is suspended
    // Of a kernel that records calls that wait behind their waits: recorded in front of its wait.
    bool recordedFirst = false;
};

// What a call that succeeds does to the object, or the task, that its first parameter names.
enum class CallUse : std::uint8_t {
    None,
    Takes,  // a semaphore or a mutex
    Gives,  // ... gives it back
    Starts  // a task is to begin another job
};

class Kernel {
  public:
    virtual ~Kernel() = default;

    // For people, for example "Zephyr".
    virtual std::string_view Name() const = 0;
    virtual CallInfo FindCall(std::string_view name) const = 0;
    // Whether a return under one name can belong to a call under the other.
    virtual bool SameCall(std::string_view one, std::string_view other) const {
        return one == other;
    }
    // A call that waits is recorded only when its wait is over (LateCalls.h).
    virtual bool RecordsCallsAfterWaits() const { return false; }
    // How priorities compare: where 2 is more urgent than 1.
    virtual bool LargerIsMoreUrgent() const { return false; }
    // Whether the call can release a task that waits for the call's object.
    virtual bool Releases(std::string_view /*call*/) const { return false; }
    virtual CallUse UseOf(std::string_view /*call*/) const { return CallUse::None; }
    // The name of the error that a call returned; empty: the result is none. A number below zero
    // is one of its own name where the kernel does not say otherwise.
    virtual std::string ErrorName(std::int64_t result) const;
};

// That of a recording which does not show what wrote it: no call is known.
const Kernel& UnknownKernel();

}  // namespace kvx::service
