#include "workbench/service/EventStore.h"

#include <algorithm>

#include "host/OSTraceService.h"
#include "platform/base/Text.h"

namespace kvx::service {

EventStore::EventStore(std::uint32_t most)
    : time_(most),
      end_(most),
      context_(most),
      next_(most),
      record_(most),
      kind_(most),
      code_(most),
      flags_(most),
      dispatches_(most),
      calls_(most) {}

std::uint32_t EventStore::Add(std::int64_t time, std::uint8_t kind, std::uint32_t context,
                              std::uint32_t next, std::uint8_t code, std::uint8_t flags,
                              std::uint32_t record) {
    const std::uint32_t event = Added();
    time_.push_back(time);
    end_.push_back(host::kOpenEnd);
    context_.push_back(context);
    next_.push_back(next);
    record_.push_back(record);
    kind_.push_back(kind);
    code_.push_back(code);
    flags_.push_back(flags);
    return event;
}

std::uint32_t EventStore::AddDispatch(std::int64_t time, std::uint32_t from, std::uint32_t to,
                                      std::uint32_t record) {
    const auto event = Add(time, kEventDispatch, from, to, 0, 0, record);
    if (!dispatches_.empty()) Close(dispatches_.back(), event);
    dispatches_.push_back(event);
    entered_.Append(to, event);
    return event;
}

std::uint32_t EventStore::AddState(std::int64_t time, std::uint32_t context, std::uint8_t code,
                                   std::uint8_t flags, std::uint32_t record) {
    const auto event = Add(time, kEventState, context, context, code, flags, record);
    states_.Append(context, event);
    return event;
}

std::uint32_t EventStore::AddCall(std::int64_t time, std::uint32_t context, std::uint8_t cls,
                                  std::uint32_t call, std::uint32_t record) {
    const auto event = Add(time, kEventSysCall, context, call, cls, 0, record);
    calls_.push_back(event);
    issued_.Append(context, event);
    return event;
}

void EventStore::Publish() {
    dispatchCount_.store(static_cast<std::uint32_t>(dispatches_.size()), std::memory_order_relaxed);
    callCount_.store(static_cast<std::uint32_t>(calls_.size()), std::memory_order_relaxed);
    count_.store(Added(), std::memory_order_release);
}

std::uint32_t EventStore::CountUntil(std::int64_t time) const {
    const auto* begin = time_.data();
    return static_cast<std::uint32_t>(std::upper_bound(begin, begin + Count(), time) - begin);
}

std::span<const std::uint32_t> EventStore::Below(const Column<std::uint32_t>& events,
                                                 std::size_t count, std::uint32_t end) {
    const auto* begin = events.data();
    return {begin, std::lower_bound(begin, begin + count, end)};
}

std::span<const std::uint32_t> EventStore::Dispatches(std::uint32_t end) const {
    return Below(dispatches_, dispatchCount_.load(std::memory_order_acquire), end);
}

std::span<const std::uint32_t> EventStore::Calls(std::uint32_t end) const {
    return Below(calls_, callCount_.load(std::memory_order_acquire), end);
}

void EventStore::Export(host::OSTraceColumns& out, std::uint32_t end) const {
    const auto list = [](std::span<const std::uint32_t> events) {
        return host::EventList{events.data(), static_cast<std::uint32_t>(events.size())};
    };
    out.eventCount = end;
    out.time = time_.data();
    out.endEvent = end_.data();
    out.context = context_.data();
    out.next = next_.data();
    out.kind = kind_.data();
    out.code = code_.data();
    out.flags = flags_.data();
    out.dispatches = list(Dispatches(end));
    out.sysCalls = list(Calls(end));
    out.knownEvents = Count();
}

ContextLists EventStore::ExportLists(std::uint32_t contextCount, std::uint32_t end) const {
    ContextLists exported;
    for (const EventLists* lists : {&states_, &entered_, &issued_}) {
        for (std::uint32_t i = 0; i < contextCount; ++i) {
            exported.events.push_back(lists->Of(i, end));
            exported.levels.push_back(lists->LevelsOf(i));
        }
    }
    return exported;
}

std::size_t EventStore::Bytes() const {
    return time_.Bytes() + end_.Bytes() + context_.Bytes() + next_.Bytes() + record_.Bytes() +
           kind_.Bytes() + code_.Bytes() + flags_.Bytes() + dispatches_.Bytes() + calls_.Bytes() +
           states_.Bytes() + entered_.Bytes() + issued_.Bytes();
}

std::string EventStore::Check() const {
    for (std::uint32_t e = 1; e < Count(); ++e)
        if (time_[e] < time_[e - 1])
            return FormatText("event %u is earlier than the one before", e);
    if (auto fault = CheckIntervals(); !fault.empty()) return fault;
    return CheckLists();
}

std::string EventStore::CheckIntervals() const {
    for (std::uint32_t e = 0; e < Count(); ++e) {
        if (kind_[e] == kEventSysCall || end_[e] == host::kOpenEnd) continue;
        if (end_[e] <= e || end_[e] >= Count()) return FormatText("event %u ends nowhere", e);
        const auto by = end_[e];
        const auto who = next_[e];
        // A state is cut off where nobody knows any more who runs: at a dispatch to the one context
        // that has no states.
        const bool cut = kind_[by] == kEventDispatch && states_.Of(next_[by], Count()).count == 0;
        const bool ends = kind_[e] == kEventDispatch
                              ? kind_[by] == kEventDispatch
                              : cut || (kind_[by] != kEventSysCall && next_[by] == who);
        if (!ends) return FormatText("event %u is ended by %u, which cannot end it", e, by);
    }
    for (std::size_t i = 0; i + 1 < dispatches_.size(); ++i) {
        if (end_[dispatches_[i]] != dispatches_[i + 1] ||
            next_[dispatches_[i]] != context_[dispatches_[i + 1]])
            return FormatText("dispatch %u does not lead to the next one", dispatches_[i]);
    }
    return {};
}

namespace {

// Reads lists of events alongside the events.
class ListReader {
  public:
    explicit ListReader(const EventLists& lists) : lists_(lists) {}
    bool Follows(std::uint32_t context, std::uint32_t event) {
        if (context >= read_.size()) read_.resize(std::size_t{context} + 1);
        const auto list = lists_.Of(context, event + 1);
        std::uint32_t& at = read_[context];
        return ++at == list.count && list.events[list.count - 1] == event && EndsBlocks(context);
    }

  private:
    // What was read last stands in each level of which it ends a block.
    bool EndsBlocks(std::uint32_t context) const {
        const std::uint32_t count = read_[context];
        if (count % host::kListBlock != 0) return true;
        const auto levels = lists_.LevelsOf(context);
        const std::uint32_t event = lists_.Of(context, 0xFFFFFFFFu).events[count - 1];
        std::uint32_t block = host::kListBlock;
        for (std::size_t k = 0; k < std::size(levels.of) && count % block == 0; ++k) {
            if (levels.of[k][count / block - 1] != event) return false;
            block *= host::kListBlock;
        }
        return true;
    }

    const EventLists& lists_;
    std::vector<std::uint32_t> read_;
};

}  // namespace

std::string EventStore::CheckLists() const {
    std::size_t dispatches = 0;
    std::size_t calls = 0;
    ListReader states(states_);
    ListReader entered(entered_);
    ListReader issued(issued_);
    for (std::uint32_t e = 0; e < Count(); ++e) {
        const bool coded = code_[e] >= 1 && code_[e] <= 13;
        bool listed = false;
        if (kind_[e] == kEventDispatch)
            listed = dispatches < dispatches_.size() && dispatches_[dispatches++] == e &&
                     entered.Follows(next_[e], e);
        else if (kind_[e] == kEventSysCall)
            listed = calls < calls_.size() && calls_[calls++] == e && coded &&
                     issued.Follows(context_[e], e);
        else if (kind_[e] == kEventState)
            listed = coded && states.Follows(next_[e], e);
        if (!listed) return FormatText("event %u is not in its list", e);
    }
    return {};
}

}  // namespace kvx::service
