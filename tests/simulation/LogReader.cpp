#include "simulation/LogReader.h"

#include <array>
#include <charconv>

namespace kvx::simulation {
namespace {

using Kind = LogLine::Kind;

// Takes what it accepts off the front of a text.
class Cursor {
  public:
    explicit Cursor(std::string_view text) : rest_(text) {}

    bool AtEnd() const { return rest_.empty(); }
    bool Accept(std::string_view text) {
        if (!rest_.starts_with(text)) return false;
        rest_.remove_prefix(text.size());
        return true;
    }
    bool AcceptNumber(std::int64_t& number) {
        const auto [end, error] =
            std::from_chars(rest_.data(), rest_.data() + rest_.size(), number);
        if (error != std::errc()) return false;
        rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
        return true;
    }
    // The characters before the first one of stops, or all.
    std::string AcceptUntil(std::string_view stops) {
        const auto word = rest_.substr(0, rest_.find_first_of(stops));
        rest_.remove_prefix(word.size());
        return std::string(word);
    }

  private:
    std::string_view rest_;
};

bool ReadTask(Cursor cursor, LogLine& line) {
    line.kind = Kind::State;
    if (!cursor.AcceptNumber(line.id) || !cursor.Accept(" becomes ")) return false;
    line.name = cursor.AcceptUntil(".");
    return cursor.Accept(".") && cursor.AtEnd();
}

bool ReadDispatch(Cursor cursor, LogLine& line) {
    line.kind = cursor.Accept("to task ") ? Kind::DispatchTo : Kind::DispatchFrom;
    if (line.kind == Kind::DispatchFrom && !cursor.Accept("from task ")) return false;
    return cursor.AcceptNumber(line.id) && cursor.Accept(".") && cursor.AtEnd();
}

// A call: "wai_sem semid=1. tmout=2." or "slp_tsk."
bool ReadCall(Cursor cursor, LogLine& line) {
    line.name = cursor.AcceptUntil(" .");
    if (cursor.Accept(".")) return cursor.AtEnd() && line.kind == Kind::CallEnter;
    while (cursor.Accept(" ")) {
        const std::string key = cursor.AcceptUntil("=");
        if (!cursor.Accept("=")) return false;
        line.values[key] = cursor.AcceptUntil(".");
        if (!cursor.Accept(".")) return false;
    }
    return cursor.AtEnd() && !line.values.empty();
}

// What is entered or left.
bool ReadCrossing(Cursor cursor, bool isEnter, LogLine& line) {
    constexpr std::array kHandlers = {"int handler", "isr", "cyclic handler", "alarm handler"};
    for (const std::string handler : kHandlers) {
        if (!cursor.Accept(handler + " ")) continue;
        line.kind = isEnter ? Kind::HandlerEnter : Kind::HandlerLeave;
        line.name = handler;
        return cursor.AcceptNumber(line.id) && cursor.Accept(".") && cursor.AtEnd();
    }
    line.kind = isEnter ? Kind::CallEnter : Kind::CallLeave;
    return ReadCall(cursor, line);
}

bool ReadMessage(Cursor cursor, LogLine& line) {
    if (cursor.Accept("dispatch ")) return ReadDispatch(cursor, line);
    if (cursor.Accept("task ")) return ReadTask(cursor, line);
    if (cursor.Accept("enter to ")) return ReadCrossing(cursor, true, line);
    if (cursor.Accept("leave from ")) return ReadCrossing(cursor, false, line);
    line.kind = Kind::Note;
    return cursor.Accept("applog str : ID ") || cursor.Accept("Drive ");
}

LogLine ReadLine(std::string_view text) {
    LogLine line;
    line.text = text;
    Cursor cursor(text);
    const bool isRead = cursor.Accept("[") && cursor.AcceptNumber(line.time) &&
                        cursor.Accept("] ") && ReadMessage(cursor, line);
    if (!isRead) line.kind = Kind::Bad;
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
