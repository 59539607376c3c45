#pragma once
// Keeps the program alive when somebody cuts a file short that is mapped, as a target does that
// writes its log anew: what is gone reads as zeros from then on.

#include <cstddef>

namespace kvx::os {

// From any thread. More files than fit into a small table are not guarded.
void GuardMapping(const void* data, std::size_t size);
void UnguardMapping(const void* data);

}  // namespace kvx::os
