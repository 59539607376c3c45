#include "workbench/formats/systemview/Descriptions.h"

#include <algorithm>
#include <charconv>

namespace kvx::formats::systemview {
namespace {

constexpr std::uint32_t kMostCall = 0x7FFF;

// Takes a word from the front: blanks and commas separate, what stands between quotes is one.
std::string_view TakeWord(std::string_view& rest) {
    constexpr std::string_view kBetween = " \t,";
    rest.remove_prefix(std::min(rest.find_first_not_of(kBetween), rest.size()));
    if (rest.starts_with('"')) {
        rest.remove_prefix(1);
        const auto word = rest.substr(0, rest.find('"'));
        rest.remove_prefix(std::min(word.size() + 1, rest.size()));
        return word;
    }
    const auto word = rest.substr(0, rest.find_first_of(kBetween));
    rest.remove_prefix(word.size());
    return word;
}

std::optional<std::uint32_t> NumberOf(std::string_view text) {
    const bool hex = text.starts_with("0x") || text.starts_with("0X");
    if (hex) text.remove_prefix(2);
    std::uint32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, number, hex ? 16 : 10);
    if (text.empty() || parsed.ec != std::errc() || parsed.ptr != end) return std::nullopt;
    return number;
}

// "%u" and what stands before and behind it. None: no format.
std::optional<ValueForm> FormOf(std::string_view word) {
    constexpr std::string_view kForms = "udxpItTsc";
    const auto percent = word.find('%');
    if (percent == std::string_view::npos || percent + 1 == word.size()) return std::nullopt;
    ValueForm form;
    auto name = word.substr(0, percent);
    while (name.ends_with('=') || name.ends_with(' ')) name.remove_suffix(1);
    form.name = name;
    auto rest = word.substr(percent + 1);
    constexpr std::string_view kWord =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_";
    const auto type = rest.substr(0, rest.find_first_not_of(kWord));
    if (type.size() == 1 && kForms.find(type.front()) != std::string_view::npos) {
        form.form = type.front();
    } else if (!type.empty()) {
        form.form = 'N';
        form.type = type;
    } else {
        return std::nullopt;
    }
    rest.remove_prefix(type.size());
    while (rest.starts_with(' ')) rest.remove_prefix(1);
    form.unit = rest;
    return form;
}

// "NamedType Ticks *=%u ms 0=NO_WAIT 4294967295=FOREVER"
void AddType(std::string_view rest, Descriptions& all) {
    const auto name = TakeWord(rest);
    if (name.empty()) return;
    NamedType type;
    bool units = false;  // words behind the form of the others belong to it
    while (!rest.empty()) {
        const auto word = TakeWord(rest);
        const auto equals = word.find('=');
        if (equals == std::string_view::npos) {
            if (units && !word.empty()) type.others.unit = word;
            continue;
        }
        units = word.starts_with("*=");
        if (units) {
            if (const auto form = FormOf(word.substr(equals + 1))) type.others = *form;
        } else if (const auto value = NumberOf(word.substr(0, equals))) {
            type.names[*value] = word.substr(equals + 1);
        }
    }
    all.types[std::string(name)] = std::move(type);
}

// "TaskState 0xBF 1=dummy, 2=Waiting"
void AddStates(std::string_view rest, Descriptions& all) {
    const auto mask = NumberOf(TakeWord(rest));
    if (!mask) return;
    all.stateMask = *mask;
    while (!rest.empty()) {
        const auto word = TakeWord(rest);
        const auto equals = word.find('=');
        if (equals == std::string_view::npos) continue;
        if (const auto value = NumberOf(word.substr(0, equals)))
            all.states[*value] = word.substr(equals + 1);
    }
}

void AddCall(std::uint32_t id, std::string_view rest, Descriptions& all) {
    CallDescription call;
    call.name = TakeWord(rest);
    if (call.name.empty() || id > kMostCall) return;
    const auto bar = rest.find('|');
    call.parameters = Descriptions::ParseForms(rest.substr(0, bar));
    if (bar != std::string_view::npos) {
        auto results = Descriptions::ParseForms(rest.substr(bar + 1));
        if (!results.empty()) call.result = std::move(results.front());
    }
    all.calls[id] = std::move(call);
}

}  // namespace

std::vector<ValueForm> Descriptions::ParseForms(std::string_view text) {
    std::vector<ValueForm> forms;
    while (!text.empty()) {
        const auto word = TakeWord(text);
        if (auto form = FormOf(word))
            forms.push_back(std::move(*form));
        else if (!forms.empty() && forms.back().unit.empty() &&
                 word.find_first_of("&=") == std::string_view::npos)
            forms.back().unit = word;
    }
    return forms;
}

void Descriptions::Add(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    while (!text.empty()) {
        auto line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        line = line.substr(0, line.find_first_of("#\r"));
        const auto word = TakeWord(line);
        if (const auto id = NumberOf(word))
            AddCall(*id, line, *this);
        else if (word == "NamedType")
            AddType(line, *this);
        else if (word == "TaskState")
            AddStates(line, *this);
    }
}

}  // namespace kvx::formats::systemview
