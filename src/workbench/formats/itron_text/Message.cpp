#include "workbench/formats/itron_text/Message.h"

#include <algorithm>
#include <array>
#include <optional>

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
constexpr std::array<StateName, 5> kStates = {{{"RUNNABLE", TaskState::Runnable},
                                               {"WAITING-SUSPENDED", TaskState::WaitingSuspended},
                                               {"WAITING", TaskState::Waiting},
                                               {"DORMANT", TaskState::Dormant},
                                               {"SUSPENDED", TaskState::Suspended}}};

// Nothing is left but the full stop, which may be missing.
bool AtStop(LineCursor cursor) {
    cursor.Accept(".");
    return cursor.Rest().find_first_not_of(" \t") == std::string_view::npos;
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

// "task 3 becomes WAITING."; also migration, phases and exception routines, which run as their
// task.
RecordKind ParseTask(LineCursor cursor, Record& record) {
    const auto id = cursor.AcceptNumber<std::uint32_t>();
    if (!id) return RecordKind::Comment;
    record.subject = {ContextKind::Task, *id};
    if (cursor.Accept(" migrates from processor ")) return ParseMigration(cursor, record);
    if (!cursor.Accept(" becomes ")) return RecordKind::Comment;
    for (const auto& entry : kStates) {
        if (!cursor.Accept(entry.name)) continue;
        record.state = entry.state;
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
RecordKind ParseCrossing(LineCursor cursor, bool enter, Record& record) {
    for (const auto& handler : kHandlers) {
        if (!cursor.Accept(handler.name)) continue;
        const auto id = cursor.AcceptNumber<std::uint32_t>();
        if (!id || !AtStop(cursor)) return RecordKind::Unreadable;
        record.subject = {handler.kind, *id};
        return enter ? RecordKind::Enter : RecordKind::Leave;
    }
    if (cursor.Accept("tex ")) return RecordKind::Comment;
    record.name = cursor.AcceptWord();
    if (record.name.empty() || !IsParameterList(cursor.Rest())) return RecordKind::Comment;
    if (enter && record.name.ends_with("chg_pri")) ParsePriority(cursor, record);
    return enter ? RecordKind::Call : RecordKind::Return;
}

RecordKind Parse(std::string_view message, Record& record) {
    LineCursor cursor(message);
    if (message.empty()) return RecordKind::Comment;
    switch (message.front()) {
        case 'd':
            if (cursor.Accept("dispatch ")) return ParseDispatch(cursor, record);
            break;
        case 't':
            if (cursor.Accept("task ")) return ParseTask(cursor, record);
            break;
        case 'e':
            if (cursor.Accept("enter to ")) return ParseCrossing(cursor, true, record);
            break;
        case 'l':
            if (cursor.Accept("leave from ") || cursor.Accept("leave to "))
                return ParseCrossing(cursor, false, record);
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
    return Parse(line.substr(at), record) == kind ? record.name : std::string_view();
}

}  // namespace

void ParseMessage(std::string_view message, Record& record) {
    record.kind = Parse(message, record);
    if (record.kind == RecordKind::Comment) record.kind = CommentOrDamage(message);
    const bool named = record.kind == RecordKind::Call || record.kind == RecordKind::Return;
    if (named && HasControlBytes(message)) record.kind = RecordKind::Unreadable;
}

std::string ParseDetail(std::string_view message) {
    Record record;
    const auto kind = Parse(message, record);
    if (kind != RecordKind::Call && kind != RecordKind::Return) return {};
    const auto begin = static_cast<std::size_t>(record.name.data() - message.data());
    auto rest = message.substr(begin + record.name.size());
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
