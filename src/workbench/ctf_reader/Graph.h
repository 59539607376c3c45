#pragma once
// Runs the library's reader over the traces of a folder.

#include <babeltrace2/babeltrace.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "workbench/formats/events/EventSink.h"

namespace kvx::ctf_reader {

using formats::Discarded;

class IMessages {
  public:
    virtual ~IMessages() = default;
    // nanoseconds: since the clock's origin; none where the trace has no clock.
    virtual void OnEvent(const bt_event* event, std::optional<std::int64_t> nanoseconds) = 0;
    // The events of its stream that follow are the packet's.
    virtual void OnPacket(const bt_packet* packet) = 0;
    virtual void OnDiscarded(Discarded what, std::uint64_t count) = 0;
};

// The library's plug-ins, loaded.
class Plugins {
  public:
    Plugins();
    Plugins(const Plugins&) = delete;
    ~Plugins();
    // Null where they are not installed.
    const bt_plugin* Ctf() const { return ctf_; }
    const bt_plugin* Utils() const { return utils_; }

  private:
    const bt_plugin* ctf_ = nullptr;
    const bt_plugin* utils_ = nullptr;
};

// folders: each holds a file "metadata". Events come in order of time over all of them. The library
// writes nothing to the terminal. Answers why it failed, as the library gives it; empty: it read
// all.
std::string RunGraph(const Plugins& plugins, const std::vector<std::string>& folders,
                     IMessages& messages);

}  // namespace kvx::ctf_reader
