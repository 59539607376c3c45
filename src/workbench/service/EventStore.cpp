#include "workbench/service/EventStore.h"

#include "host/OSTraceService.h"
#include "platform/Text.h"

namespace kvx::service {

std::uint32_t EventStore::Add(std::int64_t time, std::uint8_t kind, std::uint32_t context,
                              std::uint32_t next, std::uint8_t code, std::uint8_t flags,
                              std::uint32_t record) {
    const std::uint32_t event = Count();
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
    Append(entered_, to, event);
    return event;
}

std::uint32_t EventStore::AddState(std::int64_t time, std::uint32_t context, std::uint8_t code,
                                   std::uint8_t flags, std::uint32_t record) {
    const auto event = Add(time, kEventState, context, context, code, flags, record);
    Append(states_, context, event);
    return event;
}

std::uint32_t EventStore::AddCall(std::int64_t time, std::uint32_t context, std::uint8_t cls,
                                  std::uint32_t call, std::uint32_t record) {
    const auto event = Add(time, kEventSysCall, context, call, cls, 0, record);
    calls_.push_back(event);
    Append(issued_, context, event);
    return event;
}

void EventStore::Clear() {
    *this = EventStore();
}

void EventStore::Append(Lists& lists, std::uint32_t context, std::uint32_t event) {
    if (lists.size() <= context) lists.resize(context + 1);
    lists[context].push_back(event);
}

host::EventList EventStore::ListOf(const Lists& lists, std::uint32_t context) {
    if (context >= lists.size()) return {};
    const auto& list = lists[context];
    return {list.data(), static_cast<std::uint32_t>(list.size())};
}

host::EventList EventStore::StatesOf(std::uint32_t context) const {
    return ListOf(states_, context);
}

void EventStore::Export(host::OSTraceColumns& out, std::uint32_t contextCount) const {
    exported_.clear();
    for (const Lists* lists : {&states_, &entered_, &issued_})
        for (std::uint32_t i = 0; i < contextCount; ++i) exported_.push_back(ListOf(*lists, i));
    out.eventCount = Count();
    out.time = time_.data();
    out.endEvent = end_.data();
    out.context = context_.data();
    out.next = next_.data();
    out.kind = kind_.data();
    out.code = code_.data();
    out.flags = flags_.data();
    out.contextCount = contextCount;
    out.dispatches = {dispatches_.data(), static_cast<std::uint32_t>(dispatches_.size())};
    out.sysCalls = {calls_.data(), static_cast<std::uint32_t>(calls_.size())};
    out.stateEvents = exported_.data();
    out.dispatchesTo = exported_.data() + contextCount;
    out.sysCallsOf = exported_.data() + 2 * contextCount;
}

std::size_t EventStore::Bytes() const {
    std::size_t bytes = time_.Bytes() + end_.Bytes() + context_.Bytes() + next_.Bytes() +
                        record_.Bytes() + kind_.Bytes() + code_.Bytes() + flags_.Bytes() +
                        dispatches_.Bytes() + calls_.Bytes();
    for (const Lists* lists : {&states_, &entered_, &issued_})
        for (const auto& list : *lists) bytes += list.Bytes();
    return bytes;
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
        const bool ends = kind_[e] == kEventDispatch
                              ? kind_[by] == kEventDispatch
                              : kind_[by] != kEventSysCall && next_[by] == who;
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
    explicit ListReader(const std::vector<Column<std::uint32_t>>& lists)
        : lists_(lists), read_(lists.size()) {}
    bool Follows(std::uint32_t context, std::uint32_t event) {
        if (context >= lists_.size()) return false;
        std::size_t& at = read_[context];
        return at < lists_[context].size() && lists_[context][at++] == event;
    }

  private:
    const std::vector<Column<std::uint32_t>>& lists_;
    std::vector<std::size_t> read_;
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
