#include "utils/NumberList.h"

#include <charconv>

namespace kvx {

CString JoinNumbers(std::span<const int> numbers) {
    CString text;
    for (const int number : numbers) {
        if (!text.empty()) text += ',';
        text += std::to_string(number);
    }
    return text;
}

std::optional<std::vector<int>> ParseNumbers(std::string_view text, std::size_t count) {
    std::vector<int> numbers;
    const char* at = text.data();
    const char* const end = at + text.size();
    while (numbers.size() < count) {
        if (!numbers.empty() && (at == end || *at++ != ',')) return std::nullopt;
        const auto [next, error] = std::from_chars(at, end, numbers.emplace_back());
        if (error != std::errc()) return std::nullopt;
        at = next;
    }
    if (at != end) return std::nullopt;
    return numbers;
}

}  // namespace kvx
