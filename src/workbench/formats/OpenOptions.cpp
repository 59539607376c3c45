#include <array>
#include <charconv>
#include <cmath>

#include "workbench/formats/OpenRecording.h"

namespace kvx::formats {
namespace {

struct Unit {
    std::string_view name;
    double hertz;
};
constexpr std::array kUnits = {Unit{"", 1}, Unit{"Hz", 1}, Unit{"kHz", 1e3}, Unit{"MHz", 1e6},
                               Unit{"GHz", 1e9}};
constexpr double kMost = 1e12;
constexpr std::array<std::string_view, 2> kNumberings = {"espressif", "segger"};

}  // namespace

std::span<const std::string_view> CallNumberings() {
    return kNumberings;
}

std::optional<std::uint64_t> ParseFrequency(std::string_view text) {
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, number, std::chars_format::fixed);
    if (parsed.ec != std::errc()) return std::nullopt;
    std::string_view unit(parsed.ptr, static_cast<std::size_t>(end - parsed.ptr));
    if (unit.starts_with(' ')) unit.remove_prefix(1);
    for (const auto& known : kUnits) {
        const double hertz = std::round(number * known.hertz);
        if (unit == known.name && hertz >= 1 && hertz <= kMost)
            return static_cast<std::uint64_t>(hertz);
    }
    return std::nullopt;
}

}  // namespace kvx::formats
