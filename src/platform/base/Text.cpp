#include "platform/base/Text.h"

#include <charconv>
#include <cstdarg>
#include <cstdio>

#include "platform/os/PlainNumbers.h"

namespace kvx {

std::string FormatText(const char* format, ...) {
    const os::PlainNumbers plain;
    va_list arguments;
    va_start(arguments, format);
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
    if (length > 0) std::vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    return text;
}

std::optional<float> ParseDecimal(std::string_view text) {
    float number = 0.0f;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end) return std::nullopt;
    return number;
}

std::string FormatResource(std::string_view format, std::string_view argument) {
    std::string text(format);
    if (const auto at = text.find("%s"); at != std::string::npos) text.replace(at, 2, argument);
    return text;
}

std::string_view Utf8Prefix(std::string_view text, std::size_t maxCharacters) {
    std::size_t characters = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool continuation = (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80;
        if (!continuation && characters++ == maxCharacters) return text.substr(0, i);
    }
    return text;
}

std::string_view TrimLeft(std::string_view text) {
    const auto start = text.find_first_not_of(" \t\r\n\v\f");
    return start == std::string_view::npos ? std::string_view{} : text.substr(start);
}

}  // namespace kvx
