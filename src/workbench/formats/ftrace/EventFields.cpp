#include "workbench/formats/ftrace/EventFields.h"

#include <algorithm>
#include <array>
#include <initializer_list>

#include "workbench/formats/text/LineCursor.h"

namespace kvx::formats::ftrace {
namespace {

using Form = kernels::EventField::Form;

constexpr FieldRule kSwitch[] = {{"prev_comm", Form::Text},         {"prev_pid", Form::Unsigned},
                                 {"prev_prio", Form::Signed, true}, {"prev_state", Form::Label},
                                 {"next_comm", Form::Text},         {"next_pid", Form::Unsigned},
                                 {"next_prio", Form::Signed, true}};
constexpr FieldRule kWakeup[] = {{"comm", Form::Text},
                                 {"pid", Form::Unsigned},
                                 {"prio", Form::Signed, true},
                                 {"success", Form::Unsigned, true},
                                 {"target_cpu", Form::Unsigned}};
constexpr FieldRule kMigration[] = {{"comm", Form::Text},
                                    {"pid", Form::Unsigned},
                                    {"prio", Form::Signed, true},
                                    {"orig_cpu", Form::Unsigned},
                                    {"dest_cpu", Form::Unsigned}};
constexpr FieldRule kInterrupt[] = {{"irq", Form::Unsigned}, {"name", Form::Text, true}};
constexpr FieldRule kInterruptExit[] = {{"irq", Form::Unsigned}};
constexpr FieldRule kSoftInterrupt[] = {{"vec", Form::Unsigned}};

struct Known {
    std::string_view name;
    Layout layout;
    std::span<const FieldRule> fields;
};
constexpr Known kKnown[] = {{"sched_switch", Layout::Switch, kSwitch},
                            {"sched_wakeup", Layout::Wakeup, kWakeup},
                            {"sched_wakeup_new", Layout::Wakeup, kWakeup},
                            {"sched_waking", Layout::Wakeup, kWakeup},
                            {"sched_migrate_task", Layout::Pairs, kMigration},
                            {"irq_handler_entry", Layout::Pairs, kInterrupt},
                            {"irq_handler_exit", Layout::Pairs, kInterruptExit},
                            {"softirq_entry", Layout::Pairs, kSoftInterrupt},
                            {"softirq_exit", Layout::Pairs, kSoftInterrupt}};

constexpr FieldRule kArguments[] = {{"", Form::Text}};
constexpr FieldRule kResult[] = {{"ret", Form::Signed}};
constexpr FieldRule kRawEntry[] = {{"id", Form::Unsigned}, {"", Form::Text}};

bool IsNameByte(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '.';
}

// A decimal number to the next blank, which may be negative.
std::optional<std::uint64_t> ParseNumber(std::string_view text) {
    LineCursor cursor(text);
    const bool negative = cursor.Accept("-");
    const auto number = cursor.AcceptNumber();
    if (!number || !(cursor.AtEnd() || cursor.Rest().front() == ' ')) return std::nullopt;
    return negative ? 0 - *number : *number;
}

// The state of a task that is switched out, as the kernel numbers it: R ready, S and D wait, T and
// t are stopped, X, Z and x have ended. A parked task counts as stopped, a worker without work (I)
// waits. Whatever else is joined by bars says how, as R+ says that the task was preempted.
std::optional<std::uint64_t> StateBits(std::string_view text) {
    if (!text.empty() && text.front() >= '0' && text.front() <= '9') return ParseNumber(text);
    std::uint64_t bits = 0;
    for (const char c : text) {
        switch (c) {
            case 'S':
                bits |= 0x01;
                break;
            case 'D':
            case 'I':
                bits |= 0x02;
                break;
            case 'T':
            case 'P':
                bits |= 0x04;
                break;
            case 't':
                bits |= 0x08;
                break;
            case 'X':
            case 'x':
                bits |= 0x10;
                break;
            case 'Z':
                bits |= 0x20;
                break;
            case '+':
                bits |= 0x100;
                break;
            case 'R':
            case 'K':
            case 'W':
            case 'N':
            case '|':
                break;
            default:
                return std::nullopt;
        }
    }
    if (text.empty()) return std::nullopt;
    return bits;
}

bool ParseState(std::string_view text, EventValue& out) {
    const auto bits = StateBits(text);
    if (!bits) return false;
    out = {*bits, text};
    return true;
}

bool ParseValue(Form form, std::string_view text, EventValue& out) {
    if (form == Form::Text) {
        out = {0, text};
        return true;
    }
    if (form == Form::Label) return ParseState(text, out);
    const auto number = ParseNumber(text);
    if (number) out = {*number, {}};
    return number.has_value();
}

// Where "name=" begins, at the beginning of the text or behind a blank.
std::size_t FindKey(std::string_view text, std::string_view name) {
    const auto fits = [&](std::size_t at) {
        return text.substr(at).starts_with(name) && text.substr(at + name.size()).starts_with('=');
    };
    if (fits(0)) return 0;
    for (auto blank = text.find(' '); blank != std::string_view::npos;
         blank = text.find(' ', blank + 1))
        if (fits(blank + 1)) return blank + 1;
    return std::string_view::npos;
}

// "name=value name=value". A text ends where the next field of the event begins, whatever stands in
// it; other fields that the line has are passed over.
bool ParsePairs(std::span<const FieldRule> fields, std::string_view text,
                std::span<EventValue> out) {
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const auto& field = fields[i];
        const auto at = FindKey(text, field.name);
        if (at == std::string_view::npos) {
            if (!field.mayMiss) return false;
            continue;
        }
        text.remove_prefix(at + std::string_view(field.name).size() + 1);
        auto end = std::min(text.find(' '), text.size());
        if (field.form == Form::Text) {
            const bool last = i + 1 == fields.size();
            const auto next = last ? text.size() : FindKey(text, fields[i + 1].name);
            if (next == std::string_view::npos) return false;
            end = next;
        }
        if (!ParseValue(field.form, TrimEnd(text.substr(0, end)), out[i])) return false;
        text.remove_prefix(end);
    }
    return true;
}

// "comm:pid [prio]"; answers what follows.
std::optional<std::string_view> ParseTask(std::string_view text, EventValue* out) {
    const auto bracket = text.rfind(" [");
    if (bracket == std::string_view::npos) return std::nullopt;
    const auto colon = text.rfind(':', bracket);
    const auto end = text.find(']', bracket);
    if (colon == std::string_view::npos || end == std::string_view::npos) return std::nullopt;
    out[0] = {0, text.substr(0, colon)};
    if (!ParseValue(Form::Unsigned, text.substr(colon + 1, bracket - colon - 1), out[1]) ||
        !ParseValue(Form::Signed, text.substr(bracket + 2, end - bracket - 2), out[2]))
        return std::nullopt;
    return text.substr(end + 1);
}

// "comm:pid [prio] S ==> comm:pid [prio]", or pairs.
bool ParseSwitch(std::span<const FieldRule> fields, std::string_view text,
                 std::span<EventValue> out) {
    if (text.starts_with("prev_comm=")) return ParsePairs(fields, text, out);
    constexpr std::string_view kArrow = " ==> ";
    const auto arrow = text.find(kArrow);
    if (arrow == std::string_view::npos) return false;
    const auto state = ParseTask(text.substr(0, arrow), &out[0]);
    if (!state || !state->starts_with(' ') || !ParseState(state->substr(1), out[3])) return false;
    return ParseTask(text.substr(arrow + kArrow.size()), &out[4]).has_value();
}

// "comm:pid [prio] success=1 CPU:003", or pairs.
bool ParseWakeup(std::span<const FieldRule> fields, std::string_view text,
                 std::span<EventValue> out) {
    out[3].number = 1;  // kernels leave it out
    if (text.starts_with("comm=")) return ParsePairs(fields, text, out);
    constexpr std::string_view kProcessor = " CPU:";
    const auto processor = text.rfind(kProcessor);
    if (processor == std::string_view::npos) return false;
    const auto rest = ParseTask(text.substr(0, processor), &out[0]);
    if (!rest) return false;
    if (Contains(*rest, "success=0")) out[3].number = 0;
    return ParseValue(Form::Unsigned, text.substr(processor + kProcessor.size()), out[4]);
}

// "name: value, name: value" as "name=value, name=value".
std::string_view ArgumentText(std::string_view text, std::string& buffer) {
    buffer.clear();
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool ends = text[i] == ':' && text.substr(i + 1).starts_with(' ');
        buffer += ends ? '=' : text[i];
        i += ends;
    }
    return buffer;
}

// "0x3", "-11" or "0xfffffffffffffff5", which is -11 too.
bool ParseResult(std::string_view text, EventValue& out) {
    if (text.starts_with("NR ")) {
        const auto sign = text.find(" = ");
        if (sign == std::string_view::npos) return false;
        text.remove_prefix(sign + 3);
    }
    text = TrimEnd(text);
    LineCursor cursor(text);
    if (!cursor.Accept("0x")) return ParseValue(Form::Signed, text, out);
    const auto number = cursor.AcceptNumber(16);
    out = {number.value_or(0), {}};
    return number && cursor.AtEnd();
}

// "NR 74 (a, deadbeef)".
bool ParseRawEntry(std::string_view text, std::span<EventValue> out) {
    LineCursor cursor(text);
    const auto number = cursor.Accept("NR ") ? cursor.AcceptNumber() : std::nullopt;
    if (!number) return false;
    auto arguments = cursor.Rest();
    arguments.remove_prefix(std::min(arguments.find('(') + 1, arguments.size()));
    if (arguments.ends_with(')')) arguments.remove_suffix(1);
    out[0] = {*number, {}};
    out[1] = {0, arguments};
    return true;
}

}  // namespace

std::optional<EventText> SplitEvent(std::string_view text) {
    EventText event;
    std::size_t begin = 0;
    std::size_t end = 0;
    for (; end < text.size(); ++end) {
        if (text[end] == ':' && end + 1 < text.size() && text[end + 1] != ' ')
            begin = end + 1;  // behind the system
        else if (!IsNameByte(text[end]))
            break;
    }
    event.name = text.substr(begin, end - begin);
    auto rest = text.substr(end);
    if (event.name.empty() || rest.empty()) return std::nullopt;
    const bool call = event.name.starts_with("sys_");
    if (call && rest.front() == '(') {
        event.form = EventText::Form::CallEntry;
        rest.remove_prefix(1);
        rest = TrimEnd(rest);
        if (rest.ends_with(')')) rest.remove_suffix(1);
    } else if (call && rest.starts_with(" -> ")) {
        event.form = EventText::Form::CallExit;
        rest.remove_prefix(4);
    } else if (rest.front() == ':') {
        rest = TrimStart(rest.substr(1));
    } else {
        return std::nullopt;
    }
    event.fields = rest;
    return event;
}

kernels::EventShape EventKind::Shape() const {
    kernels::EventShape shape;
    shape.name = name;
    for (const auto& field : fields) shape.fields.push_back({field.name, field.form});
    return shape;
}

EventKind KindOf(const EventText& event) {
    constexpr std::string_view kEnter = "sys_enter_";
    constexpr std::string_view kExit = "sys_exit_";
    const auto name = event.name;
    if (event.form != EventText::Form::Named) {
        const bool entry = event.form == EventText::Form::CallEntry;
        const auto canonical = std::string(entry ? kEnter : kExit).append(name.substr(4));
        return entry ? EventKind{canonical, Layout::Arguments, kArguments}
                     : EventKind{canonical, Layout::Result, kResult};
    }
    std::string known(name);
    if (name.starts_with(kEnter)) return {std::move(known), Layout::Arguments, kArguments};
    if (name.starts_with(kExit) || name == "sys_exit")
        return {std::move(known), Layout::Result, kResult};
    if (name == "sys_enter") return {std::move(known), Layout::RawEntry, kRawEntry};
    const auto at = std::ranges::find(kKnown, name, &Known::name);
    if (at == std::end(kKnown)) return {std::move(known), Layout::Nothing, {}};
    return {std::move(known), at->layout, at->fields};
}

bool ParseFields(const EventKind& kind, std::string_view text, std::span<EventValue> out,
                 std::string& buffer) {
    switch (kind.layout) {
        case Layout::Nothing:
            return true;
        case Layout::Switch:
            return ParseSwitch(kind.fields, text, out);
        case Layout::Wakeup:
            return ParseWakeup(kind.fields, text, out);
        case Layout::Pairs:
            return ParsePairs(kind.fields, text, out);
        case Layout::Arguments:
            out[0] = {0, ArgumentText(text, buffer)};
            return true;
        case Layout::Result:
            return ParseResult(text, out[0]);
        case Layout::RawEntry:
            return ParseRawEntry(text, out);
    }
    return false;
}

}  // namespace kvx::formats::ftrace
