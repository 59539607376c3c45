#pragma once
// Walks through the bytes of one line. Nothing outside the line is ever read.

#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

namespace kvx::formats {

inline bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

inline bool IsBlankOrTab(char c) {
    return c == ' ' || c == '\t';
}

// Blanks and tabs. Written out: the library's searches for one of several characters call a
// function for every byte.
inline std::string_view TrimStart(std::string_view text) {
    while (!text.empty() && IsBlankOrTab(text.front())) text.remove_prefix(1);
    return text;
}

inline std::string_view TrimEnd(std::string_view text) {
    while (!text.empty() && IsBlankOrTab(text.back())) text.remove_suffix(1);
    return text;
}

// Without the digits at its end.
inline std::string_view TrimDigits(std::string_view text) {
    while (!text.empty() && IsDigit(text.back())) text.remove_suffix(1);
    return text;
}

inline bool Contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

class LineCursor {
  public:
    explicit LineCursor(std::string_view text) : rest_(text) {}

    std::string_view Rest() const { return rest_; }
    bool AtEnd() const { return rest_.empty(); }

    // Takes the text away if the rest begins with it.
    bool Accept(std::string_view text) {
        if (!rest_.starts_with(text)) return false;
        rest_.remove_prefix(text.size());
        return true;
    }

    // Takes one or more digits of the radix (2 to 36) away; none: there is no digit, or the value
    // is above that of Number.
    template <class Number = std::uint64_t>
    std::optional<Number> AcceptNumber(unsigned radix = 10) {
        std::uint64_t value = 0;
        std::size_t length = 0;
        constexpr std::uint64_t kMost =
            static_cast<std::uint64_t>(std::numeric_limits<Number>::max());
        for (; length < rest_.size(); ++length) {
            const unsigned digit = Digit(rest_[length]);
            if (digit >= radix) break;
            // Most numbers are too small for the division to matter.
            if (value > kMost / 64 && value > (kMost - digit) / radix) return std::nullopt;
            value = value * radix + digit;
        }
        if (length == 0) return std::nullopt;
        rest_.remove_prefix(length);
        return static_cast<Number>(value);
    }

    // Takes the longest run of letters, digits and underscores away; may be empty.
    std::string_view AcceptWord() {
        std::size_t length = 0;
        while (length < rest_.size() && (Digit(rest_[length]) < 36 || rest_[length] == '_'))
            ++length;
        const auto word = rest_.substr(0, length);
        rest_.remove_prefix(length);
        return word;
    }

  private:
    static unsigned Digit(char c) {
        if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0');
        if (c >= 'a' && c <= 'z') return static_cast<unsigned>(c - 'a') + 10;
        if (c >= 'A' && c <= 'Z') return static_cast<unsigned>(c - 'A') + 10;
        return 36;
    }

    std::string_view rest_;
};

}  // namespace kvx::formats
