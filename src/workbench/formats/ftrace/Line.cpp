#include "workbench/formats/ftrace/Line.h"

#include <algorithm>

#include "workbench/formats/text/LineCursor.h"

namespace kvx::formats::ftrace {
namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::size_t kMostFlags = 10;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool SkipBlanks(std::string_view& text) {
    const auto begin = std::min(text.find_first_not_of(kBlanks), text.size());
    text.remove_prefix(begin);
    return begin > 0;
}

std::string_view TrimEnd(std::string_view text) {
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
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
        const auto end = std::min(text.find_first_of(kBlanks), text.size());
        if (end > kMostFlags) return false;
        at = text.substr(end);
        if (!SkipBlanks(at) || !TakeTime(at, line)) return false;
    }
    SkipBlanks(at);
    line.event = at;
    return true;
}

// "comm-pid" or, as perf writes it, "comm pid" and "comm pid/tid".
bool TakeTask(std::string_view text, Line& line) {
    text = TrimEnd(text);
    const auto last = text.find_last_not_of("0123456789");
    if (last == std::string_view::npos || last + 1 == text.size()) return false;
    const auto pid = LineCursor(text.substr(last + 1)).AcceptNumber<std::int32_t>();
    if (!pid) return false;
    line.pid = static_cast<std::uint64_t>(*pid);
    if (text[last] == '/') {
        const auto process = text.find_last_not_of("0123456789", last - (last > 0 ? 1 : 0));
        if (process == std::string_view::npos || text[process] != ' ') return false;
        text = TrimEnd(text.substr(0, process));
    } else if (text[last] == '-') {
        text = text.substr(0, last);
    } else if (text[last] == ' ') {
        text = TrimEnd(text.substr(0, last));
    } else {
        return false;
    }
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    line.comm = text;
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
        const auto flags = place.Rest().substr(0, place.Rest().find_first_of(kBlanks));
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
    const auto number = text.find_last_not_of("0123456789", unit - 1);
    const bool apart = number != std::string_view::npos && text[number] == ' ';
    return apart && rest.starts_with(':') && Contains(text, "-");
}

std::optional<LostEvents> ParseLoss(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    LineCursor cursor(text);
    const auto cpu = cursor.Accept("CPU:") ? cursor.AcceptNumber<std::uint32_t>() : std::nullopt;
    if (!cpu || *cpu >= kMostProcessors || !cursor.Accept(" [")) return std::nullopt;
    const bool kernel = cursor.Accept("LOST ");
    const auto count = cursor.AcceptNumber();
    cursor.Accept(" ");
    if (!cursor.Accept(kernel ? "EVENTS]" : "EVENTS DROPPED]")) return std::nullopt;
    return LostEvents{*cpu, std::max<std::uint64_t>(count.value_or(1), 1)};
}

}  // namespace kvx::formats::ftrace
