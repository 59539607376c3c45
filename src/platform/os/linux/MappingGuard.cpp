#include "platform/os/linux/MappingGuard.h"

#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>
#include <cstdint>

namespace kvx::os {
namespace {

constexpr std::uintptr_t kFree = 0;
constexpr std::uintptr_t kClaimed = 1;

struct Range {
    std::atomic<std::uintptr_t> begin{kFree};
    std::atomic<std::size_t> size{0};
};

constexpr std::size_t kMostFiles = 16;
std::array<Range, kMostFiles> ranges;
std::uintptr_t pageSize = 4096;

// What lies behind the place that is gone is gone too. Only system calls: it runs inside a signal.
bool ReplaceByZeros(std::uintptr_t address) {
    for (const Range& range : ranges) {
        const std::uintptr_t begin = range.begin;
        const std::uintptr_t end = begin + range.size;
        if (begin <= kClaimed || address < begin || address >= end) continue;
        const std::uintptr_t page = address & ~(pageSize - 1);
        return mmap(reinterpret_cast<void*>(page), end - page, PROT_READ,
                    MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0) != MAP_FAILED;
    }
    return false;
}

// A fault elsewhere happens again on return, and then ends the program as it should.
void OnBusError(int signal, siginfo_t* info, void*) {
    if (ReplaceByZeros(reinterpret_cast<std::uintptr_t>(info->si_addr))) return;
    std::signal(signal, SIG_DFL);
}

bool Install() {
    pageSize = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    struct sigaction action = {};
    action.sa_sigaction = OnBusError;
    action.sa_flags = SA_SIGINFO;
    return sigaction(SIGBUS, &action, nullptr) == 0;
}

}  // namespace

void GuardMapping(const void* data, std::size_t size) {
    static const bool installed = Install();
    if (!installed) return;
    for (Range& range : ranges) {
        std::uintptr_t free = kFree;
        if (!range.begin.compare_exchange_strong(free, kClaimed)) continue;
        range.size = size;
        range.begin = reinterpret_cast<std::uintptr_t>(data);
        return;
    }
}

void UnguardMapping(const void* data) {
    for (Range& range : ranges) {
        auto begin = reinterpret_cast<std::uintptr_t>(data);
        if (range.begin.compare_exchange_strong(begin, kFree)) return;
    }
}

}  // namespace kvx::os
