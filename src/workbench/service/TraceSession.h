#pragma once
// One recording on show: which processor, how far, in which lines, and what is searched for. What
// is decoded beyond that is there already, or is being decoded.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "workbench/service/CallHistory.h"
#include "workbench/service/DecodedRecording.h"
#include "workbench/service/EventTexts.h"
#include "workbench/service/LineOrder.h"
#include "workbench/service/Summary.h"

namespace kvx::service {

class TraceSession {
  public:
    explicit TraceSession(std::unique_ptr<Recording> recording);

    // May be kept beyond the session.
    std::shared_ptr<const DecodedRecording> Share() const { return decoded_; }
    const DecodedRecording& Decoded() const { return *decoded_; }
    const Recording& GetRecording() const { return decoded_->GetRecording(); }
    bool ShowProcessor(std::uint32_t processor);
    std::uint32_t ShownProcessor() const { return shown_->processor; }

    // Shows everything up to and with record last, unless until is passed by the times before that;
    // waits for what is not decoded yet. What is shown already stays. Answers the last record that
    // is shown; events of the same time that come from later records are shown with it.
    // Where several processors are recorded, at least one event of the shown one is shown, if it
    // has any.
    std::uint32_t ShowThrough(std::uint32_t last, std::optional<double> until = std::nullopt);
    bool HasMore() const { return shownRecords_ < GetRecording().RecordCount(); }
    // The time that is reached.
    std::int64_t Now() const { return now_; }
    // Shows nothing; the next time everything is there at once.
    void Discard();

    // Number of events that are shown; those of Events() go on.
    std::uint32_t EventCount() const { return shownEvents_; }
    const EventStore& Events() const { return shown_->events; }
    const ContextTable& Contexts() const { return shown_->contexts; }
    // The lines of the contexts that have appeared.
    LineOrder& Lines();
    CallHistory& History() { return history_; }
    EventTexts Texts() const { return {*decoded_, *shown_}; }
    const ContextLists& ListsOfContexts(std::uint32_t contextCount);

    // The first system call from that event on, and the last one before it, that meets the
    // condition. None: there is none among what is shown.
    SearchCondition& Condition() { return condition_; }
    std::optional<std::uint32_t> FindFrom(std::uint32_t event) const;
    std::optional<std::uint32_t> FindBefore(std::uint32_t event) const;

  private:
    bool MeetsCondition(std::uint32_t event) const;

    const std::shared_ptr<const DecodedRecording> decoded_;
    const Timeline* shown_;
    std::uint32_t shownRecords_ = 0;
    std::uint32_t shownEvents_ = 0;
    std::uint32_t shownContexts_ = 0;
    std::int64_t now_ = 0;
    LineOrder lines_;
    CallHistory history_;
    SearchCondition condition_;
    ContextLists lists_;              // what ListsOfContexts answered last
    std::uint32_t listedEvents_ = 0;  // ... for so many events
};

}  // namespace kvx::service
