#pragma once
// One recording on show: what is decoded of it, in which lines it is shown, what is searched for.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "workbench/service/CallHistory.h"
#include "workbench/service/Decoder.h"
#include "workbench/service/EventTexts.h"
#include "workbench/service/LineOrder.h"
#include "workbench/service/Recording.h"
#include "workbench/service/Summary.h"

namespace kvx::service {

class TraceSession {
  public:
    explicit TraceSession(std::unique_ptr<Recording> recording);

    Recording& GetRecording() { return *recording_; }
    bool ShowProcessor(std::uint32_t processor);
    std::uint32_t ShownProcessor() const { return processor_; }

    // Decodes up to and with record last, unless until is passed by the times before that. Records
    // already decoded are left as they are. Answers the last record that is decoded.
    std::uint32_t DecodeThrough(std::uint32_t last, std::optional<double> until = std::nullopt);
    bool HasMore() const { return decoder_->Next() < recording_->RecordCount(); }
    std::int64_t Now() const { return decoder_->Now(); }
    // Drops the events; the next decoding begins with the first record.
    void Discard();

    const EventStore& Events() const { return store_; }
    const ContextTable& Contexts() const { return contexts_; }
    LineOrder& Lines();
    CallHistory& History() { return history_; }
    EventTexts Texts() const { return {*recording_, contexts_, names_, store_}; }
    LossCounters Losses() const;
    Summary Summarize();

    // The first system call from that event on, and the last one before it, that meets the
    // condition. None: there is none among what is decoded.
    SearchCondition& Condition() { return condition_; }
    std::optional<std::uint32_t> FindFrom(std::uint32_t event) const;
    std::optional<std::uint32_t> FindBefore(std::uint32_t event) const;

  private:
    void ListDeclared();
    bool MeetsCondition(std::uint32_t event) const;

    std::unique_ptr<Recording> recording_;
    std::uint32_t processor_;
    Inferred inferred_;
    ContextTable contexts_;
    LineOrder lines_;
    CallNames names_{recording_->GetKernel()};
    EventStore store_;
    CallHistory history_{names_, store_};
    SearchCondition condition_;
    std::unique_ptr<Decoder> decoder_;
};

}  // namespace kvx::service
