#include "workbench/formats/itron_standard/Statement.h"

#include <algorithm>
#include <array>

#include "workbench/formats/text/LineCursor.h"
#include "workbench/kernels/itron/Itron.h"

namespace kvx::formats::itron_standard {
namespace {

using service::Record;
using service::RecordKind;
using service::TaskState;

struct Meaning {
    std::string_view verb;
    RecordKind kind;
    TaskState state = TaskState::Runnable;
};

constexpr std::array<Meaning, 10> kBehaviours = {
    {{"dispatch", RecordKind::DispatchTo},
     {"activate", RecordKind::State, TaskState::Runnable},
     {"releaseFromWaiting", RecordKind::State, TaskState::Runnable},
     {"exit", RecordKind::State, TaskState::Dormant},
     {"terminate", RecordKind::State, TaskState::Dormant},
     {"wait", RecordKind::State, TaskState::Waiting},
     {"suspend", RecordKind::Suspend},
     {"resume", RecordKind::Resume},
     {"enterSVC", RecordKind::Call},
     {"leaveSVC", RecordKind::Return}}};

constexpr std::array<Meaning, 6> kStates = {
    {{"RUNNING", RecordKind::Runs},
     {"RUNNABLE", RecordKind::State, TaskState::Runnable},
     {"DORMANT", RecordKind::State, TaskState::Dormant},
     {"WAITING", RecordKind::State, TaskState::Waiting},
     {"SUSPENDED", RecordKind::State, TaskState::Suspended},
     {"WAITING-SUSPENDED", RecordKind::State, TaskState::WaitingSuspended}}};

template <std::size_t N>
bool Apply(const std::array<Meaning, N>& meanings, std::string_view verb, Record& record) {
    const auto at = std::ranges::find(meanings, verb, &Meaning::verb);
    if (at == meanings.end()) return false;
    record.kind = at->kind;
    record.state = at->state;
    return true;
}

}  // namespace

std::optional<Statement> ParseStatement(std::string_view text) {
    LineCursor cursor(text);
    Statement statement;
    statement.object = cursor.AcceptWord();
    if (statement.object.empty() || !cursor.Accept(".")) return std::nullopt;
    statement.verb = cursor.AcceptWord();
    if (statement.verb.empty()) return std::nullopt;
    statement.isAttribute = cursor.Accept("=");
    if (!statement.isAttribute && !cursor.Accept("(")) return std::nullopt;
    statement.arguments = cursor.Rest();
    if (statement.isAttribute) return statement;
    if (!statement.arguments.ends_with(')')) return std::nullopt;
    statement.arguments.remove_suffix(1);
    return statement;
}

ServiceCall ParseServiceCall(std::string_view arguments) {
    const auto comma = arguments.find(',');
    const auto known = kernels::itron::CallPrefix(arguments);
    if (comma != std::string_view::npos && comma >= known.size())
        return {arguments.substr(0, comma), arguments.substr(comma + 1)};
    if (!known.empty()) return {known, arguments.substr(known.size())};
    LineCursor cursor(arguments);
    const auto name = cursor.AcceptWord();
    return {name, cursor.Rest()};
}

std::string ParseArguments(std::string_view arguments) {
    std::string text;
    while (!arguments.empty()) {
        const auto end = std::min(arguments.find_first_of(".,"), arguments.size());
        if (end > 0) text.append(text.empty() ? "" : ", ").append(arguments.substr(0, end));
        arguments.remove_prefix(std::min(end + 1, arguments.size()));
    }
    return text;
}

void Interpret(const Statement& statement, bool isHandler, Record& record) {
    record.kind = RecordKind::Comment;
    if (statement.isAttribute && statement.verb == "prcId" && !isHandler) {
        LineCursor cursor(statement.arguments);
        const auto processor = cursor.AcceptNumber<std::uint32_t>();
        if (processor) record.target = *processor;
        record.kind = processor ? RecordKind::Migrate : RecordKind::Unreadable;
    } else if (statement.isAttribute && statement.verb == "state" && !isHandler) {
        if (!Apply(kStates, statement.arguments, record)) record.kind = RecordKind::Unreadable;
    } else if (!statement.isAttribute && isHandler &&
               (statement.verb == "enter" || statement.verb == "leave")) {
        record.kind = statement.verb == "enter" ? RecordKind::Enter : RecordKind::Leave;
    } else if (!statement.isAttribute) {
        Apply(kBehaviours, statement.verb, record);
    }
    if (record.kind == RecordKind::Call || record.kind == RecordKind::Return)
        record.name = ParseServiceCall(statement.arguments).name;
}

bool ReturnStaysBehindCall(std::string_view line, std::string_view before) {
    const auto callOf = [](std::string_view text, std::string_view verb) {
        const auto at = text.find(verb);
        return at == std::string_view::npos ? std::string_view()
                                            : ParseServiceCall(text.substr(at + verb.size())).name;
    };
    const auto returned = callOf(line, ".leaveSVC(");
    return !returned.empty() &&
           kernels::itron::Kernel().SameCall(callOf(before, ".enterSVC("), returned);
}

}  // namespace kvx::formats::itron_standard
