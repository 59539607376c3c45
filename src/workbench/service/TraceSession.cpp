#include "workbench/service/TraceSession.h"

#include <algorithm>

#include "workbench/service/CallSearch.h"

namespace kvx::service {

TraceSession::TraceSession(std::unique_ptr<Recording> recording)
    : recording_(std::move(recording)), processor_(recording_->Processors().front()) {
    if (!recording_->RecordsStates()) inferred_ = InferStates(*recording_);
    ListDeclared();
    Discard();
}

bool TraceSession::ShowProcessor(std::uint32_t processor) {
    const auto& all = recording_->Processors();
    if (std::ranges::find(all, processor) == all.end()) return false;
    if (processor == processor_) return true;
    processor_ = processor;
    contexts_ = {};
    lines_ = {};
    ListDeclared();
    Discard();
    return true;
}

// The contexts that the file names for the shown processor have their lines from the start.
void TraceSession::ListDeclared() {
    for (const auto& declared : recording_->Contexts())
        if (declared.processor == processor_) contexts_.Declare(declared.key, declared.name);
    for (const auto& declared : recording_->Contexts()) {
        contexts_.Declare(declared.key, declared.name);
        const bool here = declared.processor == processor_ || declared.processor == kAnyProcessor;
        if (here && declared.state != TaskState::NonExistent) contexts_.Add(declared.key);
    }
    contexts_.Add({ContextKind::Task, 0});
}

std::uint32_t TraceSession::DecodeThrough(std::uint32_t last, std::optional<double> until) {
    const auto count = recording_->RecordCount();
    while (decoder_->Next() < count && decoder_->Next() <= last) {
        decoder_->DecodeOne();
        if (until && static_cast<double>(decoder_->Now()) > *until) break;
    }
    return decoder_->Next() == 0 ? 0 : decoder_->Next() - 1;
}

void TraceSession::Discard() {
    store_.Clear();
    history_.Forget();
    decoder_ =
        std::make_unique<Decoder>(*recording_, processor_, inferred_, contexts_, names_, store_);
}

LineOrder& TraceSession::Lines() {
    lines_.Update(contexts_);
    return lines_;
}

LossCounters TraceSession::Losses() const {
    LossCounters losses = recording_->Losses();
    losses += decoder_->Losses();
    return losses;
}

Summary TraceSession::Summarize() {
    DecodeThrough(recording_->RecordCount());
    Summary summary;
    summary.path = recording_->Path();
    summary.format = recording_->FormatName();
    summary.processors = recording_->Processors();
    summary.shownProcessor = processor_;
    summary.records = recording_->RecordCount();
    summary.contexts = contexts_.Count();
    summary.events = store_.Count();
    summary.dispatches = static_cast<std::uint32_t>(store_.Dispatches().size());
    summary.stateChanges = store_.StateCount();
    summary.systemCalls = static_cast<std::uint32_t>(store_.Calls().size());
    summary.firstTime = store_.Count() ? store_.Time(0) : recording_->FirstTime();
    summary.lastTime = recording_->LastTime();
    summary.timeUnit = recording_->Clock().UnitName();
    summary.losses = Losses();
    return summary;
}

std::optional<std::uint32_t> TraceSession::FindFrom(std::uint32_t event) const {
    const auto& calls = store_.Calls();
    for (const auto* at = std::lower_bound(calls.begin(), calls.end(), event); at != calls.end();
         ++at)
        if (MeetsCondition(*at)) return *at;
    return std::nullopt;
}

std::optional<std::uint32_t> TraceSession::FindBefore(std::uint32_t event) const {
    const auto& calls = store_.Calls();
    const auto* at = std::lower_bound(calls.begin(), calls.end(), event);
    while (at != calls.begin())
        if (MeetsCondition(*--at)) return *at;
    return std::nullopt;
}

bool TraceSession::MeetsCondition(std::uint32_t event) const {
    const auto texts = Texts();
    return Meets(condition_, texts.CallName(event)) || Meets(condition_, texts.Parameters(event)) ||
           Meets(condition_, texts.ReturnText(event));
}

}  // namespace kvx::service
