// The part of the scanner that puts lines in order of time.

#include <algorithm>
#include <optional>
#include <tuple>

#include "workbench/formats/text/LineReader.h"
#include "workbench/formats/text/LineScanner.h"
#include "workbench/formats/text/TimedLine.h"

namespace kvx::formats {
namespace {

constexpr int kNearLines = 32;  // looked at, one by one, for the place of an earlier line
constexpr int kSameProcessorLines = 256;

}  // namespace

// The time by which an earlier line is put in order. Counts it if its own processor steps back.
std::int64_t LineScanner::TimeToHold(std::uint64_t begin, std::string_view line,
                                     const TimedLine& parsed) {
    for (int i = 0; i < kSameProcessorLines && begin > 0; ++i) {
        begin = LineBefore(begin);
        const auto before = LineAt(begin);
        const auto other = ParseTimedLine(before, rules_.radix);
        if (!other || other->processor != parsed.processor) continue;
        if (other->time <= parsed.time) break;
        ++index_.stepsBack;
        const bool held = rules_.staysBehind && rules_.staysBehind(line, before);
        return held ? other->time : parsed.time;
    }
    return parsed.time;
}

// The first line in order of time whose time is later.
LineScanner::Place LineScanner::PlaceOf(std::uint64_t begin, std::int64_t time) const {
    Place place;
    auto offset = begin;
    auto line = index_.records;
    auto moved = moves_.size();
    for (int i = 0; i < kNearLines && line > 0; ++i) {
        offset = LineBefore(offset);
        --line;
        while (moved > 0 && moves_[moved - 1].offset > offset) --moved;
        if (moved > 0 && moves_[moved - 1].offset == offset) continue;
        const auto parsed = ParseTimedLine(LineAt(offset), rules_.radix);
        if (!parsed) continue;
        if (parsed->time <= time && place.offset) return place;
        if (parsed->time > time) place = {line, offset};
    }
    return PlaceFarBack(time);
}

LineScanner::Place LineScanner::PlaceFarBack(std::int64_t time) const {
    const auto after = std::ranges::upper_bound(latestAtMark_, time);
    const auto mark = static_cast<std::size_t>(after - latestAtMark_.begin()) - 1;
    Place place{static_cast<std::uint32_t>(mark * LineIndex::kMarkDistance), index_.marks[mark]};
    while (place.line < index_.records) {
        const auto line = LineAt(place.offset);
        const auto parsed = ParseTimedLine(line, rules_.radix);
        if (parsed && parsed->time > time) break;
        place.offset = LineAfter(place.offset);
        ++place.line;
    }
    return place;
}

void LineScanner::BuildSegments() {
    if (index_.records == 0) return;
    auto inserts = moves_;
    std::ranges::sort(inserts, {}, [](const Move& move) {
        return std::tuple(move.before, move.time, move.line);
    });
    std::uint32_t record = 0;
    std::uint32_t end = 0;  // line behind the last one emitted
    const auto emit = [&](std::uint32_t line, std::uint64_t offset, std::uint32_t count) {
        if (count == 0) return;
        if (record == 0 || line != end) index_.segments.push_back({record, line, offset});
        record += count;
        end = line + count;
    };
    std::uint32_t line = 0;
    std::uint64_t offset = index_.marks.front();
    auto insert = inserts.begin();
    for (const auto& removed : moves_) {
        for (; insert != inserts.end() && insert->before <= removed.line; ++insert) {
            if (insert->before > line) {
                emit(line, offset, insert->before - line);
                line = insert->before;
                offset = insert->beforeOffset;
            }
            emit(insert->line, insert->offset, 1);
        }
        emit(line, offset, removed.line - line);
        line = removed.line + 1;
        offset = LineAfter(removed.offset);
    }
    emit(line, offset, index_.records - line);
}

LineIndex LineScanner::Finish() {
    BuildSegments();
    for (std::uint32_t digit = 0; digit < 10; ++digit)
        if (seenProcessors_ >> digit & 1) processors_.insert(digit);
    index_.processors.assign(processors_.begin(), processors_.end());
    if (hasLatest_) {
        index_.lastTime = LatestTime();
        LineReader reader(index_);
        std::optional<TimedLine> first;
        while (!first && reader.Position() < index_.records)
            first = ParseTimedLine(reader.Next(), rules_.radix);
        if (first) index_.firstTime = std::min(first->time, index_.lastTime);
    }
    return std::move(index_);
}

}  // namespace kvx::formats
