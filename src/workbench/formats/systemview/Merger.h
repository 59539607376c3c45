#pragma once
// The items of all cores of a recording in order of time; of equal times the lower core first.

#include <cstdint>
#include <string_view>
#include <vector>

#include "workbench/formats/systemview/CoreReader.h"

namespace kvx::formats::systemview {

struct Core {
    std::uint32_t number = 0;
    std::string_view bytes;
    std::vector<Damage> damage = {};
    std::uint64_t shift = 0;  // added to its ticks: cores agree at the start of recording
};

class Merger {
  public:
    // cores must outlive it and stay where they are.
    explicit Merger(const std::vector<Core>& cores);

    // False: there are no more.
    bool Next();
    // What Next came to.
    const Item& Current() const { return lanes_[current_].item; }
    std::uint32_t CoreIndex() const { return current_; }
    std::uint64_t Ticks() const { return TicksOf(current_); }

    // Appends one place a core, from which Next goes on.
    void Save(std::vector<Place>& places) const;
    void Seek(const Place* places);

  private:
    struct Lane {
        CoreReader reader;
        Item item;
        Place before;       // from which the item was read
        bool taken = true;  // the item is none, or was given out
        bool ended = false;
    };
    std::uint64_t TicksOf(std::uint32_t lane) const {
        return lanes_[lane].item.ticks + cores_[lane].shift;
    }

    const std::vector<Core>& cores_;
    std::vector<Lane> lanes_;
    std::uint32_t current_ = 0;
};

}  // namespace kvx::formats::systemview
