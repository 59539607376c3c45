#pragma once
// A scripted trace of which the first events are decoded: its lines, its history of calls and the
// columns, as far as they reach.

#include <algorithm>
#include <numeric>
#include <optional>
#include <set>
#include <utility>

#include "support/ListLevels.h"
#include "support/ScriptedTrace.h"

namespace kvx::test {

class DecodedTrace {
  public:
    explicit DecodedTrace(ScriptedTrace trace = {}) : trace_(std::move(trace)) {
        lines_.resize(trace_.contexts.size());
        std::iota(lines_.begin(), lines_.end(), 0u);
        Changed();
    }

    ScriptedTrace& Trace() { return trace_; }
    const ScriptedTrace& Trace() const { return trace_; }
    // Lists and columns are made anew.
    void Changed() {
        columnsStale_ = historyStale_ = true;
        lineOf_.assign(trace_.contexts.size(), 0);
        for (std::uint32_t line = 0; line < lines_.size(); ++line) lineOf_[lines_[line]] = line;
    }

    std::uint32_t Count() const { return count_; }
    void DecodeUpTo(std::uint32_t count) {
        count_ = std::max(count_, count);
        Changed();
    }
    void Discard() {
        count_ = 0;
        Changed();
    }

    std::uint32_t ContextOfLine(int line) const { return lines_[static_cast<std::size_t>(line)]; }
    int LineOf(std::uint32_t context) const { return static_cast<int>(lineOf_[context]); }
    void MoveLine(int from, int to) {
        const std::uint32_t moved = ContextOfLine(from);
        lines_.erase(lines_.begin() + from);
        lines_.insert(lines_.begin() + to, moved);
        Changed();
    }
    void SortLines() {
        std::sort(lines_.begin(), lines_.end());
        Changed();
    }
    host::EventList StatesOf(int line) const {
        return Reached(trace_.statesOf[ContextOfLine(line)]);
    }

    // The nearest call before (step -1) or after (1) the event with the text in its name.
    std::optional<std::uint32_t> FindCall(const std::string& text, std::uint32_t from,
                                          int step) const {
        for (std::int64_t e = std::int64_t{from} + step; e >= 0 && e < count_; e += step) {
            const auto event = static_cast<std::uint32_t>(e);
            const bool call = trace_.kind[event] == kEventSysCall;
            if (call && trace_.Texts(event).name.find(text) != std::string::npos) return event;
        }
        return std::nullopt;
    }

    // Only calls of these names are in the history from now on; none: all.
    void PickUp(std::set<std::string> names) {
        pickedUp_ = std::move(names);
        Changed();
    }
    bool IsPickedUp() const { return !pickedUp_.empty(); }
    const std::vector<std::uint32_t>& History() {
        if (!std::exchange(historyStale_, false)) return history_;
        history_.clear();
        for (const std::uint32_t e : trace_.sysCalls) {
            const bool chosen = !IsPickedUp() || pickedUp_.contains(trace_.Texts(e).name);
            if (e < count_ && chosen) history_.push_back(e);
        }
        return history_;
    }

    const host::OSTraceColumns& Columns() {
        if (std::exchange(columnsStale_, false)) RefreshColumns();
        return columns_;
    }

  private:
    // The events of an ascending list that are decoded.
    host::EventList Reached(const std::vector<std::uint32_t>& list) const {
        const auto upTo = std::lower_bound(list.begin(), list.end(), count_);
        return {list.data(), static_cast<std::uint32_t>(upTo - list.begin())};
    }
    std::vector<host::EventList> Reached(
        const std::vector<std::vector<std::uint32_t>>& lists) const {
        std::vector<host::EventList> reached;
        for (const auto& list : lists) reached.push_back(Reached(list));
        return reached;
    }
    void RefreshColumns() {
        endEvent_ = trace_.endEvent;
        for (auto& last : endEvent_) last = last < count_ ? last : host::kOpenEnd;
        statesOf_ = Reached(trace_.statesOf);
        dispatchesTo_ = Reached(trace_.dispatchesTo);
        sysCallsOf_ = Reached(trace_.sysCallsOf);
        columns_.eventCount = count_;
        columns_.time = trace_.time.data();
        columns_.endEvent = endEvent_.data();
        columns_.context = trace_.context.data();
        columns_.next = trace_.next.data();
        columns_.kind = trace_.kind.data();
        columns_.code = trace_.code.data();
        columns_.flags = trace_.flags.data();
        columns_.contextCount = static_cast<std::uint32_t>(trace_.contexts.size());
        columns_.lineOfContext = lineOf_.data();
        columns_.dispatches = Reached(trace_.dispatches);
        columns_.sysCalls = Reached(trace_.sysCalls);
        columns_.stateEvents = statesOf_.data();
        columns_.dispatchesTo = dispatchesTo_.data();
        columns_.sysCallsOf = sysCallsOf_.data();
        stateLevels_ = ListLevels(statesOf_);
        dispatchesToLevels_ = ListLevels(dispatchesTo_);
        sysCallsOfLevels_ = ListLevels(sysCallsOf_);
        columns_.stateLevels = stateLevels_.data();
        columns_.dispatchesToLevels = dispatchesToLevels_.data();
        columns_.sysCallsOfLevels = sysCallsOfLevels_.data();
    }

    ScriptedTrace trace_;
    std::uint32_t count_ = 0;
    std::vector<std::uint32_t> lines_;   // context of each line
    std::vector<std::uint32_t> lineOf_;  // line of each context
    std::set<std::string> pickedUp_;
    bool historyStale_ = true;
    std::vector<std::uint32_t> history_;
    bool columnsStale_ = true;
    std::vector<std::uint32_t> endEvent_;
    std::vector<host::EventList> statesOf_;
    std::vector<host::EventList> dispatchesTo_;
    std::vector<host::EventList> sysCallsOf_;
    ListLevels stateLevels_;
    ListLevels dispatchesToLevels_;
    ListLevels sysCallsOfLevels_;
    host::OSTraceColumns columns_;
};

}  // namespace kvx::test
