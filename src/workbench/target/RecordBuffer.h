#pragma once
// The trace memory of a target: a buffer of a fixed number of records. Full: recording ends when it
// is full. Free: the newest records stay.

#include <cstddef>
#include <vector>

#include "workbench/simulation/KernelMoment.h"

namespace kvx::target {

enum class RangeCondition { Full, Free };

class RecordBuffer final : public simulation::ITraceSink {
  public:
    // capacity: records, at least 1.
    explicit RecordBuffer(std::size_t capacity) : capacity_(capacity) {}

    // What comes while nothing is recorded only moves the moment on.
    void Write(const simulation::TraceRecord& record) override;

    void Start() { recording_ = !IsFull() || condition_ == RangeCondition::Free; }
    void Stop() { recording_ = false; }
    void Clear();
    // Clears it when the size is another one.
    void SetCapacity(std::size_t capacity);
    void SetCondition(RangeCondition condition) { condition_ = condition; }

    bool IsRecording() const { return recording_; }
    bool IsFull() const { return records_.size() == capacity_; }
    std::size_t Count() const { return records_.size(); }
    std::size_t Capacity() const { return capacity_; }
    RangeCondition Condition() const { return condition_; }

    // Where the tasks stood before the first record.
    const simulation::KernelMoment& Beginning() const { return beginning_; }
    // Hands every record to take, the oldest first.
    template <class Take>
    void ForEach(Take take) const {
        for (std::size_t i = 0; i < records_.size(); ++i)
            take(records_[(oldest_ + i) % records_.size()]);
    }

  private:
    void Keep(const simulation::TraceRecord& record);

    std::size_t capacity_;
    RangeCondition condition_ = RangeCondition::Full;
    bool recording_ = false;
    std::vector<simulation::TraceRecord> records_;
    std::size_t oldest_ = 0;
    simulation::KernelMoment beginning_;
    simulation::KernelMoment now_;
};

}  // namespace kvx::target
