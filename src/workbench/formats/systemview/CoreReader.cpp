#include "workbench/formats/systemview/CoreReader.h"

#include <algorithm>

namespace kvx::formats::systemview {

CoreReader::CoreReader(std::string_view bytes, const std::vector<Damage>& damage)
    : bytes_(bytes), damage_(&damage) {
    while (bytes.substr(first_).starts_with(kSync)) first_ += kSync.size();
}

bool CoreReader::Next(Item& item) {
    item.isGap = false;
    if (!damage_->empty()) {
        const auto at = std::ranges::lower_bound(*damage_, place_.offset, {}, &Damage::begin);
        if (at != damage_->end() && at->begin == place_.offset) {
            item = {{}, place_.offset, place_.ticks, true};
            place_.offset = at->end;
            return true;
        }
    }
    while (place_.offset < bytes_.size() && bytes_[place_.offset] == '\0' &&
           bytes_.substr(place_.offset).starts_with(kSync))
        place_.offset += kSync.size();
    failure_ = PacketCursor::Failure::None;
    if (place_.offset == bytes_.size()) return false;
    failure_ = ReadPacket(bytes_.substr(place_.offset), item.packet);
    if (failure_ != PacketCursor::Failure::None) return false;
    item.offset = place_.offset;
    item.isGap = item.packet.id == kOverflow;
    item.ticks = place_.ticks;
    // What the first packet says of the time before it means nothing.
    if (place_.offset != first_) place_.ticks += item.packet.delta;
    if (!item.isGap) item.ticks = place_.ticks;
    place_.offset += item.packet.size;
    return true;
}

}  // namespace kvx::formats::systemview
