#include "workbench/formats/systemview/Stream.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace kvx::formats::systemview {
namespace {

using service::Loss;

constexpr std::uint32_t kMostRecords = std::numeric_limits<std::int32_t>::max();
// So many packets behind a loss a time that goes on by minutes is damage.
constexpr std::uint32_t kDoubtful = 64;
constexpr std::uint64_t kDoubtfulSeconds = 60;
constexpr std::uint32_t kProgressEvery = 1 << 16;

// Whether a packet that could be read is one.
class Doubt {
  public:
    explicit Doubt(const Survey& survey, const Surveyor& surveyor)
        : survey_(survey), surveyor_(surveyor) {}

    bool IsDamaged(const Item& item) {
        if (item.packet.id >= kFirstOfModules && !surveyor_.KnowsModuleOf(item.packet.id))
            return true;
        const bool behindLoss = sinceLoss_ < kDoubtful;
        sinceLoss_ = item.isGap ? 0 : std::min(sinceLoss_ + 1, kDoubtful);
        return behindLoss && survey_.frequency != 0 &&
               item.packet.delta / survey_.frequency >= kDoubtfulSeconds;
    }

  private:
    const Survey& survey_;
    const Surveyor& surveyor_;
    std::uint32_t sinceLoss_ = kDoubtful;
};

}  // namespace

bool Stream::Load(std::vector<Core> cores, service::LossCounters& losses, IOpenProgress* progress) {
    cores_ = std::move(cores);
    std::uint64_t bytes = 0;
    std::uint64_t done = 0;
    for (const Core& core : cores_) bytes += core.bytes.size();
    const auto tell = [&](std::size_t offset) {
        return !progress || progress->Progress(done + offset, bytes);
    };
    for (Core& core : cores_) {
        if (!LookThrough(core, losses, tell)) return false;
        done += core.bytes.size();
    }
    std::uint64_t latest = 0;  // start of a core; shift holds them so far
    for (const Core& core : cores_) latest = std::max(latest, core.shift);
    for (Core& core : cores_) core.shift = latest - core.shift;
    losses.Add(Loss::DiscardedRecords, survey_.lost);
    Index(losses);
    return true;
}

// Leaves the ticks at which the core began to record in its shift.
bool Stream::LookThrough(Core& core, service::LossCounters& losses,
                         const std::function<bool(std::size_t)>& tell) {
    Surveyor surveyor(survey_);
    Doubt doubt(survey_, surveyor);
    CoreReader reader(core.bytes, core.damage);
    bool started = false;
    Item item;
    for (std::uint32_t records = 0;; ++records) {
        const Place before = reader.At();
        if (records % kProgressEvery == 0 && !tell(before.offset)) return false;
        const bool read = reader.Next(item);
        if (!read && reader.Failed() == PacketCursor::Failure::None) return true;
        const bool isStretch = read && item.packet.size == 0;  // found damaged just before
        if (read && (isStretch || !doubt.IsDamaged(item))) {
            surveyor.See(item);
            if (item.packet.id == kTraceStart && !std::exchange(started, true))
                core.shift = item.ticks;
            continue;
        }
        const Place at{read ? item.offset : reader.At().offset, before.ticks};
        const bool cut = !read && reader.Failed() == PacketCursor::Failure::Cut;
        if (!SkipDamage(core, at.offset, cut, losses)) return true;
        reader.Seek(at);
    }
}

// False: nothing can be read behind it.
bool Stream::SkipDamage(Core& core, std::size_t at, bool cut, service::LossCounters& losses) {
    const auto sync = core.bytes.find(kSync, at + 1);
    if (sync != std::string_view::npos) {
        losses.Add(Loss::UnreadableRecords);
        core.damage.push_back({at, sync});
        return true;
    }
    losses.Add(cut ? Loss::CutRecord : Loss::DamagedTail);
    core.bytes = core.bytes.substr(0, at);
    return false;
}

void Stream::Index(service::LossCounters& losses) {
    Merger merger(cores_);
    for (;;) {
        if (count_ % kEvery == 0) merger.Save(places_);
        if (!merger.Next()) return;
        lastTicks_ = merger.Ticks();
        if (++count_ < kMostRecords) continue;
        losses.Add(Loss::DamagedTail);
        return;
    }
}

const Merger& Stream::Walk::To(std::uint32_t record) {
    if (record < next_ || record - next_ >= kEvery) {
        const auto place = record / kEvery;
        merger_.Seek(stream_->places_.data() + std::size_t{place} * stream_->cores_.size());
        next_ = place * kEvery;
    }
    for (; next_ <= record; ++next_) merger_.Next();
    return merger_;
}

}  // namespace kvx::formats::systemview
