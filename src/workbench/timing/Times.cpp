#include "workbench/timing/Times.h"

#include <array>
#include <cmath>
#include <string_view>

#include "platform/base/Text.h"

namespace kvx::timing {
namespace {

struct UnitName {
    double nanoseconds;
    const char* name;
};
constexpr std::array<UnitName, 4> kUnits = {{{1e9, "s"}, {1e6, "ms"}, {1e3, "us"}, {1, "ns"}}};

const UnitName& UnitFor(double nanoseconds) {
    for (const UnitName& unit : kUnits)
        if (std::abs(nanoseconds) >= unit.nanoseconds) return unit;
    return kUnits.back();
}

std::string Counts(std::int64_t count) {
    return std::to_string(count) + (count == 1 ? " count" : " counts");
}

}  // namespace

std::string TimeText(std::int64_t count, const service::TraceClock& clock) {
    if (!clock.Known()) return Counts(count);
    const auto one = static_cast<double>(clock.NanosecondsPerCount());
    const UnitName& unit = UnitFor(static_cast<double>(count) * one);
    const double value = static_cast<double>(count) * one / unit.nanoseconds;
    if (count == 0 || unit.nanoseconds <= one)
        return std::to_string(count) + " " + std::string(clock.UnitName());
    const int digits = std::abs(value) < 9.995 ? 2 : std::abs(value) < 99.95 ? 1 : 0;
    return FormatText("%.*f %s", digits, value, unit.name);
}

std::string ExactTimeText(std::int64_t count, const service::TraceClock& clock) {
    if (!clock.Known()) return Counts(count);
    const auto one = static_cast<double>(clock.NanosecondsPerCount());
    const UnitName& unit = UnitFor(static_cast<double>(count) * one);
    std::string text = FormatText("%.9f", static_cast<double>(count) * one / unit.nanoseconds);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) text.pop_back();
    return text + " " + unit.name;
}

}  // namespace kvx::timing
