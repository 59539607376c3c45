#pragma once
// A recording and all that is decoded of it. A thread of its own decodes the whole recording, every
// processor in one pass, as fast as it can; whoever shows it reads what is there and waits only for
// what is not.

#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "workbench/service/CallNames.h"
#include "workbench/service/Priorities.h"
#include "workbench/service/Recording.h"
#include "workbench/service/Timeline.h"

namespace kvx::service {

class DecodedRecording {
  public:
    explicit DecodedRecording(std::unique_ptr<Recording> recording);
    // Stops decoding.
    ~DecodedRecording();
    DecodedRecording(const DecodedRecording&) = delete;
    DecodedRecording& operator=(const DecodedRecording&) = delete;

    const Recording& GetRecording() const { return *recording_; }
    const CallNames& Names() const { return names_; }
    const Priorities& BasePriorities() const { return priorities_; }
    // In the order of the recording's processors.
    const std::vector<std::unique_ptr<Timeline>>& Timelines() const { return timelines_; }
    // Null: the recording has no such processor.
    const Timeline* Find(std::uint32_t processor) const;
    // What was lost and noted of the whole recording, as far as it is decoded; opening included.
    LossCounters Losses() const;

    // Nothing more will come.
    bool IsComplete() const;
    void WaitForAll() const;
    // The time that is reached with the record, whatever records of the same time follow. Waits
    // until every event of that time is there.
    std::int64_t WaitFor(std::uint32_t record) const;
    // The first record from..to whose time lies behind `until`. None: there is none; the time of
    // `to` is waited for then.
    std::optional<std::uint32_t> FindBehind(double until, std::uint32_t from,
                                            std::uint32_t to) const;

  private:
    static constexpr std::uint32_t kBlock = 64;  // records that are published together
    static constexpr std::uint32_t kNobodyWaits = 0xFFFFFFFFu;
    // The times that a block of records reaches, without keeping every one of them.
    struct Block {
        std::int64_t before = 0;   // reached before its first record
        std::uint64_t raises = 0;  // bit n: record n of the block has a later time than all before
    };

    void Run(const std::stop_token& stop);
    void DecodeAll(const std::stop_token& stop);
    void Publish(std::uint32_t decoded);
    template <class Enough>
    void Await(std::unique_lock<std::mutex>& lock, std::uint32_t record, Enough enough) const;
    std::uint32_t WaitUntilDecoded(std::uint32_t record) const;
    std::int64_t TimeReached(std::uint32_t record) const;

    const std::unique_ptr<Recording> recording_;
    CallNames names_;
    Priorities priorities_;
    Moment moment_;
    std::vector<std::unique_ptr<Timeline>> timelines_;
    LossCounters losses_;  // those that belong to no processor
    Column<Block> blocks_;

    mutable std::mutex mutex_;
    mutable std::condition_variable more_;
    // Under the mutex.
    mutable std::uint32_t awaited_ = kNobodyWaits;  // the first record that somebody waits for
    std::uint32_t decoded_ = 0;                     // records
    std::int64_t reached_ = 0;                      // their latest time
    bool complete_ = false;

    std::jthread thread_;  // last: it uses all of the above
};

}  // namespace kvx::service
