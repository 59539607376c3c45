#pragma once
// Tells from the beginning of a text whether it is a log of timed lines, and of which form.

#include <string_view>

namespace kvx::formats {

// The share of lines, among the first of the text, whose beginning fits: timed, and what follows
// the time accepted by isForm. True for a quarter or more, so that a damaged beginning does no
// harm.
bool LooksLikeLog(std::string_view text, bool (*isForm)(std::string_view message));

}  // namespace kvx::formats
