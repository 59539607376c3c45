// Text logs of both ITRON formats.

#include <sys/mman.h>
#include <unistd.h>

#include "fuzz/DecodeAll.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const int file = memfd_create("log", MFD_CLOEXEC);
    if (file < 0 || write(file, data, size) != static_cast<ssize_t>(size)) std::abort();
    kvx::fuzz::DecodeAll("/proc/self/fd/" + std::to_string(file));
    close(file);
    return 0;
}
