#pragma once
// The beginning that all event lines of ftrace's text share:
//
//   comm-pid [(tgid)] [cpu] [flags] seconds.fraction: event
//
// comm may hold anything; the flags and the thread group may be missing.

#include <cstdint>
#include <optional>
#include <string_view>

namespace kvx::formats::ftrace {

struct Line {
    std::string_view comm;  // "<...>" where it is not known
    std::uint64_t pid = 0;
    std::uint32_t cpu = 0;
    std::int64_t time = 0;  // nanoseconds, or counts where the clock has no unit
    bool hasUnit = true;
    bool isPadded = true;    // the number of the processor has leading zeros, as Linux writes it
    std::string_view event;  // what stands behind the time and its blanks
};

inline constexpr std::uint32_t kMostProcessors = 8192;  // that a kernel can be built for

// None: the line does not begin like that.
std::optional<Line> ParseLine(std::string_view line);

// A line of the kernel's own latency format, whose times are relative: "comm-pid 1d..2 2563us+: x".
bool IsRelativeLine(std::string_view line);

// What a line reports as lost.
struct LostEvents {
    std::uint32_t cpu = 0;
    std::uint64_t count = 0;  // 1 where the line gives no number
};
std::optional<LostEvents> ParseLoss(std::string_view line);

}  // namespace kvx::formats::ftrace
