#pragma once
// What is known of system calls by their names: class, what a task waits for in them.

#include <cstdint>
#include <string_view>

namespace kvx::service {

struct CallInfo {
    std::uint8_t cls = 13;      // class code 1 to 13
    std::uint8_t waitCode = 0;  // state code of a wait in the call; 0: it is not known to wait
    bool returns = true;        // false: such as ext_tsk
};

// Calls of ITRON kernels with their forms for handlers (i...) and for other processors (m...,
// im...), of Zephyr by the object that they begin with, and of Linux.
CallInfo FindCall(std::string_view name);

// Whether a return under one name can belong to a call under the other: the same call but for the
// letters that tell handler and processor forms (irot_rdq, imrot_rdq).
bool SameCall(std::string_view one, std::string_view other);

// The longest known ITRON call that text begins with; empty when there is none.
std::string_view CallPrefix(std::string_view text);

}  // namespace kvx::service
