#include "workbench/service/TraceClock.h"

#include <array>
#include <limits>

#include "platform/base/Text.h"

namespace kvx::service {
namespace {

struct UnitInfo {
    std::string_view name;
    std::int64_t nanoseconds;
};

// In the order of TimeUnit.
constexpr std::array<UnitInfo, 5> kUnits = {
    {{"counts", 0}, {"s", 1000000000}, {"ms", 1000000}, {"us", 1000}, {"ns", 1}}};

const UnitInfo& InfoOf(TimeUnit unit) {
    return kUnits[static_cast<std::size_t>(unit)];
}

}  // namespace

std::string_view TraceClock::UnitName() const {
    return InfoOf(unit_).name;
}

std::int64_t TraceClock::NanosecondsPerCount() const {
    return InfoOf(unit_).nanoseconds;
}

TimeFields TraceClock::ToFields(std::int64_t count) const {
    TimeFields fields;
    if (!Known()) return fields;
    const std::int64_t perSecond = 1000000000 / NanosecondsPerCount();
    const std::int64_t seconds = count / perSecond;
    const auto rest = static_cast<std::int32_t>(count % perSecond * NanosecondsPerCount());
    const std::int64_t hours = seconds / 3600;
    constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
    fields.h = static_cast<std::int32_t>(hours > kMost ? kMost : hours < -kMost ? -kMost : hours);
    fields.m = static_cast<std::int32_t>(seconds / 60 % 60);
    fields.s = static_cast<std::int32_t>(seconds % 60);
    fields.ms = rest / 1000000;
    fields.us = rest / 1000 % 1000;
    fields.ns = rest % 1000;
    return fields;
}

std::int64_t TraceClock::ToCount(const TimeFields& fields) const {
    if (!Known()) return 0;
    // 128 bits hold every sum of 32-bit fields in nanoseconds.
    __extension__ using Wide = __int128;
    const Wide seconds = Wide{fields.h} * 3600 + Wide{fields.m} * 60 + fields.s;
    const Wide nanoseconds = ((seconds * 1000 + fields.ms) * 1000 + fields.us) * 1000 + fields.ns;
    const Wide count = nanoseconds / NanosecondsPerCount();
    constexpr Wide kMost = std::numeric_limits<std::int64_t>::max();
    return static_cast<std::int64_t>(count > kMost ? kMost : count < -kMost ? -kMost : count);
}

std::string TraceClock::Format(std::int64_t count) const {
    if (!Known()) return FormatText("%lld", static_cast<long long>(count));
    const TimeFields f = ToFields(count);
    auto text = FormatText("%02d:%02d:%02d.%03d.%03d", f.h, f.m, f.s, f.ms, f.us);
    if (HasNanoseconds()) text += FormatText(".%03d", f.ns);
    return text;
}

std::int64_t OriginOf(std::int64_t first, std::int64_t last, const TraceClock& clock) {
    constexpr std::int64_t kExact = std::int64_t{1} << 53;
    constexpr std::int64_t kDay = std::int64_t{86400} * 1000000000;
    constexpr std::int64_t kPeriod = 1000000000000;
    if (last < kExact) return 0;
    const auto unit = clock.Known() ? kDay / clock.NanosecondsPerCount() : kPeriod;
    return first / unit * unit;
}

TimeUnit TimeUnitOf(std::string_view name) {
    for (std::size_t i = 0; i < kUnits.size(); ++i)
        if (kUnits[i].name == name) return static_cast<TimeUnit>(i);
    return TimeUnit::Counts;
}

}  // namespace kvx::service
