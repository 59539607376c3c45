#pragma once
// Runs the library's reader over the traces of a folder.

#include <babeltrace2/babeltrace.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "workbench/formats/ctf/EventSink.h"

namespace kvx::formats::ctf {

class IMessages {
  public:
    virtual ~IMessages() = default;
    // nanoseconds: since the clock's origin; none where the trace has no clock. False: stop.
    virtual bool OnEvent(const bt_event* event, std::optional<std::int64_t> nanoseconds) = 0;
    virtual void OnDiscarded(Discarded what, std::uint64_t count) = 0;
    // Between batches. False: stop.
    virtual bool OnBatch() = 0;
};

enum class RunEnd : std::uint8_t { Complete, Stopped, Failed };

struct RunResult {
    RunEnd end = RunEnd::Complete;
    std::string reason;  // Failed: why, as the library gives it
};

// folders: each holds a file "metadata". Events come in order of time over all of them. The library
// writes nothing to the terminal.
RunResult RunGraph(const std::vector<std::string>& folders, IMessages& messages);

}  // namespace kvx::formats::ctf
