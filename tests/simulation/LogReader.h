#pragma once
// Reads a generated log line by line, on its own: nothing of it comes from the program.

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kvx::simulation {

struct LogLine {
    enum class Kind {
        DispatchTo,
        DispatchFrom,
        State,
        HandlerEnter,
        HandlerLeave,
        CallEnter,
        CallLeave,
        Note,
        Bad
    };

    std::string text;
    Kind kind = Kind::Bad;
    std::int64_t time = 0;
    std::string name;  // of the state, the kind of handler or the call
    std::int64_t id = 0;
    std::map<std::string, std::string> values;  // parameters, or what a call returned

    // A value that must be there.
    std::int64_t Value(const std::string& key) const {
        return std::stoll(values.at(key), nullptr, 0);
    }
};

std::vector<LogLine> ReadLog(std::string_view log);

}  // namespace kvx::simulation
