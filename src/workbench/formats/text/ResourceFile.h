#pragma once
// The resource file beside an ITRON log: time unit, names, priorities and states at the start.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "workbench/service/Recording.h"
#include "workbench/service/Result.h"

namespace kvx::formats {

struct ResourceFile {
    service::TimeUnit timeUnit = service::TimeUnit::Microseconds;
    unsigned timeRadix = 10;
    std::vector<service::DeclaredContext> contexts;
    std::string kernel;  // whose calls the log has; empty: it does not say, and it is ITRON's
    // What runs at the start, outermost first, by processor; kAnyProcessor where only one is known.
    std::map<std::uint32_t, std::vector<service::ContextKey>> running;
    // Processors on which nothing runs at the start; kAnyProcessor where only one is known.
    std::vector<std::uint32_t> idleAtStart;
    std::uint64_t commasSkipped = 0;
};

// Text of a resource file. path is for the error, which names the place.
Result<ResourceFile> ParseResourceFile(std::string_view text, const std::string& path);

// Reads path, or, where that is empty, the file of the log's name that ends in ".res". A file that
// was asked for and cannot be read is an error; one that just lies there is counted in losses and
// told in warnings. Without any file the default holds.
Result<ResourceFile> FindResourceFile(const std::string& path, const std::string& logPath,
                                      service::LossCounters& losses,
                                      std::vector<std::string>& warnings);

}  // namespace kvx::formats
