#pragma once
// Coarser levels of lists of events, made from the lists.

#include <vector>

#include "host/OSTraceColumns.h"

namespace kvx::test {

class ListLevels {
  public:
    explicit ListLevels(const std::vector<host::EventList>& lists = {}) {
        kept_.reserve(lists.size() * host::kListLevels);
        for (const host::EventList& list : lists) Add(list);
    }
    const host::EventListLevels* data() const { return levels_.data(); }

  private:
    void Add(const host::EventList& list) {
        host::EventListLevels& levels = levels_.emplace_back();
        std::uint32_t block = 1;
        for (auto& level : levels.of) {
            block *= host::kListBlock;
            std::vector<std::uint32_t>& ends = kept_.emplace_back();
            for (std::uint32_t i = block; i <= list.count; i += block)
                ends.push_back(list.events[i - 1]);
            level = ends.data();
        }
    }

    std::vector<std::vector<std::uint32_t>> kept_;
    std::vector<host::EventListLevels> levels_;
};

}  // namespace kvx::test
