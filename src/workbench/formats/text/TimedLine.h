#pragma once
// The beginning that all lines of ITRON logs share: "[time]", or "[time]:[processor]:".

#include <cstdint>
#include <optional>
#include <string_view>

#include "workbench/formats/text/LineCursor.h"

namespace kvx::formats {

struct TimedLine {
    std::int64_t time = 0;
    std::optional<std::uint32_t> processor;
    std::string_view message;  // what follows, without the blank before it
};

// None: the line does not begin like that.
inline std::optional<TimedLine> ParseTimedLine(std::string_view line, unsigned radix) {
    LineCursor cursor(line);
    if (!cursor.Accept("[")) return std::nullopt;
    const auto time = cursor.AcceptNumber<std::int64_t>(radix);
    if (!time || !cursor.Accept("]")) return std::nullopt;
    TimedLine parsed{*time, std::nullopt, {}};
    LineCursor ahead = cursor;
    if (ahead.Accept(":[")) {
        parsed.processor = ahead.AcceptNumber<std::uint32_t>();
        if (parsed.processor && ahead.Accept("]:"))
            cursor = ahead;
        else
            parsed.processor.reset();
    }
    cursor.Accept(" ");
    parsed.message = cursor.Rest();
    return parsed;
}

// The line begins like one, whatever the size of its numbers.
inline bool LooksTimed(std::string_view line, std::string_view& message) {
    LineCursor cursor(line);
    if (!cursor.Accept("[") || cursor.AcceptWord().empty() || !cursor.Accept("]")) return false;
    LineCursor ahead = cursor;
    if (ahead.Accept(":[") && !ahead.AcceptWord().empty() && ahead.Accept("]:")) cursor = ahead;
    cursor.Accept(" ");
    message = cursor.Rest();
    return true;
}

// White space only.
inline bool IsBlank(std::string_view line) {
    return line.find_first_not_of(" \t\r") == std::string_view::npos;
}

}  // namespace kvx::formats
