#pragma once
// Results of kernels whose calls return negative error numbers as POSIX names them.

#include <cstdint>
#include <string>

namespace kvx::kernels {

// "-EAGAIN"; the number where it has no name; empty: the result is no error.
std::string ErrnoName(std::int64_t result);

}  // namespace kvx::kernels
