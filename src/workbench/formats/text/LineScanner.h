#pragma once
// The pass over a text log that builds its index.

#include <cstdint>
#include <set>
#include <span>
#include <string_view>
#include <vector>

#include "workbench/formats/text/LineIndex.h"
#include "workbench/formats/text/TimedLine.h"

namespace kvx::formats {

class LineScanner {
  public:
    LineScanner(std::string_view text, const LineRules& rules) : text_(text), rules_(rules) {
        index_.text = text;
    }

    // False: progress stopped it.
    bool Scan(IOpenProgress* progress);
    LineIndex Finish();

  private:
    // A line whose time is earlier than one before it, and the line it belongs in front of.
    struct Move {
        std::uint32_t line = 0;
        std::uint32_t before = 0;
        std::int64_t time = 0;
        std::uint64_t offset = 0;
        std::uint64_t beforeOffset = 0;
    };
    struct Place {
        std::uint32_t line = 0;
        std::uint64_t offset = 0;
    };
    // The digits of a time as numbers that compare like the time, for times of equal length.
    struct Key {
        std::uint64_t high = 0;
        std::uint64_t low = 0;
    };

    std::uint64_t OnLines(std::uint64_t begin, std::uint64_t chunk,
                          std::span<const std::uint32_t> ends);
    std::size_t OnLikeLines(std::uint64_t& begin, std::uint64_t chunk,
                            std::span<const std::uint32_t> ends);
    void OnOtherLine(std::uint64_t begin, std::uint64_t end);
    void OnEarlierLine(std::uint64_t begin, std::string_view line);
    void Keep(std::uint64_t begin, std::size_t digits);
    void AddRecord(std::uint64_t begin);
    void AddMark(std::uint64_t begin);
    void NoteProcessor(const char* afterTime);
    std::int64_t TimeToHold(std::uint64_t begin, std::string_view line, const TimedLine& parsed);
    Place PlaceOf(std::uint64_t begin, std::int64_t time) const;
    Place PlaceFarBack(std::int64_t time) const;
    std::string_view LineAt(std::uint64_t offset) const;
    std::uint64_t LineAfter(std::uint64_t offset) const;
    std::uint64_t LineBefore(std::uint64_t offset) const;
    std::int64_t LatestTime() const;
    void BuildSegments();

    std::string_view text_;
    LineRules rules_;
    LineIndex index_;
    std::vector<std::int64_t> latestAtMark_;  // latest time before each mark
    std::vector<Move> moves_;
    std::set<std::uint32_t> processors_;
    std::uint32_t seenProcessors_ = 0;  // bit set of those below 10

    // The latest line, in whose form most lines are.
    bool hasLatest_ = false;
    std::uint64_t latestOffset_ = 0;
    std::size_t digits_ = 0;  // of its time; 0: not in the quick form
    Key latest_;
    std::uint64_t mask1_ = 0;
    std::uint64_t mask2_ = 0;
};

}  // namespace kvx::formats
