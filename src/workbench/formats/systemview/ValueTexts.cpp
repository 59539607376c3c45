#include "workbench/formats/systemview/ValueTexts.h"

#include "platform/base/Text.h"

namespace kvx::formats::systemview {
namespace {

constexpr std::uint32_t kMostArguments = 16;

std::string WithUnit(std::string text, const std::string& unit) {
    return unit.empty() ? text : text + " " + unit;
}

std::string AsNumber(char form, std::uint32_t value) {
    switch (form) {
        case 'd':
            return FormatText("%d", static_cast<std::int32_t>(value));
        case 'x':
        case 'p':
            return FormatText("0x%X", value);
        case 'c':
            return value >= 0x20 && value < 0x7F ? std::string(1, static_cast<char>(value))
                                                 : FormatText("0x%X", value);
        default:
            return FormatText("%u", value);
    }
}

std::string Printable(std::string_view text) {
    std::string shown;
    for (const char c : text) shown += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
    while (shown.ends_with(' ')) shown.pop_back();
    return shown;
}

// The text with its formats replaced by the arguments; those that there is no argument for stay.
std::string Formatted(std::string_view text, PacketCursor& arguments, std::uint32_t count) {
    std::string out;
    while (!text.empty()) {
        const auto percent = std::min(text.find('%'), text.size());
        out += text.substr(0, percent);
        text.remove_prefix(percent);
        const auto letter = text.find_first_not_of("%-+ 0123456789.lh", 0);
        if (text.starts_with("%%")) {
            out += '%';
            text.remove_prefix(2);
        } else if (letter == std::string_view::npos || count == 0) {
            return out.append(text);
        } else {
            --count;
            const char form = text[letter] == 'X' ? 'x' : text[letter] == 'i' ? 'd' : text[letter];
            const auto value = AsNumber(form, arguments.Number());
            out += text[letter] == 'x' || text[letter] == 'X' ? value.substr(2) : value;
            text.remove_prefix(letter + 1);
        }
    }
    return out;
}

}  // namespace

std::string ValueTexts::TaskName(std::uint32_t id) const {
    const auto at = survey_.tasks.find(id);
    if (at != survey_.tasks.end() && !at->second.name.empty()) return at->second.name;
    return FormatText("0x%08X", survey_.AddressOf(id));
}

std::string ValueTexts::ObjectName(std::uint32_t id) const {
    const auto at = survey_.resources.find(id);
    return at == survey_.resources.end() ? FormatText("0x%08X", survey_.AddressOf(id)) : at->second;
}

std::string ValueTexts::Named(const std::string& type, std::uint32_t value) const {
    const auto& types = forms_.All().types;
    const auto known = types.find(type);
    if (known == types.end()) return FormatText("%u", value);
    const auto name = known->second.names.find(value);
    if (name != known->second.names.end()) return name->second;
    return WithUnit(AsNumber(known->second.others.form, value), known->second.others.unit);
}

std::string ValueTexts::Value(const ValueForm& form, PacketCursor& values) const {
    if (form.form == 's') return WithUnit(Printable(values.Text()), form.unit);
    const auto value = values.Number();
    switch (form.form) {
        case 'I':
            return ObjectName(value);
        case 't':
        case 'T':
            return value == 0 ? "0" : TaskName(value);
        case 'N':
            return WithUnit(Named(form.type, value), form.unit);
        default:
            return WithUnit(AsNumber(form.form, value), form.unit);
    }
}

// Fewer may be recorded than are described, and more.
std::string ValueTexts::Parameters(const Packet& packet) const {
    PacketCursor values(packet.values);
    const auto* call = forms_.Find(packet.id);
    std::string text;
    for (std::size_t i = 0; !values.AtEnd(); ++i) {
        const bool described = call && i < call->parameters.size();
        const ValueForm form = described ? call->parameters[i] : ValueForm();
        const auto value = Value(form, values);
        if (values.Failed() != PacketCursor::Failure::None) break;
        text.append(text.empty() ? "" : ", ")
            .append(form.name.empty() ? FormatText("p%zu", i + 1) : form.name)
            .append("=")
            .append(value);
    }
    return text;
}

std::string ValueTexts::Result(const Packet& endOfCall) const {
    PacketCursor values(endOfCall.values);
    const auto* call = forms_.Find(values.Number());
    if (values.AtEnd()) return {};
    const ValueForm form = call && call->result ? *call->result : ValueForm();
    return "ret=" + Value(form, values);
}

std::string ValueTexts::Print(const Packet& packet) const {
    constexpr const char* kKinds[] = {"", "warning: ", "error: ", ""};
    PacketCursor values(packet.values);
    const auto text = values.Text();
    const auto options = values.Number();
    const auto count = std::min(values.Number(), kMostArguments);
    return kKinds[options & 3] + Printable(Formatted(text, values, count));
}

std::string ValueTexts::Extended(const Packet& packet) const {
    PacketCursor values(packet.values);
    const auto kind = values.Number();
    const auto id = values.Number();
    if (kind == 1) return FormatText("name of %u=", id).append(Printable(values.Text()));
    return FormatText("id=%u", id);
}

std::string ValueTexts::StopCause(const Packet& packet) const {
    PacketCursor values(packet.values);
    values.Number();
    const auto cause = values.Number();
    const auto& all = forms_.All();
    const auto at = all.states.find(cause & all.stateMask);
    if (all.stateMask != 0 && at != all.states.end()) return at->second;
    return FormatText("cause %u", cause);
}

}  // namespace kvx::formats::systemview
