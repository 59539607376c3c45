#include "workbench/target/RecordBuffer.h"

namespace kvx::target {

void RecordBuffer::Write(const simulation::TraceRecord& record) {
    if (recording_) Keep(record);
    now_.Apply(record);
}

void RecordBuffer::Keep(const simulation::TraceRecord& record) {
    if (records_.empty()) beginning_ = now_;
    if (!IsFull()) {
        records_.push_back(record);
    } else {
        beginning_.Apply(records_[oldest_]);
        records_[oldest_] = record;
        oldest_ = (oldest_ + 1) % capacity_;
    }
    if (IsFull() && condition_ == RangeCondition::Full) recording_ = false;
}

void RecordBuffer::Clear() {
    records_.clear();
    oldest_ = 0;
}

void RecordBuffer::SetCapacity(std::size_t capacity) {
    if (capacity == capacity_) return;
    capacity_ = capacity;
    records_ = {};
    oldest_ = 0;
}

}  // namespace kvx::target
