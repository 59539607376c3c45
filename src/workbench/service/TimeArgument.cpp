#include "workbench/service/TimeArgument.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>

namespace kvx::service {
namespace {

struct UnitRow {
    std::string_view name;
    std::int64_t nanoseconds;
};

constexpr std::string_view kDigits = "0123456789";

constexpr std::array kUnits = {
    UnitRow{"ns", 1},
    UnitRow{"us", 1'000},
    UnitRow{"ms", 1'000'000},
    UnitRow{"s", 1'000'000'000},
    UnitRow{"min", 60'000'000'000},
    UnitRow{"h", 3'600'000'000'000},
};

Error Fail(std::string_view text, std::string_view why) {
    return Error{"'" + std::string(text) + "' is not a time: " + std::string(why)};
}

// A number as it is written: "-1.5ms" is negative, 1, "5", "ms".
struct Written {
    bool negative = false;
    std::int64_t whole = 0;
    bool hasPoint = false;
    std::string_view fraction;
    std::string_view unit;
};

// False: not a number, or one too large.
bool Split(std::string_view text, Written* out) {
    out->negative = text.starts_with('-');
    if (out->negative) text.remove_prefix(1);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), out->whole);
    if (error != std::errc() || text.starts_with('-')) return false;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    out->hasPoint = text.starts_with('.');
    if (out->hasPoint) {
        text.remove_prefix(1);
        out->fraction = text.substr(0, std::min(text.find_first_not_of(kDigits), text.size()));
        if (out->fraction.empty()) return false;
        text.remove_prefix(out->fraction.size());
    }
    out->unit = text;
    return true;
}

// False when it overflows. Exact for the decimal units; what is below a nanosecond is cut off.
bool ToNanoseconds(const Written& written, std::int64_t unit, std::int64_t* nanoseconds) {
    if (__builtin_mul_overflow(written.whole, unit, nanoseconds)) return false;
    std::int64_t part = 0;
    std::int64_t weight = unit;
    for (const char digit : written.fraction) {
        weight /= 10;
        part += (digit - '0') * weight;
    }
    return !__builtin_add_overflow(*nanoseconds, part, nanoseconds);
}

}  // namespace

Result<std::int64_t> ParseTime(std::string_view text, const TraceClock& clock) {
    Written written;
    if (!Split(text, &written)) {
        return Fail(text, "write a whole number of counts, or a number with a unit such as 1.5ms");
    }
    const std::int64_t sign = written.negative ? -1 : 1;
    if (written.unit.empty()) {
        if (written.hasPoint) return Fail(text, "a count is a whole number");
        return sign * written.whole;
    }
    const auto unit = std::ranges::find(kUnits, written.unit, &UnitRow::name);
    if (unit == kUnits.end()) return Fail(text, "the units are ns, us, ms, s, min and h");
    if (!clock.Known()) {
        return Fail(text, "the clock of this trace is not known, write a count instead");
    }
    std::int64_t nanoseconds = 0;
    if (!ToNanoseconds(written, unit->nanoseconds, &nanoseconds)) {
        return Fail(text, "it is too large");
    }
    return sign * (nanoseconds / clock.NanosecondsPerCount());
}

}  // namespace kvx::service
