#include "workbench/formats/systemview/Merger.h"

namespace kvx::formats::systemview {

Merger::Merger(const std::vector<Core>& cores) : cores_(cores) {
    for (const Core& core : cores) lanes_.push_back({CoreReader(core.bytes, core.damage), {}, {}});
}

bool Merger::Next() {
    bool found = false;
    for (std::uint32_t i = 0; i < lanes_.size(); ++i) {
        Lane& lane = lanes_[i];
        if (lane.taken && !lane.ended) {
            lane.before = lane.reader.At();
            lane.ended = !lane.reader.Next(lane.item);
            lane.taken = false;
        }
        if (lane.ended || (found && TicksOf(i) >= TicksOf(current_))) continue;
        current_ = i;
        found = true;
    }
    if (found) lanes_[current_].taken = true;
    return found;
}

void Merger::Save(std::vector<Place>& places) const {
    for (const Lane& lane : lanes_) places.push_back(lane.taken ? lane.reader.At() : lane.before);
}

void Merger::Seek(const Place* places) {
    for (Lane& lane : lanes_) {
        lane.reader.Seek(*places++);
        lane.taken = true;
        lane.ended = false;
    }
}

}  // namespace kvx::formats::systemview
