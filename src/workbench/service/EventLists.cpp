#include "workbench/service/EventLists.h"

#include <algorithm>
#include <stdexcept>

namespace kvx::service {
namespace {

// A whole block, so that blocks lie in one line of the cache each.
constexpr std::uint32_t kFirstCapacity = host::kListBlock;
constexpr std::size_t kRegionEvents = std::size_t{64} << 20;

// By what a list with so many events grows. A small list shares pages with others; the places that
// a large one has grown out of are lost, and room that is not written to costs nothing.
std::uint32_t Growth(std::uint32_t count) {
    if (count < 256) return 2;
    return count < 4096 ? 16 : 4096;
}

}  // namespace

EventLists::EventLists(int levels) {
    if (levels > 0) coarser_.reset(new EventLists(levels - 1));
}

void EventLists::Append(std::uint32_t context, std::uint32_t event) {
    if (context == 0xFFFFFFFFu) throw std::length_error("an event of no context");
    while (lists_.size() <= context) lists_.Append();
    List& list = lists_[context];
    const auto count = list.count.load(std::memory_order_relaxed);
    if (count == list.capacity) Grow(list, count);
    list.events.load(std::memory_order_relaxed)[count] = event;
    if (coarser_ && (count + 1) % host::kListBlock == 0) coarser_->Append(context, event);
    // A reader that sees the count sees the events below it, and a place that holds as many.
    list.count.store(count + 1, std::memory_order_release);
    ++used_;
}

// The old place is left as it is: somebody may be reading there.
void EventLists::Grow(List& list, std::uint32_t count) {
    const auto wanted =
        std::max<std::uint64_t>(kFirstCapacity, std::uint64_t{count} * Growth(count));
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

host::EventListLevels EventLists::LevelsOf(std::uint32_t context) const {
    host::EventListLevels levels;
    const EventLists* level = coarser_.get();
    for (auto& of : levels.of) {
        if (context >= level->lists_.size()) break;
        of = level->lists_[context].events.load(std::memory_order_acquire);
        level = level->coarser_.get();
    }
    return levels;
}

std::size_t EventLists::Bytes() const {
    return used_ * sizeof(std::uint32_t) + lists_.size() * sizeof(List) +
           (coarser_ ? coarser_->Bytes() : 0);
}

}  // namespace kvx::service
