#pragma once
// Numbers as texts and back, and cutting of UTF-8 texts. No text depends on the locale: a number
// has a decimal point everywhere, on the screen as in files.

#include <optional>
#include <string>
#include <string_view>

namespace kvx {

// printf into a string; the compiler checks the arguments against the format, which is that of the
// standard on every system.
#if defined(__MINGW32__)
[[gnu::format(gnu_printf, 1, 2)]]
#else
[[gnu::format(printf, 1, 2)]]
#endif
std::string
FormatText(const char* format, ...);

// The whole text as a number in decimal notation ("1", ".5", "2.", "1e3"), else nothing.
std::optional<float> ParseDecimal(std::string_view text);

// For formats that come from the resource library: replaces the first "%s" of the text.
std::string FormatResource(std::string_view format, std::string_view argument);

// The longest prefix of at most maxCharacters characters (code points), never half a character.
std::string_view Utf8Prefix(std::string_view text, std::size_t maxCharacters);

// The text without leading white space.
std::string_view TrimLeft(std::string_view text);

}  // namespace kvx
