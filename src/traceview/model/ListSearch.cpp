#include "traceview/model/ListSearch.h"

#include <algorithm>

namespace kvx {

namespace {

constexpr int kLevels = host::kListLevels + 1;  // level 0 is the list

class ListSearch {
  public:
    ListSearch(const host::EventList& list, const host::EventListLevels& levels)
        : count_(list.count), elements_{list.events} {
        std::copy(std::begin(levels.of), std::end(levels.of), elements_ + 1);
        while (top_ + 1 < kLevels && elements_[top_ + 1] && Count(top_ + 1) > 0) ++top_;
    }

    std::uint32_t Find(std::uint32_t bound) const {
        std::uint32_t at = Gallop(top_, 0, bound);
        for (int level = top_ - 1; level >= 0; --level) at = InBlock(level, at, bound);
        return at;
    }

    std::vector<std::uint32_t> Find(std::span<const std::uint32_t> bounds) const {
        std::vector<std::uint32_t> found(bounds.size());
        if (count_ == 0 || bounds.empty()) return found;
        const std::uint32_t first = Find(bounds.front());
        int level = LevelFor(Find(bounds.back()) - first, bounds.size());
        std::uint32_t at = first >> Shift(level);
        for (std::size_t i = 0; i < bounds.size(); ++i) {
            found[i] = at = Gallop(level, at, bounds[i]);
            if (level > 0) Fetch(level - 1, at);
        }
        while (--level >= 0) {
            for (std::size_t i = 0; i < bounds.size(); ++i) {
                found[i] = InBlock(level, found[i], bounds[i]);
                if (level > 0) Fetch(level - 1, found[i]);
            }
        }
        return found;
    }

  private:
    static constexpr int Shift(int level) { return 4 * level; }
    std::uint32_t Count(int level) const { return count_ >> Shift(level); }
    // The lowest level that has no more elements than bounds where they lie.
    int LevelFor(std::uint32_t events, std::size_t bounds) const {
        int level = 0;
        while (level < top_ && events >> Shift(level) > bounds) ++level;
        return level;
    }
    void Fetch(int level, std::uint32_t block) const {
        __builtin_prefetch(elements_[level] + std::size_t{block} * host::kListBlock);
    }
    // The first element at or after the bound in a block of the level, or its end.
    std::uint32_t InBlock(int level, std::uint32_t block, std::uint32_t bound) const {
        const std::uint32_t from = block * host::kListBlock;
        const std::uint32_t* const elements = elements_[level] + from;
        std::uint32_t before = 0;
        if (Count(level) - from >= host::kListBlock) {
            for (std::uint32_t i = 0; i < host::kListBlock; ++i) before += elements[i] < bound;
        } else {
            for (std::uint32_t i = 0; i < Count(level) - from; ++i) before += elements[i] < bound;
        }
        return from + before;
    }
    std::uint32_t Gallop(int level, std::uint32_t from, std::uint32_t bound) const {
        const std::uint32_t* const elements = elements_[level];
        const std::uint32_t count = Count(level);
        std::uint32_t step = 1;
        while (step <= count - from && elements[from + step - 1] < bound) {
            from += step;
            step *= 2;
        }
        const std::uint32_t end = from + std::min(step - 1, count - from);
        return static_cast<std::uint32_t>(std::lower_bound(elements + from, elements + end, bound) -
                                          elements);
    }

    std::uint32_t count_;
    const std::uint32_t* elements_[kLevels];
    int top_ = 0;
};

}  // namespace

std::vector<std::uint32_t> CountsBefore(const host::EventList& list,
                                        const host::EventListLevels& levels,
                                        std::span<const std::uint32_t> bounds) {
    return ListSearch(list, levels).Find(bounds);
}

}  // namespace kvx
