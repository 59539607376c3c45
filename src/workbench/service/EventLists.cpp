#include "workbench/service/EventLists.h"

#include <algorithm>
#include <stdexcept>

namespace kvx::service {
namespace {

constexpr std::uint32_t kFirstCapacity = 8;
// A list that has this many events gets room so generously that it rarely has to move again: room
// that is not written to costs nothing.
constexpr std::uint32_t kLarge = 4096;
constexpr std::uint32_t kLargeGrowth = 16;
constexpr std::size_t kRegionEvents = std::size_t{64} << 20;

}  // namespace

void EventLists::Append(std::uint32_t context, std::uint32_t event) {
    if (context == 0xFFFFFFFFu) throw std::length_error("an event of no context");
    while (lists_.size() <= context) lists_.Append();
    List& list = lists_[context];
    const auto count = list.count.load(std::memory_order_relaxed);
    if (count == list.capacity) Grow(list, count);
    list.events.load(std::memory_order_relaxed)[count] = event;
    // A reader that sees the count sees the events below it, and a place that holds as many.
    list.count.store(count + 1, std::memory_order_release);
    ++used_;
}

// The old place is left as it is: somebody may be reading there.
void EventLists::Grow(List& list, std::uint32_t count) {
    const auto growth = count >= kLarge ? kLargeGrowth : 2;
    const auto wanted = std::max<std::uint64_t>(kFirstCapacity, std::uint64_t{count} * growth);
    const auto capacity = static_cast<std::uint32_t>(std::min<std::uint64_t>(wanted, 0xFFFFFFFFu));
    std::uint32_t* const place = Take(capacity);
    std::copy_n(list.events.load(std::memory_order_relaxed), count, place);
    used_ += count;
    list.events.store(place, std::memory_order_release);
    list.capacity = capacity;
}

std::uint32_t* EventLists::Take(std::size_t events) {
    if (regions_.empty() || regions_.back().Bytes() / sizeof(std::uint32_t) - taken_ < events) {
        regions_.emplace_back(std::max(events, kRegionEvents) * sizeof(std::uint32_t));
        taken_ = 0;
    }
    auto* const place = static_cast<std::uint32_t*>(regions_.back().Data()) + taken_;
    taken_ += events;
    return place;
}

host::EventList EventLists::Of(std::uint32_t context, std::uint32_t end) const {
    if (context >= lists_.size()) return {};
    const List& list = lists_[context];
    const auto count = list.count.load(std::memory_order_acquire);
    const auto* events = list.events.load(std::memory_order_acquire);
    if (count == 0 || events[count - 1] < end) return {events, count};
    const auto* behind = std::lower_bound(events, events + count, end);
    return {events, static_cast<std::uint32_t>(behind - events)};
}

std::size_t EventLists::Bytes() const {
    return used_ * sizeof(std::uint32_t) + lists_.size() * sizeof(List);
}

}  // namespace kvx::service
