#include "workbench/formats/ftrace/Page.h"

#include <algorithm>

#include "workbench/formats/text/LineCursor.h"

namespace kvx::formats::ftrace {
namespace {

constexpr std::string_view kElement = "<script class=\"trace-data\"";
constexpr std::string_view kOldText = "linuxPerfData = \"\\";

bool BeginsLikePage(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    constexpr std::string_view kType = "<!doctype html";
    return text.size() >= kType.size() &&
           std::equal(kType.begin(), kType.end(), text.begin(), [](char wanted, char c) {
               return wanted == (c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c);
           });
}

std::string_view Until(std::string_view text, std::string_view end) {
    return text.substr(0, text.find(end));
}

}  // namespace

bool IsPage(std::string_view text) {
    if (!BeginsLikePage(text.substr(0, 256))) return false;
    return Contains(text, kElement) || Contains(text, kOldText);
}

std::string_view TextOfPage(std::string_view text) {
    // Further elements hold other data, as JSON.
    for (auto at = text.find(kElement); at != std::string_view::npos;
         at = text.find(kElement, at + 1)) {
        auto content = Until(text.substr(at), "</script>");
        content.remove_prefix(std::min(content.find('>') + 1, content.size()));
        const auto first = content.find_first_not_of(" \t\r\n");
        if (first != std::string_view::npos && content[first] != '{' && content[first] != '[')
            return content;
    }
    const auto old = text.find(kOldText);
    return old == std::string_view::npos ? std::string_view()
                                         : Until(text.substr(old + kOldText.size()), "</script>");
}

}  // namespace kvx::formats::ftrace
