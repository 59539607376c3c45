#include "platform/os/ReservedMemory.h"

#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <map>
#include <mutex>
#include <new>
#include <shared_mutex>

namespace kvx::os {
namespace {

// The system wants to be told which part of a reservation is used. The first touch of a part tells
// us, as a fault: it is answered by committing the part, and the access happens again.
constexpr std::uintptr_t kPart = std::uintptr_t{1} << 18;

class Reservations {
  public:
    static Reservations& Instance() {
        static Reservations all;
        return all;
    }

    void Add(void* data, std::size_t bytes) {
        const std::unique_lock lock(mutex_);
        ranges_[reinterpret_cast<std::uintptr_t>(data)] = bytes;
    }
    void Remove(void* data) {
        const std::unique_lock lock(mutex_);
        ranges_.erase(reinterpret_cast<std::uintptr_t>(data));
    }
    // False: not in a reservation, or the system has no memory left.
    bool Commit(std::uintptr_t address) {
        const std::shared_lock lock(mutex_);
        const auto after = ranges_.upper_bound(address);
        if (after == ranges_.begin()) return false;
        const auto [begin, bytes] = *std::prev(after);
        if (address - begin >= bytes) return false;
        const std::uintptr_t part = begin + (address - begin) / kPart * kPart;
        const std::uintptr_t end = std::min(part + kPart, begin + bytes);
        return VirtualAlloc(reinterpret_cast<void*>(part), end - part, MEM_COMMIT,
                            PAGE_READWRITE) != nullptr;
    }

  private:
    Reservations() : handler_(AddVectoredExceptionHandler(1, OnFault)) {}
    ~Reservations() { RemoveVectoredExceptionHandler(handler_); }

    static LONG CALLBACK OnFault(EXCEPTION_POINTERS* fault) {
        const EXCEPTION_RECORD& record = *fault->ExceptionRecord;
        if (record.ExceptionCode != EXCEPTION_ACCESS_VIOLATION || record.NumberParameters < 2)
            return EXCEPTION_CONTINUE_SEARCH;
        return Instance().Commit(record.ExceptionInformation[1]) ? EXCEPTION_CONTINUE_EXECUTION
                                                                 : EXCEPTION_CONTINUE_SEARCH;
    }

    std::shared_mutex mutex_;
    std::map<std::uintptr_t, std::size_t> ranges_;
    void* handler_;
};

}  // namespace

ReservedMemory::ReservedMemory(std::size_t bytes) : bytes_(bytes) {
    if (bytes == 0) return;
    data_ = VirtualAlloc(nullptr, bytes, MEM_RESERVE, PAGE_READWRITE);
    if (!data_) throw std::bad_alloc();
    Reservations::Instance().Add(data_, bytes);
}

ReservedMemory::~ReservedMemory() {
    if (!data_) return;
    Reservations::Instance().Remove(data_);
    VirtualFree(data_, 0, MEM_RELEASE);
}

}  // namespace kvx::os
