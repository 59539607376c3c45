#pragma once
// Finds the records of a text log: which lines there are, and in which order their times put them.
// Nothing but the beginnings of the lines is looked at, and little is kept: the offset of every
// 64th line, and where the order of time differs from that of the file.

#include <cstdint>
#include <string_view>
#include <vector>

namespace kvx::formats {

class IOpenProgress;

// Lines from firstLine on stand in the order of the file, beginning with record firstRecord.
struct LineSegment {
    std::uint32_t firstRecord = 0;
    std::uint32_t firstLine = 0;
    std::uint64_t offset = 0;
};

struct LineIndex {
    static constexpr std::uint32_t kMarkDistance = 64;

    std::string_view text;
    std::uint32_t records = 0;              // blank lines are none
    std::vector<std::uint64_t> marks;       // offset of each 64th record in the order of the file
    std::vector<LineSegment> segments;      // in order of time; never empty where there are records
    std::vector<std::uint32_t> processors;  // ascending; empty where no line names one
    std::int64_t firstTime = 0;
    std::int64_t lastTime = 0;
    std::uint32_t timedRecords = 0;  // begin with a time
    std::uint64_t stepsBack = 0;     // times less than the one before of the same processor
    bool truncated = false;          // more lines than can be numbered; the rest is left out
};

struct LineRules {
    unsigned radix = 10;
    // Whether line has to stay behind the line before it of the same processor, whatever its time
    // says: the return of a call whose time steps back behind that of the call.
    bool (*staysBehind)(std::string_view line, std::string_view before) = nullptr;
};

// Records come in order of time, those of equal times in the order of the file. progress may be
// null; cancelled is set when it stops the work. text must outlive the index.
LineIndex BuildLineIndex(std::string_view text, const LineRules& rules, IOpenProgress* progress,
                         bool& cancelled);

}  // namespace kvx::formats
