#include "workbench/formats/itron_text/Message.h"

#include <algorithm>
#include <array>
#include <optional>

#include "host/TraceCodes.h"
#include "workbench/formats/text/LineCursor.h"
#include "workbench/kernels/itron/Itron.h"

namespace kvx::formats::itron_text {
namespace {

using service::ContextKey;
using service::ContextKind;
using service::Record;
using service::RecordKind;
using service::TaskState;

struct HandlerName {
    std::string_view name;
    ContextKind kind;
};
constexpr std::array<HandlerName, 5> kHandlers = {{{"int handler ", ContextKind::Interrupt},
                                                   {"exc handler ", ContextKind::Exception},
                                                   {"cyclic handler ", ContextKind::Cyclic},
                                                   {"alarm handler ", ContextKind::Alarm},
                                                   {"isr ", ContextKind::ServiceRoutine}}};

struct StateName {
    std::string_view name;
    TaskState state;
};
constexpr std::array<StateName, 6> kStates = {{{"RUNNABLE", TaskState::Runnable},
                                               {"UNKNOWN", TaskState::Unknown},
                                               {"WAITING-SUSPENDED", TaskState::WaitingSuspended},
                                               {"WAITING", TaskState::Waiting},
                                               {"DORMANT", TaskState::Dormant},
                                               {"SUSPENDED", TaskState::Suspended}}};

// Nothing is left but the full stop, which may be missing.
bool AtStop(LineCursor cursor) {
    cursor.Accept(".");
    return TrimStart(cursor.Rest()).empty();
}

// The form that the parameters of a call have: nothing, or " name=value" and so on.
bool IsParameterList(std::string_view text) {
    if (text.empty() || text == ".") return true;
    LineCursor cursor(text);
    return cursor.Accept(" ") &&
           (cursor.AtEnd() || (!cursor.AcceptWord().empty() && cursor.Accept("=")));
}

// Bytes that no text has: the line was damaged.
bool HasControlBytes(std::string_view text) {
    return std::ranges::any_of(text, [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x20 && byte != '\t' && byte != 0x1B;
    });
}

RecordKind CommentOrDamage(std::string_view message) {
    return HasControlBytes(message) ? RecordKind::Unreadable : RecordKind::Comment;
}

// "dispatch to task 3."
RecordKind ParseDispatch(LineCursor cursor, Record& record) {
    const auto kind = cursor.Accept("to task ")     ? RecordKind::DispatchTo
                      : cursor.Accept("from task ") ? RecordKind::DispatchFrom
                                                    : RecordKind::Unreadable;
    const auto id = cursor.AcceptNumber<std::uint32_t>();
    if (!id || !AtStop(cursor)) return RecordKind::Unreadable;
    record.subject = {ContextKind::Task, *id};
    return kind;
}

// "migrates from processor 1 to processor 2."
RecordKind ParseMigration(LineCursor cursor, Record& record) {
    if (!cursor.AcceptNumber<std::uint32_t>() || !cursor.Accept(" to processor "))
        return RecordKind::Unreadable;
    const auto target = cursor.AcceptNumber<std::uint32_t>();
    if (!target || !AtStop(cursor)) return RecordKind::Unreadable;
    record.target = *target;
    return RecordKind::Migrate;
}

// A word, or what stands in quotes.
std::string_view AcceptName(LineCursor& cursor) {
    if (!cursor.Accept("\"")) return cursor.AcceptWord();
    const auto rest = cursor.Rest();
    const auto name = rest.substr(0, rest.find('"'));
    cursor = LineCursor(rest.substr(std::min(name.size() + 1, rest.size())));
    return name;
}

// The name of a call and what follows it.
bool AcceptCall(LineCursor& cursor, bool anyParameters, Record& record) {
    record.name = anyParameters ? AcceptName(cursor) : cursor.AcceptWord();
    const bool fits = anyParameters ? cursor.Rest().starts_with(' ') || AtStop(cursor)
                                    : IsParameterList(cursor.Rest());
    return !record.name.empty() && fits;
}

RecordKind ParseReturn(LineCursor cursor, bool anyParameters, Record& record) {
    if (cursor.Accept("tex ") || !AcceptCall(cursor, anyParameters, record))
        return RecordKind::Comment;
    return RecordKind::Return;
}

// What exported logs say besides: " (SEM)", the cause of a wait, and " on processor 2".
void AcceptAdditions(LineCursor& cursor, Record& record) {
    if (!cursor.Rest().starts_with(' ')) return;
    for (int code = 1; code <= host::kStateCodes; ++code) {
        const std::string_view name = host::StateName(code);
        if (name.starts_with("WAI") && cursor.Accept(name.substr(3)))
            record.waitCode = static_cast<std::uint8_t>(code);
    }
    LineCursor ahead = cursor;
    if (!ahead.Accept(" on processor ")) return;
    if (const auto processor = ahead.AcceptNumber<std::uint32_t>()) {
        record.target = *processor;
        cursor = ahead;
    }
}

// "task 3 becomes WAITING."; also migration, phases and exception routines, which run as their
// task.
RecordKind ParseTask(LineCursor cursor, bool anyParameters, Record& record) {
    const auto id = cursor.AcceptNumber<std::uint32_t>();
    if (!id) return RecordKind::Comment;
    record.subject = {ContextKind::Task, *id};
    if (cursor.Accept(" migrates from processor ")) return ParseMigration(cursor, record);
    // A call that returns behind the end of a log that was cut out of another.
    if (cursor.Accept(" leave from ")) return ParseReturn(cursor, anyParameters, record);
    if (!cursor.Accept(" becomes ")) return RecordKind::Comment;
    for (const auto& entry : kStates) {
        if (!cursor.Accept(entry.name)) continue;
        record.state = entry.state;
        AcceptAdditions(cursor, record);
        return AtStop(cursor) ? RecordKind::State : RecordKind::Unreadable;
    }
    return RecordKind::Unreadable;
}

// "chg_pri tskid=3. tskpri=5.": 0 stands for the task that issues it, and for the priority with
// which the task began.
void ParsePriority(LineCursor cursor, Record& record) {
    if (!cursor.Accept(" tskid=")) return;
    const auto task = cursor.AcceptNumber<std::uint32_t>();
    if (!task || !(cursor.Accept(". ") || cursor.Accept(", ")) || !cursor.Accept("tskpri=")) return;
    const auto priority = cursor.AcceptNumber<std::uint16_t>();
    if (!priority) return;
    record.subject = {ContextKind::Task, *task};
    record.priority = *priority == 0 ? service::kInitialPriority : *priority;
}

// What is entered or left: a handler or a system call.
RecordKind ParseCrossing(LineCursor cursor, bool enter, bool anyParameters, Record& record) {
    for (const auto& handler : kHandlers) {
        if (!cursor.Accept(handler.name)) continue;
        const auto id = cursor.AcceptNumber<std::uint32_t>();
        if (!id || !AtStop(cursor)) return RecordKind::Unreadable;
        record.subject = {handler.kind, *id};
        return enter ? RecordKind::Enter : RecordKind::Leave;
    }
    if (cursor.Accept("tex ")) return RecordKind::Comment;
    if (!AcceptCall(cursor, anyParameters, record)) return RecordKind::Comment;
    if (enter && record.name.ends_with("chg_pri")) ParsePriority(cursor, record);
    return enter ? RecordKind::Call : RecordKind::Return;
}

RecordKind Parse(std::string_view message, bool anyParameters, Record& record) {
    LineCursor cursor(message);
    if (message.empty()) return RecordKind::Comment;
    switch (message.front()) {
        case 'd':
            if (cursor.Accept("dispatch ")) return ParseDispatch(cursor, record);
            break;
        case 't':
            if (cursor.Accept("task ")) return ParseTask(cursor, anyParameters, record);
            break;
        case 'e':
            if (cursor.Accept("enter to "))
                return ParseCrossing(cursor, true, anyParameters, record);
            break;
        case 'l':
            if (cursor.Accept("leave from ") || cursor.Accept("leave to "))
                return ParseCrossing(cursor, false, anyParameters, record);
            break;
        case 'c':
            if (anyParameters && cursor.Accept("call of ") &&
                ParseCrossing(cursor, true, true, record) == RecordKind::Call)
                return RecordKind::InstantCall;
            break;
        case 'r':
            if (message == "recording begins.") return RecordKind::Begin;
            if (message == "records lost.") return RecordKind::Gap;
            break;
        default:
            break;
    }
    return RecordKind::Comment;
}

// The name of the call that the message of a line enters or returns from.
std::string_view CallOf(std::string_view line, RecordKind kind) {
    const auto at = line.find(kind == RecordKind::Call ? "enter to " : "leave ");
    if (at == std::string_view::npos) return {};
    Record record;
    return Parse(line.substr(at), false, record) == kind ? record.name : std::string_view();
}

}  // namespace

void ParseMessage(std::string_view message, Record& record, bool anyParameters) {
    record.kind = Parse(message, anyParameters, record);
    if (record.kind == RecordKind::Comment) record.kind = CommentOrDamage(message);
    const bool named = record.kind == RecordKind::Call || record.kind == RecordKind::Return;
    if (named && HasControlBytes(message)) record.kind = RecordKind::Unreadable;
}

std::string ParseDetail(std::string_view message, bool anyParameters) {
    Record record;
    const auto kind = Parse(message, anyParameters, record);
    if (kind != RecordKind::Call && kind != RecordKind::Return && kind != RecordKind::InstantCall)
        return {};
    const auto begin = static_cast<std::size_t>(record.name.data() - message.data());
    auto rest = message.substr(begin + record.name.size());
    if (anyParameters) {
        if (rest.starts_with('"')) rest.remove_prefix(1);
        if (rest.starts_with(' ')) rest.remove_prefix(1);
        if (rest.ends_with('.')) rest.remove_suffix(1);
        return std::string(rest);
    }
    std::string detail;
    while (!rest.empty()) {
        // A value ends in a full stop or a comma with a blank, or the end, behind it.
        std::size_t end = 0;
        const auto separates = [&](std::size_t i) {
            return (rest[i] == '.' || rest[i] == ',') &&
                   (i + 1 == rest.size() || rest[i + 1] == ' ');
        };
        while (end < rest.size() && !separates(end)) ++end;
        auto value = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        value.remove_prefix(std::min(value.find_first_not_of(' '), value.size()));
        if (!value.empty()) detail.append(detail.empty() ? "" : ", ").append(value);
    }
    return detail;
}

bool IsComplete(std::string_view message) {
    constexpr std::array<std::string_view, 4> kBeginnings = {"enter to ", "leave from ",
                                                             "dispatch ", "task "};
    for (const auto beginning : kBeginnings) {
        if (beginning.starts_with(message)) return false;
        if (message.starts_with(beginning)) return message.ends_with('.');
    }
    return true;
}

bool ReturnStaysBehindCall(std::string_view line, std::string_view before) {
    const auto returned = CallOf(line, RecordKind::Return);
    return !returned.empty() &&
           kernels::itron::Kernel().SameCall(CallOf(before, RecordKind::Call), returned);
}

}  // namespace kvx::formats::itron_text
