#include "workbench/formats/ftrace/Line.h"

#include <algorithm>

#include "workbench/formats/text/LineCursor.h"

namespace kvx::formats::ftrace {
namespace {

constexpr std::size_t kMostFlags = 10;

bool SkipBlanks(std::string_view& text) {
    const auto size = text.size();
    text = TrimStart(text);
    return text.size() < size;
}

// To the first blank.
std::string_view FirstWord(std::string_view text) {
    return text.substr(
        0, static_cast<std::size_t>(std::ranges::find_if(text, IsBlankOrTab) - text.begin()));
}

// "106439.675578" in nanoseconds; digits beyond those are cut off. Takes the colon behind it too.
bool TakeTime(std::string_view& text, Line& line) {
    constexpr std::int64_t kMostSeconds = 9'000'000'000;
    LineCursor cursor(text);
    const auto whole = cursor.AcceptNumber<std::int64_t>();
    if (!whole) return false;
    line.time = *whole;
    line.hasUnit = cursor.Accept(".");
    auto rest = cursor.Rest();
    if (line.hasUnit) {
        if (*whole > kMostSeconds || rest.empty() || !IsDigit(rest.front())) return false;
        std::int64_t part = 0;
        int digits = 0;
        for (; !rest.empty() && IsDigit(rest.front()); rest.remove_prefix(1))
            if (digits < 9) part = part * 10 + (rest.front() - '0'), ++digits;
        for (; digits < 9; ++digits) part *= 10;
        line.time = *whole * 1'000'000'000 + part;
    }
    if (!rest.starts_with(':')) return false;
    rest.remove_prefix(1);
    text = rest;
    return true;
}

// "[flags] time: event", from behind the processor. Times without a unit may follow it at once.
bool TakeTail(std::string_view text, Line& line) {
    if (!SkipBlanks(text) && (text.empty() || !IsDigit(text.front()))) return false;
    auto at = text;
    if (!TakeTime(at, line)) {
        const auto flags = FirstWord(text).size();
        if (flags > kMostFlags) return false;
        at = text.substr(flags);
        if (!SkipBlanks(at) || !TakeTime(at, line)) return false;
    }
    SkipBlanks(at);
    line.event = at;
    return true;
}

// "comm-pid" or, as perf writes it, "comm pid" and "comm pid/tid".
bool TakeTask(std::string_view text, Line& line) {
    text = TrimEnd(text);
    auto name = TrimDigits(text);
    if (name.empty() || name.size() == text.size()) return false;
    const auto pid = LineCursor(text.substr(name.size())).AcceptNumber<std::int32_t>();
    if (!pid) return false;
    line.pid = static_cast<std::uint64_t>(*pid);
    if (name.ends_with('/')) {
        name.remove_suffix(1);
        name = TrimDigits(name);
        if (!name.ends_with(' ')) return false;
    } else if (name.ends_with('-')) {
        name.remove_suffix(1);
        line.comm = TrimStart(name);
        return true;
    } else if (!name.ends_with(' ')) {
        return false;
    }
    line.comm = TrimStart(TrimEnd(name));
    return true;
}

std::string_view WithoutGroup(std::string_view text) {
    text = TrimEnd(text);
    if (!text.ends_with(')')) return text;
    const auto open = text.rfind('(');
    return open == std::string_view::npos ? text : text.substr(0, open);
}

// The processor stands in the bracket at that place.
bool TakeAt(std::string_view text, std::size_t bracket, Line& line) {
    LineCursor cursor(text.substr(bracket + 1));
    const auto cpu = cursor.AcceptNumber<std::uint32_t>();
    if (!cpu || *cpu >= kMostProcessors || !cursor.Accept("]")) return false;
    line.cpu = *cpu;
    line.isPadded = text[bracket + 2] != ']';
    return TakeTail(cursor.Rest(), line) && TakeTask(WithoutGroup(text.substr(0, bracket)), line);
}

// "ls-4734    2d..1. 106439.675578080: event": processor and flags run together.
bool TakeWithoutBrackets(std::string_view text, Line& line) {
    for (auto dash = text.find('-'); dash != std::string_view::npos;
         dash = text.find('-', dash + 1)) {
        LineCursor cursor(text.substr(dash + 1));
        const auto pid = cursor.AcceptNumber<std::int32_t>();
        auto rest = cursor.Rest();
        if (!pid || !SkipBlanks(rest)) continue;
        LineCursor place(rest);
        const auto cpu = place.AcceptNumber<std::uint32_t>();
        if (!cpu || *cpu >= kMostProcessors) continue;
        const auto flags = FirstWord(place.Rest());
        if (flags.size() < 3 || flags.size() > kMostFlags || Contains(flags, ":")) continue;
        line.cpu = *cpu;
        const auto task = text.substr(0, text.size() - cursor.Rest().size());
        if (TakeTail(place.Rest().substr(flags.size()), line) && TakeTask(task, line)) return true;
    }
    return false;
}

}  // namespace

std::optional<Line> ParseLine(std::string_view text) {
    Line line;
    for (auto at = text.find('['); at != std::string_view::npos; at = text.find('[', at + 1))
        if (TakeAt(text, at, line)) return line;
    if (TakeWithoutBrackets(text, line)) return line;
    return std::nullopt;
}

bool IsRelativeLine(std::string_view text) {
    const auto unit = text.find("us");
    if (unit == std::string_view::npos || unit == 0 || !IsDigit(text[unit - 1])) return false;
    auto rest = text.substr(unit + 2);
    if (!rest.empty() && !IsDigit(rest.front()) && rest.front() != ':') rest.remove_prefix(1);
    const bool apart = TrimDigits(text.substr(0, unit)).ends_with(' ');
    return apart && rest.starts_with(':') && Contains(text, "-");
}

std::optional<LostEvents> ParseLoss(std::string_view text) {
    LineCursor cursor(TrimStart(text));
    const auto cpu = cursor.Accept("CPU:") ? cursor.AcceptNumber<std::uint32_t>() : std::nullopt;
    if (!cpu || *cpu >= kMostProcessors || !cursor.Accept(" [")) return std::nullopt;
    const bool kernel = cursor.Accept("LOST ");
    const auto count = cursor.AcceptNumber();
    cursor.Accept(" ");
    if (!cursor.Accept(kernel ? "EVENTS]" : "EVENTS DROPPED]")) return std::nullopt;
    return LostEvents{*cpu, std::max<std::uint64_t>(count.value_or(1), 1)};
}

}  // namespace kvx::formats::ftrace
