#include "workbench/service/CallSearch.h"

#include <algorithm>
#include <string>

namespace kvx::service {
namespace {

char Fold(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string Folded(std::string_view text, bool matchCase) {
    std::string folded(text);
    if (!matchCase) std::ranges::transform(folded, folded.begin(), Fold);
    return folded;
}

// Whether pattern fits the whole text. After a star it is enough to come back to the last one.
bool Fits(std::string_view pattern, std::string_view text) {
    std::size_t p = 0;
    std::size_t t = 0;
    std::size_t star = std::string_view::npos;
    std::size_t starText = 0;
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            starText = t;
        } else if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == text[t])) {
            ++p;
            ++t;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            t = ++starText;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

}  // namespace

bool Meets(const SearchCondition& condition, std::string_view text) {
    if (condition.text.empty()) return false;
    const auto wanted = Folded(condition.text, condition.matchCase);
    const auto in = Folded(text, condition.matchCase);
    if (condition.wildCard) return Fits("*" + wanted + "*", in);
    return in.find(wanted) != std::string::npos;
}

}  // namespace kvx::service
