#include "workbench/formats/text/LineReader.h"

#include <algorithm>

#include "workbench/formats/text/TimedLine.h"

namespace kvx::formats {

void LineReader::Seek(std::uint32_t record) {
    // A record a little further on is reached line by line, without going back to a mark.
    if (positioned_ && record >= next_ && record - next_ < LineIndex::kMarkDistance) {
        while (next_ < record) Next();
        return;
    }
    positioned_ = true;
    next_ = record;
    const auto& segments = index_.segments;
    const auto after = std::ranges::upper_bound(segments, record, {}, &LineSegment::firstRecord);
    segment_ = static_cast<std::size_t>(after - segments.begin()) - 1;
    const LineSegment& segment = segments[segment_];
    const auto line = segment.firstLine + (record - segment.firstRecord);
    const auto mark = line / LineIndex::kMarkDistance;
    auto skip = line % LineIndex::kMarkDistance;
    offset_ = index_.marks[mark];
    if (segment.offset > offset_) {
        offset_ = segment.offset;
        skip = line - segment.firstLine;
    }
    for (; skip > 0; --skip) TakeLine();
}

std::string_view LineReader::Next() {
    if (!positioned_) Seek(0);
    const auto& segments = index_.segments;
    if (segment_ + 1 < segments.size() && segments[segment_ + 1].firstRecord == next_)
        offset_ = segments[++segment_].offset;
    ++next_;
    return TakeLine();
}

// The next line that is not blank.
std::string_view LineReader::TakeLine() {
    const auto text = index_.text;
    while (offset_ < text.size()) {
        const auto end = std::min<std::uint64_t>(text.find('\n', offset_), text.size());
        auto line = text.substr(offset_, end - offset_);
        offset_ = end + 1;
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (!line.empty() && (line.front() == '[' || !IsBlank(line))) return line;
    }
    return {};
}

}  // namespace kvx::formats
