#include "workbench/service/TraceSession.h"

#include <algorithm>

#include "workbench/service/CallSearch.h"

namespace kvx::service {

TraceSession::TraceSession(std::unique_ptr<Recording> recording)
    : decoded_(std::make_shared<DecodedRecording>(std::move(recording))),
      shown_(decoded_->Timelines().front().get()),
      history_(decoded_->Names(), shown_->events) {
    Discard();
}

bool TraceSession::ShowProcessor(std::uint32_t processor) {
    const Timeline* const timeline = decoded_->Find(processor);
    if (!timeline || timeline == shown_) return timeline != nullptr;
    shown_ = timeline;
    history_.ShowCallsOf(shown_->events);
    lines_ = {};
    shownContexts_ = 0;
    Discard();
    return true;
}

std::uint32_t TraceSession::ShowThrough(std::uint32_t last, std::optional<double> until) {
    const auto count = GetRecording().RecordCount();
    if (count == 0) return 0;
    last = std::min(last, count - 1);
    if (last < shownRecords_) return shownRecords_ - 1;
    if (until) last = decoded_->FindBehind(*until, shownRecords_, last).value_or(last);
    now_ = decoded_->WaitFor(last);
    shownEvents_ = Events().CountUntil(now_);
    // The first records may all be of other processors: what begins later is looked for.
    while (shownEvents_ == 0 && !until && decoded_->Timelines().size() > 1 && last < count - 1) {
        last = std::min(count - 1, 2 * last + 1);
        now_ = decoded_->WaitFor(last);
        shownEvents_ = Events().CountUntil(now_);
    }
    shownRecords_ = last + 1;
    shownContexts_ = std::max(shownContexts_, Contexts().CountWith(shownEvents_));
    history_.ShowUntil(shownEvents_);
    return last;
}

void TraceSession::Discard() {
    shownRecords_ = shownEvents_ = 0;
    now_ = 0;
    shownContexts_ = std::max(shownContexts_, Contexts().CountWith(0));
    history_.ShowUntil(0);
}

LineOrder& TraceSession::Lines() {
    lines_.Update(Contexts(), shownContexts_);
    return lines_;
}

const ContextLists& TraceSession::ListsOfContexts(std::uint32_t contextCount) {
    if (lists_.events.size() != std::size_t{3} * contextCount || listedEvents_ != shownEvents_) {
        lists_ = Events().ExportLists(contextCount, shownEvents_);
        listedEvents_ = shownEvents_;
    }
    return lists_;
}

std::optional<std::uint32_t> TraceSession::FindFrom(std::uint32_t event) const {
    const auto calls = Events().Calls(shownEvents_);
    for (auto at = std::ranges::lower_bound(calls, event); at != calls.end(); ++at)
        if (MeetsCondition(*at)) return *at;
    return std::nullopt;
}

std::optional<std::uint32_t> TraceSession::FindBefore(std::uint32_t event) const {
    const auto calls = Events().Calls(shownEvents_);
    for (auto at = std::ranges::lower_bound(calls, event); at != calls.begin();)
        if (MeetsCondition(*--at)) return *at;
    return std::nullopt;
}

bool TraceSession::MeetsCondition(std::uint32_t event) const {
    const auto texts = Texts();
    return Meets(condition_, texts.CallName(event)) || Meets(condition_, texts.Parameters(event)) ||
           Meets(condition_, texts.ReturnText(event));
}

}  // namespace kvx::service
