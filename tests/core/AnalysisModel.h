#pragma once
// The three analyses written down a second time, as plainly as they can be: every wait looks back
// through the whole trace, every list is walked. Reads the scripted trace, not the service.

#include <optional>
#include <set>

#include "core/CoreFixture.h"

namespace kvx::test {

struct ModelRecord {
    int num = 0;
    int measured = 0;
    double max = 0, min = 0, total = 0, avg = 0, ratio = 0;
    std::vector<std::uint32_t> maxEvents, minEvents;

    void Extremes(double d, std::uint32_t event) {
        if (d > max) maxEvents.clear();
        if (d >= max) maxEvents.push_back(event);
        max = std::max(max, d);
        const bool first = min == 0.0;
        if (first || d < min) minEvents.clear();
        if (first || d <= min) minEvents.push_back(event);
        min = first ? d : std::min(min, d);
    }
};

class AnalysisModel {
  public:
    AnalysisModel(Core& core)
        : trace_(core.service.Trace()),
          service_(core.service),
          s_(core.data.markers.GetMarkerEvent(kMarkerStart)),
          e_(core.data.markers.GetMarkerEvent(kMarkerEnd)),
          start_(core.data.markers.GetMarkerTime(kMarkerStart)),
          end_(core.data.markers.GetMarkerTime(kMarkerEnd)) {}

    // By line.
    std::map<int, ModelRecord> RunTime() const {
        std::map<int, ModelRecord> records;
        if (start_ == end_ || Decoded() == 0) return records;
        for (int j = static_cast<int>(s_) - 1; j >= 0; --j) {
            if (trace_.kind[Index(j)] != kEventDispatch) continue;
            Run(records, s_, Index(j));
            break;
        }
        for (std::uint32_t i = s_; i <= e_ && i < Decoded(); ++i)
            if (trace_.kind[i] == kEventDispatch) Run(records, i, i);
        return records;
    }

    std::map<int, ModelRecord> ReadyToRun() const {
        std::map<int, ModelRecord> records;
        for (std::uint32_t i = s_; i < e_ && i < Decoded(); ++i) {
            const int entered = Line(trace_.next[i]);
            if (trace_.kind[i] == kEventDispatch && IsTask(entered))
                Wait(records[entered], i, entered);
        }
        return records;
    }

    // Events of the calls in the range that the history holds.
    std::vector<std::uint32_t> SysCalls(const std::set<std::string>& chosen) const {
        std::vector<std::uint32_t> calls;
        for (std::uint32_t i = s_; i <= e_ && i < Decoded(); ++i) {
            if (trace_.kind[i] != kEventSysCall) continue;
            if (chosen.empty() || chosen.contains(trace_.texts[trace_.text[i]].name))
                calls.push_back(i);
        }
        return calls;
    }

    bool IsTask(int line) const {
        const ScriptedContext& c = trace_.contexts[service_.ContextOfLine(line)];
        return c.type == kContextTask && c.number != 0;
    }

  private:
    static std::size_t Index(int i) { return static_cast<std::size_t>(i); }
    std::uint32_t Decoded() const { return service_.Decoded(); }
    double Time(std::size_t e) const { return static_cast<double>(trace_.time[e]); }
    int Line(std::uint32_t context) const { return service_.LineOf(context); }

    void Run(std::map<int, ModelRecord>& records, std::uint32_t remembered, std::size_t d) const {
        const std::uint32_t last = trace_.endEvent[d];
        const double t1 = last < Decoded() ? Time(last) : end_;
        if (Time(d) >= end_ || t1 <= start_) return;
        const double from = Time(d) < start_ ? start_ : Time(d);
        const double to = t1 > end_ ? end_ : t1;
        ModelRecord& record = records[Line(trace_.next[d])];
        ++record.num;
        record.total += to - from;
        record.Extremes(to - from, remembered);
        record.avg = record.total / record.num;
        record.ratio = record.total / (end_ - start_);
    }

    bool Changes(std::size_t e, int line) const {
        return trace_.kind[e] == kEventState && Line(trace_.next[e]) == line;
    }
    bool Leaves(std::size_t e, int line) const {
        return trace_.kind[e] == kEventDispatch && Line(trace_.context[e]) == line;
    }

    // Since when the task that event i dispatches has been ready, if its last state says so: since
    // that state, or since the processor was taken from it thereafter. Not across a gap.
    std::optional<std::size_t> ReadyAt(std::size_t i, int line) const {
        std::size_t state = i;
        while (state > 0 && !Changes(state - 1, line)) --state;
        if (state == 0) return std::nullopt;
        --state;
        if (trace_.code[state] != 1 || trace_.flags[state] & host::kFlagSuspended)
            return std::nullopt;
        std::optional<std::size_t> left;
        bool gap = false;
        for (std::size_t e = i; e > state; --e) {
            gap |= trace_.kind[e] == kEventDispatch &&
                   trace_.contexts[trace_.next[e]].type == kContextUnknown;
            if (!left && Leaves(e, line)) left = e;
        }
        if (left) return gap ? std::nullopt : left;
        const auto end = trace_.endEvent[state];
        const bool cut = end < Decoded() && Time(end) < Time(i);
        return cut ? std::nullopt : std::optional(state);
    }

    void Wait(ModelRecord& record, std::uint32_t i, int line) const {
        ++record.num;
        const auto ready = ReadyAt(i, line);
        if (!ready || Time(*ready) == 0.0) return;
        const double wait = Time(i) - Time(*ready);
        ++record.measured;
        record.Extremes(wait, *ready < s_ ? static_cast<std::uint32_t>(*ready) : i);
        record.total += wait;
        record.avg = record.total / record.measured;
    }

    const ScriptedTrace& trace_;
    const ScriptedTraceService& service_;
    std::uint32_t s_, e_;
    double start_, end_;
};

}  // namespace kvx::test
