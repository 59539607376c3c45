#include "workbench/exports/JsonText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>

namespace kvx::exports {

void WriteJsonText(std::ostream& out, std::string_view text) {
    using Json = nlohmann::json;
    out << Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
}

void WriteMicroseconds(std::ostream& out, std::int64_t nanoseconds) {
    const auto part = nanoseconds % 1000;
    out << nanoseconds / 1000;
    if (part == 0) return;
    out << '.' << static_cast<char>('0' + part / 100) << static_cast<char>('0' + part / 10 % 10)
        << static_cast<char>('0' + part % 10);
}

void WriteDuration(std::ostream& out, std::int64_t begin, std::int64_t end) {
    const auto from = static_cast<double>(begin) / 1000;
    const auto to = static_cast<double>(end) / 1000;
    auto difference = static_cast<double>(end - begin) / 1000;
    if (from + difference <= to) return WriteMicroseconds(out, end - begin);
    while (difference > 0 && from + difference > to) difference = std::nextafter(difference, 0.0);
    std::array<char, 32> text;
    const auto written = std::to_chars(text.data(), text.data() + text.size(), difference);
    out.write(text.data(), written.ptr - text.data());
}

}  // namespace kvx::exports
