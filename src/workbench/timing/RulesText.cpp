#include "workbench/timing/RulesText.h"

#include <algorithm>
#include <vector>

#include "platform/base/Text.h"

namespace kvx::timing {
namespace {

bool IsBareKey(std::string_view name) {
    return !name.empty() && std::ranges::all_of(name, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               c == '_' || c == '-';
    });
}

std::string Quoted(std::string_view name) {
    std::string text = "\"";
    for (const char c : name) {
        if (c == '"' || c == '\\') text += '\\';
        text += c;
    }
    return text + '"';
}

std::vector<std::string> LinesOf(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

// What stands in the line besides blanks and a comment behind a section's name.
std::string_view SectionOf(std::string_view line) {
    line = TrimLeft(line);
    if (!line.starts_with('[') || line.starts_with("[[")) return {};
    const std::size_t end = line.rfind(']');
    return end == std::string_view::npos ? std::string_view() : line.substr(0, end + 1);
}

bool SetsDeadline(std::string_view line) {
    line = TrimLeft(line);
    constexpr std::string_view kKey = "deadline";
    if (!line.starts_with(kKey)) return false;
    return TrimLeft(line.substr(kKey.size())).starts_with('=');
}

}  // namespace

std::string WithDeadline(std::string_view text, bool isHandler, std::string_view name,
                         std::string_view deadline) {
    const std::string kind = isHandler ? "handler." : "task.";
    const std::string quoted = "[" + kind + Quoted(name) + "]";
    const std::string section = IsBareKey(name) ? "[" + kind + std::string(name) + "]" : quoted;
    const std::string rule = "deadline = " + Quoted(deadline);
    std::vector<std::string> lines = LinesOf(text);
    auto at = std::ranges::find_if(lines, [&](const std::string& line) {
        return SectionOf(line) == section || SectionOf(line) == quoted;
    });
    if (at == lines.end()) {
        if (!lines.empty() && !lines.back().empty()) lines.emplace_back();
        lines.push_back(section);
        lines.push_back(rule);
    } else {
        const auto end = std::find_if(at + 1, lines.end(), [](const std::string& line) {
            return TrimLeft(line).starts_with('[');
        });
        const auto old = std::find_if(at + 1, end, SetsDeadline);
        if (old != end)
            *old = rule;
        else
            lines.insert(at + 1, rule);
    }
    std::string result;
    for (const std::string& line : lines) result += line + '\n';
    return result;
}

}  // namespace kvx::timing
