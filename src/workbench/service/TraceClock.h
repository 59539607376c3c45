#pragma once
// How the counts of a recording relate to time.

#include <cstdint>
#include <string>
#include <string_view>

namespace kvx::service {

enum class TimeUnit : std::uint8_t { Counts, Seconds, Milliseconds, Microseconds, Nanoseconds };

struct TimeFields {
    std::int32_t h = 0, m = 0, s = 0, ms = 0, us = 0, ns = 0;
};

// Counts are whole multiples of the unit. Unit Counts: no relation to time is known.
class TraceClock {
  public:
    TraceClock() = default;
    explicit TraceClock(TimeUnit unit) : unit_(unit) {}

    TimeUnit Unit() const { return unit_; }
    bool Known() const { return unit_ != TimeUnit::Counts; }
    bool HasNanoseconds() const { return unit_ == TimeUnit::Nanoseconds; }
    // "s", "ms", "us", "ns" or "counts".
    std::string_view UnitName() const;
    // Nanoseconds of one count; 0 when not known.
    std::int64_t NanosecondsPerCount() const;

    // Fields of a negative count are all zero or negative. All zero when the clock is not known.
    TimeFields ToFields(std::int64_t count) const;
    // Parts of a count are cut off; saturates. 0 when the clock is not known.
    std::int64_t ToCount(const TimeFields& fields) const;
    // The text that the windows show: "00:00:01.926.193", with nanoseconds where there are any; the
    // bare count when the clock is not known.
    std::string Format(std::int64_t count) const;

  private:
    TimeUnit unit_ = TimeUnit::Counts;
};

// What to take off the times of a recording that lie beyond what floating point tells apart: whole
// days, or, where the clock is not known, whole multiples of a power of ten; else 0.
std::int64_t OriginOf(std::int64_t first, std::int64_t last, const TraceClock& clock);

// The unit of a name such as "us"; Counts for a name that is not known.
TimeUnit TimeUnitOf(std::string_view name);

}  // namespace kvx::service
