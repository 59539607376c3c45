#include "workbench/service/DecodedRecording.h"

#include <algorithm>
#include <bit>
#include <exception>

#include "workbench/service/Decoder.h"
#include "workbench/service/LateCalls.h"

namespace kvx::service {
namespace {

// A record gives at most four events of one processor; a task that becomes ready without one of its
// own, and one whose state is declared, one more each.
std::uint32_t MostEvents(const Recording& recording) {
    constexpr std::uint64_t kMost = 0xFFFFFFF0u;
    const std::uint64_t records = recording.RecordCount();
    return static_cast<std::uint32_t>(
        std::min(kMost, records * 5 + recording.Contexts().size() + 64));
}

Inferred Infer(Recording& recording) {
    if (recording.GetKernel().RecordsCallsAfterWaits()) return InferFromLateCalls(recording);
    return recording.RecordsStates() ? Inferred() : InferStates(recording);
}

// The contexts that the file names for the processor are there from the start.
void Declare(const Recording& recording, Timeline& timeline) {
    ContextTable& contexts = timeline.contexts;
    for (const auto& declared : recording.Contexts())
        if (declared.processor == timeline.processor) contexts.Declare(declared.key, declared.name);
    for (const auto& declared : recording.Contexts()) {
        contexts.Declare(declared.key, declared.name);
        const bool here =
            declared.processor == timeline.processor || declared.processor == kAnyProcessor;
        if (here && declared.state != TaskState::NonExistent) contexts.Add(declared.key);
    }
    contexts.Add({ContextKind::Task, 0});
}

}  // namespace

DecodedRecording::DecodedRecording(std::unique_ptr<Recording> recording)
    : recording_(std::move(recording)),
      names_(recording_->GetKernel()),
      blocks_(recording_->RecordCount() / kBlock + 1) {
    const auto most = MostEvents(*recording_);
    for (const auto processor : recording_->Processors()) {
        timelines_.push_back(std::make_unique<Timeline>(processor, moment_, most));
        Declare(*recording_, *timelines_.back());
    }
    thread_ = std::jthread([this](const std::stop_token& stop) { Run(stop); });
}

DecodedRecording::~DecodedRecording() = default;

// What memory or numbers do not suffice for is left out, and said so.
void DecodedRecording::Run(const std::stop_token& stop) {
    try {
        DecodeAll(stop);
    } catch (const std::exception&) {
        losses_.Add(Loss::DamagedTail);
    }
    const std::lock_guard guard(mutex_);
    for (const auto& timeline : timelines_) timeline->events.Publish();
    complete_ = true;
    more_.notify_all();
}

void DecodedRecording::DecodeAll(const std::stop_token& stop) {
    const Inferred inferred = Infer(*recording_);
    std::vector<Timeline*> timelines;
    for (const auto& timeline : timelines_) timelines.push_back(timeline.get());
    Decoder decoder(*recording_, inferred, timelines, names_, priorities_, moment_);
    const auto count = recording_->RecordCount();
    while (decoder.Next() < count && !stop.stop_requested()) {
        const auto record = decoder.Next();
        const auto before = moment_;
        if (record % kBlock == 0) blocks_.push_back({before.Now(), 0});
        decoder.DecodeOne();
        if (moment_.Now() > before.Now() || moment_.HasBegun() != before.HasBegun())
            blocks_[record / kBlock].raises |= std::uint64_t{1} << record % kBlock;
        if (decoder.Next() % kBlock == 0) Publish(decoder.Next());
    }
    Publish(decoder.Next());
    losses_ += decoder.Losses();
}

void DecodedRecording::Publish(std::uint32_t decoded) {
    for (const auto& timeline : timelines_) timeline->events.Publish();
    const std::lock_guard guard(mutex_);
    decoded_ = decoded;
    reached_ = moment_.Now();
    if (decoded <= awaited_) return;
    awaited_ = kNobodyWaits;
    more_.notify_all();
}

// Until enough is true, which it cannot be before the record is decoded; or until all is decoded.
template <class Enough>
void DecodedRecording::Await(std::unique_lock<std::mutex>& lock, std::uint32_t record,
                             Enough enough) const {
    while (!complete_ && !enough()) {
        awaited_ = std::min(awaited_, record);
        more_.wait(lock);
    }
}

const Timeline* DecodedRecording::Find(std::uint32_t processor) const {
    const auto at = std::ranges::find(timelines_, processor,
                                      [](const auto& timeline) { return timeline->processor; });
    return at == timelines_.end() ? nullptr : at->get();
}

LossCounters DecodedRecording::Losses() const {
    LossCounters losses = recording_->Losses();
    losses += losses_;
    for (const auto& timeline : timelines_) losses += timeline->losses;
    return losses;
}

bool DecodedRecording::IsComplete() const {
    const std::lock_guard guard(mutex_);
    return complete_;
}

void DecodedRecording::WaitForAll() const {
    std::unique_lock lock(mutex_);
    Await(lock, kNobodyWaits, [] { return false; });
}

// Answers the record, or the last one before it that could be decoded.
std::uint32_t DecodedRecording::WaitUntilDecoded(std::uint32_t record) const {
    std::unique_lock lock(mutex_);
    Await(lock, record, [&] { return decoded_ > record; });
    return std::min(record, decoded_ == 0 ? 0 : decoded_ - 1);
}

std::int64_t DecodedRecording::WaitFor(std::uint32_t record) const {
    const auto time = TimeReached(WaitUntilDecoded(record));
    std::unique_lock lock(mutex_);
    Await(lock, 0, [&] { return reached_ > time; });
    return time;
}

std::optional<std::uint32_t> DecodedRecording::FindBehind(double until, std::uint32_t from,
                                                          std::uint32_t to) const {
    const auto isBehind = [&](std::uint32_t record) {
        return static_cast<double>(TimeReached(record)) > until;
    };
    to = WaitUntilDecoded(to);
    if (!isBehind(to)) return std::nullopt;
    while (from < to) {
        const auto middle = from + (to - from) / 2;
        if (isBehind(middle))
            to = middle;
        else
            from = middle + 1;
    }
    return to;
}

// The record must be decoded.
std::int64_t DecodedRecording::TimeReached(std::uint32_t record) const {
    const Block& block = blocks_[record / kBlock];
    const auto upTo = ~std::uint64_t{0} >> (kBlock - 1 - record % kBlock);
    const auto raises = block.raises & upTo;
    if (raises == 0) return block.before;
    const auto last = static_cast<std::uint32_t>(std::bit_width(raises)) - 1;
    return recording_->TimeOf(record / kBlock * kBlock + last);
}

}  // namespace kvx::service
