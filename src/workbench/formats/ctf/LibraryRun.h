#pragma once
// Has the library read traces, in a process of its own.

#include <cstdint>
#include <string>
#include <vector>

#include "workbench/formats/ctf/Preflight.h"
#include "workbench/formats/events/EventSink.h"

namespace kvx::formats::ctf {

struct RunResult {
    bool stopped = false;  // the sink stopped it
    bool gaveUp = false;   // the library ended its process, or was ended
    std::string reason;    // why it ended before the end of the traces; empty: it did not
    bool started = true;   // the program that reads for this one is there
};

// bytes: of all streams together. sink gets the events of all traces in order of time, also those
// before a failure; it is asked several times a second whether to go on.
RunResult RunLibrary(const std::vector<CheckedTrace>& traces, std::uint64_t bytes,
                     IEventSink& sink);

}  // namespace kvx::formats::ctf
