#pragma once
// Walks through the events of a request in order of time, all its processors together, and tells of
// progress.

#include <algorithm>
#include <utility>

#include "workbench/exports/Exporter.h"
#include "workbench/service/EventMerge.h"

namespace kvx::exports {

struct Event {
    const service::Timeline* timeline = nullptr;
    std::uint32_t number = 0;
    std::uint32_t record = 0;  // no later one has given it
};

class EventWalk {
  public:
    explicit EventWalk(const ExportRequest& request)
        : request_(request), merge_(request.timelines, request.start) {
        for (const auto* timeline : request.timelines)
            total_ += timeline->events.CountUntil(request.end);
    }

    // Calls visit(const Event&) with each event of the range. False: stopped.
    template <class Visitor>
    bool Run(Visitor visit) {
        constexpr std::uint64_t kStep = 16384;
        for (std::uint64_t done = 0;; ++done) {
            const auto next = merge_.Next();
            if (!next || next->time > request_.end) return true;
            visit(Event{request_.timelines[next->timeline], next->number, next->record});
            if (done % kStep != 0 || !request_.progress) continue;
            const auto share = static_cast<double>(done) / static_cast<double>(total_ + 1);
            if (!request_.progress(std::min(share, 1.0))) return false;
        }
    }

  private:
    const ExportRequest& request_;
    service::EventMerge merge_;
    std::uint64_t total_ = 0;
};

}  // namespace kvx::exports
