#include "simulation/LogReader.h"

#include <regex>

namespace kvx::simulation {
namespace {

using Kind = LogLine::Kind;

// " a=1. b=0x2f." ; false: it is not of that form.
bool ReadValues(std::string_view text, std::map<std::string, std::string>& values) {
    while (!text.empty()) {
        const auto equals = text.find('=');
        const auto stop = text.find('.');
        if (text[0] != ' ' || equals == text.npos || stop == text.npos || equals > stop)
            return false;
        values[std::string(text.substr(1, equals - 1))] =
            text.substr(equals + 1, stop - equals - 1);
        text.remove_prefix(stop + 1);
    }
    return true;
}

bool ReadCall(const std::string& rest, LogLine& line) {
    static const std::regex form("(enter to|leave from) ([a-z_]+)(\\.|( .*))");
    std::smatch match;
    if (!std::regex_match(rest, match, form)) return false;
    line.kind = match[1] == "enter to" ? Kind::CallEnter : Kind::CallLeave;
    line.name = match[2];
    return ReadValues(match[4].str(), line.values);
}

void ReadMessage(const std::string& rest, LogLine& line) {
    static const std::regex dispatch("dispatch (to|from) task ([0-9]+)\\.");
    static const std::regex state("task ([0-9]+) becomes ([A-Z-]+)\\.");
    static const std::regex handler(
        "(enter to|leave from) (int handler|isr|cyclic handler|alarm handler) ([0-9]+)\\.");
    std::smatch match;
    if (std::regex_match(rest, match, dispatch)) {
        line.kind = match[1] == "to" ? Kind::DispatchTo : Kind::DispatchFrom;
        line.id = std::stoll(match[2]);
    } else if (std::regex_match(rest, match, state)) {
        line.kind = Kind::State;
        line.id = std::stoll(match[1]);
        line.name = match[2];
    } else if (std::regex_match(rest, match, handler)) {
        line.kind = match[1] == "enter to" ? Kind::HandlerEnter : Kind::HandlerLeave;
        line.name = match[2];
        line.id = std::stoll(match[3]);
    } else if (!ReadCall(rest, line)) {
        const bool isNote = rest.starts_with("applog str : ID ") || rest.starts_with("Drive ");
        line.kind = isNote ? Kind::Note : Kind::Bad;
    }
}

LogLine ReadLine(std::string_view text) {
    LogLine line;
    line.text = text;
    static const std::regex form("\\[([0-9]+)\\] (.+)");
    std::smatch match;
    if (!std::regex_match(line.text, match, form)) return line;
    line.time = std::stoll(match[1]);
    ReadMessage(match[2], line);
    return line;
}

}  // namespace

std::vector<LogLine> ReadLog(std::string_view log) {
    std::vector<LogLine> lines;
    while (!log.empty()) {
        const auto end = log.find('\n');
        lines.push_back(ReadLine(log.substr(0, end)));
        log.remove_prefix(end == log.npos ? log.size() : end + 1);
    }
    return lines;
}

}  // namespace kvx::simulation
