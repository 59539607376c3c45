#include "platform/os/ReservedMemory.h"

#include <sys/mman.h>

#include <new>

namespace kvx::os {

ReservedMemory::ReservedMemory(std::size_t bytes) : bytes_(bytes) {
    if (bytes == 0) return;
    void* const data = mmap(nullptr, bytes, PROT_READ | PROT_WRITE,
                            MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (data == MAP_FAILED) throw std::bad_alloc();
    data_ = data;
}

ReservedMemory::~ReservedMemory() {
    if (data_) munmap(data_, bytes_);
}

}  // namespace kvx::os
