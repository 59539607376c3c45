#pragma once
// Texts and numbers of JSON that is written piece by piece.

#include <cstdint>
#include <ostream>
#include <string_view>

namespace kvx::exports {

// The text in quotes. What is no UTF-8 becomes replacement characters.
void WriteJsonText(std::ostream& out, std::string_view text);

// Nanoseconds as microseconds with three decimals, exactly.
void WriteMicroseconds(std::ostream& out, std::int64_t nanoseconds);

// The time between two times that are written like that. Readers add it to the first as floating
// point: where the sum would come out behind the second, the difference is given to the last digit
// that keeps it from that, which is far below a nanosecond.
void WriteDuration(std::ostream& out, std::int64_t begin, std::int64_t end);

}  // namespace kvx::exports
