#include "workbench/formats/text/LineScanner.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

#include "workbench/formats/OpenRecording.h"
#include "workbench/formats/text/LineEnds.h"
#include "workbench/formats/text/TimedLine.h"
#include "workbench/service/ChunksAhead.h"

namespace kvx::formats {
namespace {

constexpr std::uint64_t kChunk = std::uint64_t{64} << 10;
constexpr std::uint64_t kWorthAThread = std::uint64_t{4} << 20;
constexpr std::uint64_t kProgressStep = std::uint64_t{32} << 20;
constexpr std::uint32_t kMostRecords = std::numeric_limits<std::int32_t>::max();
constexpr std::size_t kMostQuickDigits = 16;
constexpr std::size_t kQuickRoom = 32;  // bytes from a line's beginning that the quick way may read
constexpr std::int64_t kBeforeAll = std::numeric_limits<std::int64_t>::min();

std::uint64_t Load(const char* bytes) {
    std::uint64_t value = 0;
    std::memcpy(&value, bytes, sizeof(value));
    return value;
}

// The eight bytes as a number that compares as the bytes do one after the other.
std::uint64_t InOrder(std::uint64_t loaded) {
    return std::endian::native == std::endian::little ? __builtin_bswap64(loaded) : loaded;
}

// Zero where the bytes under the mask are digits.
std::uint64_t OtherThanDigits(std::uint64_t loaded, std::uint64_t mask) {
    constexpr std::uint64_t kHigh = 0xF0F0F0F0F0F0F0F0u;
    const std::uint64_t high = loaded ^ 0x3030303030303030u;
    const std::uint64_t above9 = (loaded & ~kHigh) + 0x0606060606060606u;
    return (high | above9) & kHigh & mask;
}

std::uint64_t MaskOfFirst(std::size_t bytes) {
    char mask[8] = {};
    std::fill_n(mask, std::min<std::size_t>(bytes, 8), '\xFF');
    return Load(mask);
}

struct LineEndsOfChunk {
    std::vector<std::uint32_t> offsets;  // room, of which count are used
    std::size_t count = 0;
};

}  // namespace

bool LineScanner::Scan(IOpenProgress* progress) {
    const std::uint64_t size = text_.size();
    std::uint64_t begin = text_.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    const auto whole = size / kLineBlock * kLineBlock;
    service::ChunksAhead<LineEndsOfChunk> ends(
        static_cast<std::uint32_t>((whole + kChunk - 1) / kChunk),
        size >= kWorthAThread && std::thread::hardware_concurrency() > 1 ? 1 : 0,
        [&](std::uint32_t number, LineEndsOfChunk& found) {
            const auto chunk = number * kChunk;
            const auto length = static_cast<std::uint32_t>(std::min(kChunk, whole - chunk));
            found.offsets.resize(kChunk + 5);
            auto* const first = found.offsets.data();
            found.count = static_cast<std::size_t>(
                AppendLineEnds(text_.data() + chunk, length, first) - first);
        });
    for (std::uint64_t chunk = 0; chunk < whole; chunk += kChunk) {
        const LineEndsOfChunk& found = ends.Next();
        begin = OnLines(begin, chunk, std::span(found.offsets).first(found.count));
        if (progress && chunk % kProgressStep == 0 && !progress->Progress(chunk, size))
            return false;
    }
    while (begin < size) {
        const auto end = std::min<std::uint64_t>(text_.find('\n', begin), size);
        OnOtherLine(begin, end);
        begin = end + 1;
    }
    return true;
}

// The lines that end at those offsets from chunk; the first begins at begin. Answers where the line
// behind the last one begins.
std::uint64_t LineScanner::OnLines(std::uint64_t begin, std::uint64_t chunk,
                                   std::span<const std::uint32_t> ends) {
    for (std::size_t i = 0; i < ends.size();) {
        i += OnLikeLines(begin, chunk, ends.subspan(i));
        if (i == ends.size()) break;
        const auto end = chunk + ends[i++];
        OnOtherLine(begin, end);
        begin = end + 1;
    }
    return begin;
}

// Takes the lines that begin in the form of the latest one and are not earlier: nearly all. Answers
// how many; begin moves behind them.
std::size_t LineScanner::OnLikeLines(std::uint64_t& begin, std::uint64_t chunk,
                                     std::span<const std::uint32_t> ends) {
    if (digits_ == 0 || index_.records > kMostRecords - ends.size()) return 0;
    const std::size_t digits = digits_;
    const std::uint64_t mask1 = mask1_;
    const std::uint64_t mask2 = mask2_;
    Key latest = latest_;
    std::size_t i = 0;
    for (; i < ends.size() && begin + kQuickRoom <= text_.size(); ++i) {
        const char* line = text_.data() + begin;
        const std::uint64_t first = Load(line + 1);
        const std::uint64_t second = Load(line + 9);
        const Key key{InOrder(first & mask1), InOrder(second & mask2)};
        const bool earlier =
            (key.high < latest.high) | ((key.high == latest.high) & (key.low < latest.low));
        const auto odd = OtherThanDigits(first, mask1) | OtherThanDigits(second, mask2);
        if ((line[0] != '[') | (line[digits + 1] != ']') | earlier | (odd != 0)) break;
        if ((index_.records + i) % LineIndex::kMarkDistance == 0) AddMark(begin);
        latest = key;
        latestOffset_ = begin;
        if (line[digits + 2] == ':') NoteProcessor(line + digits + 2);
        begin = chunk + ends[i] + 1;
    }
    latest_ = latest;
    index_.records += static_cast<std::uint32_t>(i);
    index_.timedRecords += static_cast<std::uint32_t>(i);
    return i;
}

void LineScanner::OnOtherLine(std::uint64_t begin, std::uint64_t end) {
    const auto line = text_.substr(begin, end - begin);
    if (IsBlank(line)) return;
    const auto parsed = ParseTimedLine(line, rules_.radix);
    if (!parsed) return AddRecord(begin);
    if (hasLatest_ && parsed->time < LatestTime()) return OnEarlierLine(begin, LineAt(begin));
    AddRecord(begin);
    ++index_.timedRecords;
    if (parsed->processor) processors_.insert(*parsed->processor);
    Keep(begin, line.find(']') - 1);
}

void LineScanner::Keep(std::uint64_t begin, std::size_t digits) {
    hasLatest_ = true;
    latestOffset_ = begin;
    const bool quick =
        rules_.radix == 10 && digits <= kMostQuickDigits && begin + kQuickRoom <= text_.size();
    digits_ = quick ? digits : 0;
    if (!quick) return;
    mask1_ = MaskOfFirst(digits);
    mask2_ = digits > 8 ? MaskOfFirst(digits - 8) : 0;
    latest_ = {InOrder(Load(text_.data() + begin + 1) & mask1_),
               InOrder(Load(text_.data() + begin + 9) & mask2_)};
}

void LineScanner::OnEarlierLine(std::uint64_t begin, std::string_view line) {
    const auto parsed = ParseTimedLine(line, rules_.radix);
    if (parsed->processor) processors_.insert(*parsed->processor);
    ++index_.timedRecords;
    const auto time = TimeToHold(begin, line, *parsed);
    if (time < LatestTime() && !index_.truncated) {
        const Place place = PlaceOf(begin, time);
        moves_.push_back({index_.records, place.line, time, begin, place.offset});
    }
    AddRecord(begin);
}

void LineScanner::AddRecord(std::uint64_t begin) {
    if (index_.records == kMostRecords) {
        index_.truncated = true;
        return;
    }
    if (index_.records % LineIndex::kMarkDistance == 0) AddMark(begin);
    ++index_.records;
}

void LineScanner::AddMark(std::uint64_t begin) {
    index_.marks.push_back(begin);
    latestAtMark_.push_back(hasLatest_ ? LatestTime() : kBeforeAll);
}

// afterTime begins with a colon and has a few bytes behind it.
void LineScanner::NoteProcessor(const char* afterTime) {
    if (afterTime[1] != '[') return;
    if (IsDigit(afterTime[2]) && afterTime[3] == ']') {
        seenProcessors_ |= 1u << (afterTime[2] - '0');
        return;
    }
    const auto at = static_cast<std::size_t>(afterTime + 2 - text_.data());
    LineCursor cursor(text_.substr(at, 16));
    if (const auto number = cursor.AcceptNumber<std::uint32_t>(); number && cursor.Accept("]:"))
        processors_.insert(*number);
}

std::string_view LineScanner::LineAt(std::uint64_t offset) const {
    const auto end = std::min<std::uint64_t>(text_.find('\n', offset), text_.size());
    auto line = text_.substr(offset, end - offset);
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

// Where the line after that one begins, blank lines left out.
std::uint64_t LineScanner::LineAfter(std::uint64_t offset) const {
    do {
        offset = std::min<std::uint64_t>(text_.find('\n', offset), text_.size() - 1) + 1;
    } while (offset < text_.size() && IsBlank(LineAt(offset)));
    return offset;
}

// Where the line before that one begins, blank lines left out; 0 where there is none.
std::uint64_t LineScanner::LineBefore(std::uint64_t offset) const {
    while (offset > 1) {
        const auto feed = text_.rfind('\n', offset - 2);
        offset = feed == std::string_view::npos ? 0 : feed + 1;
        if (!IsBlank(LineAt(offset))) break;
    }
    return offset;
}

std::int64_t LineScanner::LatestTime() const {
    return ParseTimedLine(LineAt(latestOffset_), rules_.radix)->time;
}

LineIndex BuildLineIndex(std::string_view text, const LineRules& rules, IOpenProgress* progress,
                         bool& cancelled) {
    LineScanner scanner(text, rules);
    cancelled = !scanner.Scan(progress);
    return scanner.Finish();
}

}  // namespace kvx::formats
