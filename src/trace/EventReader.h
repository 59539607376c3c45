#pragma once
// One way of reading events for two kinds of trace service: by its plain operations, or from its
// columns where it has them. An algorithm written against these operations gives the same result
// with both. A read that fails gives 0. The service is not ours: a context that is none of its
// contexts reads as kNoLine, an event beyond its events as nothing.

#include <algorithm>
#include <optional>

#include "host/OSTraceColumns.h"
#include "host/OSTraceService.h"
#include "host/TraceCodes.h"

namespace kvx {

// Null when the service has no columns.
host::IQOSTraceColumns* QueryColumns(IQOSTraceService& service);

inline constexpr std::uint32_t kNoLine = 0xFFFFFFFFu;

// The columns of a service, when it has any and they keep within what they say of themselves:
// arrays that are there, lines and events that exist. Whoever breaks that is read plainly. That
// times, lists and intervals are in order is the service's word.
std::optional<host::OSTraceColumns> TakeColumns(IQOSTraceService& service);

class PlainEvents {
  public:
    explicit PlainEvents(IQOSTraceService& service) : service_(service) {
        service_.GetContextCount(&lines_);
    }

    std::uint32_t Count() const {
        std::uint32_t count = 0;
        service_.GetEventCount(&count);
        return count;
    }
    int Kind(std::uint32_t e) const { return Read(&IQOSTraceService::GetEventKind, e); }
    double Time(std::uint32_t e) const {
        return static_cast<double>(Read(&IQOSTraceService::GetEventTime, e));
    }
    // 0.0: still open.
    double EndTime(std::uint32_t e) const {
        return static_cast<double>(Read(&IQOSTraceService::GetEventEndTime, e));
    }
    std::uint32_t Context(std::uint32_t e) const {
        return Line(Read(&IQOSTraceService::GetEventContext, e));
    }
    std::uint32_t Next(std::uint32_t e) const {
        return Line(Read(&IQOSTraceService::GetEventNextContext, e));
    }
    int State(std::uint32_t e) const { return Read(&IQOSTraceService::GetEventState, e); }
    // Of a state event: ready, and not suspended.
    bool IsReady(std::uint32_t e) const {
        return State(e) == host::Code(host::StateCode::Ready) &&
               Read(&IQOSTraceService::IsEventSuspended, e) == VARIANT_FALSE;
    }
    std::uint32_t StateContext(std::uint32_t e) const {
        return Line(Read(&IQOSTraceService::GetEventStateContext, e));
    }

    // The dispatches from..to (included), ascending.
    template <class Visit>
    void ForEachDispatch(std::uint32_t from, std::uint32_t to, Visit visit) const {
        for (std::uint64_t e = from; e <= to; ++e) {
            const auto event = static_cast<std::uint32_t>(e);
            if (Kind(event) == kEventDispatch) visit(event);
        }
    }
    // The last dispatch at or below the event.
    std::optional<std::uint32_t> LastDispatch(std::uint32_t upTo) const {
        for (std::uint32_t e = upTo;; --e) {
            if (Kind(e) == kEventDispatch) return e;
            if (e == 0) return std::nullopt;
        }
    }
    // 0 when there is none.
    std::uint32_t LastSysCall() const {
        for (std::uint32_t e = Count(); e-- > 0;) {
            if (Kind(e) == kEventSysCall) return e;
        }
        return 0;
    }

  private:
    template <class Value>
    Value Read(HRESULT (KVX_CALL IQOSTraceService::*get)(std::uint32_t, Value*),
               std::uint32_t e) const {
        Value value{};
        return Succeeded((service_.*get)(e, &value)) ? value : Value{};
    }

    std::uint32_t Line(std::int32_t line) const {
        return line >= 0 && line < lines_ ? static_cast<std::uint32_t>(line) : kNoLine;
    }

    IQOSTraceService& service_;
    std::int32_t lines_ = 0;
};

class ColumnEvents {
  public:
    explicit ColumnEvents(const host::OSTraceColumns& columns) : c_(columns) {}
    const host::OSTraceColumns& Columns() const { return c_; }

    std::uint32_t Count() const { return c_.eventCount; }
    int Kind(std::uint32_t e) const { return e < c_.eventCount ? c_.kind[e] : 0; }
    double Time(std::uint32_t e) const {
        return e < c_.eventCount ? static_cast<double>(c_.time[e]) : 0.0;
    }
    double EndTime(std::uint32_t e) const {
        if (e >= c_.eventCount) return 0.0;
        const std::uint32_t by = host::EndOf(c_.endEvent, e);
        if (by >= std::max(c_.eventCount, c_.knownEvents)) return 0.0;
        const std::int64_t end = c_.time[by];
        return static_cast<double>(end == 0 ? host::kEndAtZero : end);
    }
    std::uint32_t Context(std::uint32_t e) const { return Line(c_.context, e); }
    std::uint32_t Next(std::uint32_t e) const { return Line(c_.next, e); }
    int State(std::uint32_t e) const { return e < c_.eventCount ? c_.code[e] : 0; }
    bool IsReady(std::uint32_t e) const {
        return State(e) == host::Code(host::StateCode::Ready) &&
               !(c_.flags[e] & host::kFlagSuspended);
    }
    std::uint32_t StateContext(std::uint32_t e) const { return Line(c_.next, e); }

    template <class Visit>
    void ForEachDispatch(std::uint32_t from, std::uint32_t to, Visit visit) const {
        const std::uint32_t* end = c_.dispatches.events + c_.dispatches.count;
        for (auto d = std::lower_bound(c_.dispatches.events, end, from); d != end && *d <= to; ++d)
            visit(*d);
    }
    std::optional<std::uint32_t> LastDispatch(std::uint32_t upTo) const {
        const std::uint32_t* begin = c_.dispatches.events;
        const auto after = std::upper_bound(begin, begin + c_.dispatches.count, upTo);
        if (after == begin) return std::nullopt;
        return after[-1];
    }
    std::uint32_t LastSysCall() const {
        return c_.sysCalls.count ? c_.sysCalls.events[c_.sysCalls.count - 1] : 0;
    }

  private:
    std::uint32_t Line(const std::uint32_t* contexts, std::uint32_t e) const {
        if (e >= c_.eventCount || contexts[e] >= c_.contextCount) return kNoLine;
        const std::uint32_t line = c_.lineOfContext[contexts[e]];
        return line < c_.contextCount ? line : kNoLine;
    }

    host::OSTraceColumns c_;
};

// Calls work with the fastest reader that the service has.
template <class Work>
auto WithEvents(IQOSTraceService& service, Work work) {
    if (const auto columns = TakeColumns(service)) return work(ColumnEvents(*columns));
    return work(PlainEvents(service));
}

}  // namespace kvx
