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

// None: the line does not begin like that. The answer is made where it is returned: put together
// elsewhere and copied, it costs more than all the rest.
inline std::optional<TimedLine> ParseTimedLine(std::string_view line, unsigned radix) {
    std::optional<TimedLine> parsed;
    LineCursor cursor(line);
    if (!cursor.Accept("[")) return parsed;
    const auto time = cursor.AcceptNumber<std::int64_t>(radix);
    if (!time || !cursor.Accept("]")) return parsed;
    parsed.emplace().time = *time;
    LineCursor ahead = cursor;
    if (ahead.Accept(":[")) {
        const auto processor = ahead.AcceptNumber<std::uint32_t>();
        if (processor && ahead.Accept("]:")) {
            parsed->processor = processor;
            cursor = ahead;
        }
    }
    cursor.Accept(" ");
    parsed->message = cursor.Rest();
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
