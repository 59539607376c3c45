#pragma once
// The base priorities of tasks at the moment of a walk.

#include <optional>
#include <vector>

#include "workbench/timing/Walk.h"

namespace kvx::timing {

class PriorityTable {
  public:
    explicit PriorityTable(const Source& source);

    // What changed up to this record.
    void MoveTo(std::uint32_t record);
    // None: the recording does not tell.
    std::optional<std::int32_t> Of(ContextId task) const { return now_[task]; }
    // False too where one of them is not known.
    bool IsLessUrgent(ContextId one, ContextId other) const;

  private:
    const Source source_;
    const bool largerIsMoreUrgent_;
    std::vector<std::optional<std::int32_t>> now_;  // by context
    std::uint32_t next_ = 0;
};

}  // namespace kvx::timing
