#pragma once
// The trace buffer of a ThreadX kernel as it lay in the target's memory: a header, a registry of
// object names, and a ring of events. Either byte order; nothing outside the bytes is ever read.

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/service/Result.h"

namespace kvx::formats::threadx {

// What an event has instead of a thread.
inline constexpr std::uint32_t kIdle = 0;
inline constexpr std::uint32_t kInInterrupt = 0xFFFFFFFFu;
inline constexpr std::uint32_t kInitialising = 0xF0F0F0F0u;
inline bool IsThread(std::uint32_t context) {
    return context != kIdle && context != kInInterrupt && context != kInitialising;
}

struct Event {
    std::uint32_t context = 0;   // pointer of the thread, or one of the above
    std::uint32_t priority = 0;  // of the thread; in an interrupt the thread that it interrupted
    std::uint32_t id = 0;
    std::uint32_t stamp = 0;
    std::array<std::uint32_t, 4> info{};
};

struct Object {
    std::uint32_t pointer = 0;
    std::uint8_t type = 0;
    std::array<std::uint32_t, 2> parameters{};
    std::string name;
};
inline constexpr std::uint8_t kThreadObject = 1;

class EventBuffer {
  public:
    static bool Recognises(std::string_view bytes);
    // bytes must outlive the buffer. The error says what is wrong, without the path.
    static Result<EventBuffer> Open(std::string_view bytes);

    const std::vector<Object>& Objects() const { return objects_; }
    // Events in order of time, oldest first.
    std::uint32_t Count() const { return static_cast<std::uint32_t>(slots_.size()); }
    Event At(std::uint32_t event) const { return EventAt(slots_[event]); }
    // Whether a place of the ring before the event lies outside the file.
    bool IsBehindGap(std::uint32_t event) const;
    // Places of the ring that lie outside the file.
    std::uint32_t Missing() const { return missing_; }
    // The header's place of the oldest event is none: the order is that of the buffer.
    bool IsOrderDamaged() const { return orderDamaged_; }
    // The registry lies outside the file, or its names have no possible size.
    bool IsRegistryDamaged() const { return registryDamaged_; }
    // All of them.
    std::vector<Event> Events() const;
    // Ticks from the first event to each, whichever way the counter counts.
    std::vector<std::uint64_t> Ticks(std::span<const Event> events) const;

  private:
    EventBuffer() = default;
    std::uint32_t Word(std::uint64_t offset) const;
    void ReadObjects(std::uint32_t begin, std::uint32_t end);
    std::optional<Error> ReadRing(std::uint32_t begin, std::uint32_t end, std::uint32_t oldest);
    Event EventAt(std::uint32_t slot) const;

    std::string_view bytes_;
    bool bigEndian_ = false;
    std::uint32_t base_ = 0;
    std::uint32_t mask_ = 0;
    std::uint32_t nameSize_ = 0;
    std::uint64_t ring_ = 0;  // offset of the first place
    std::vector<Object> objects_;
    std::vector<std::uint32_t> slots_;
    std::vector<std::uint32_t> gaps_;  // events before which places are missing
    std::uint32_t missing_ = 0;
    bool orderDamaged_ = false;
    bool registryDamaged_ = false;
};

}  // namespace kvx::formats::threadx
