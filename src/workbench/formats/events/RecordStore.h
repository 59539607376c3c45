#pragma once
// The records of a trace in few bytes each: time, plan, processor, and the values that the plan
// asks for, packed.

#include <cstdint>
#include <string_view>
#include <vector>

#include "workbench/formats/events/ByteCursor.h"

namespace kvx::formats {

class RecordStore {
  public:
    struct Entry {
        std::int64_t time = 0;
        std::uint32_t values = 0;  // where they begin
        std::uint16_t plan = 0;
        std::uint16_t processor = 0;
    };

    // False: the values no longer fit into what can be addressed.
    bool Add(std::int64_t time, std::uint16_t plan, std::uint16_t processor);
    // Values of the record added last, to be read back in the same order.
    void AddNumber(std::uint64_t value);
    void AddSigned(std::int64_t value);
    void AddText(std::string_view text);

    std::uint32_t Count() const { return static_cast<std::uint32_t>(entries_.size()); }
    const Entry& At(std::uint32_t record) const { return entries_[record]; }
    ByteCursor Values(std::uint32_t record) const;

    // Puts the records in order of time, those of equal times in the order in which they came.
    // Answers how often the times of one processor had stepped back.
    std::uint64_t PutInOrder();

  private:
    std::vector<Entry> entries_;
    std::vector<char> values_;
};

}  // namespace kvx::formats
