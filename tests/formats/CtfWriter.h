#pragma once
// Writes CTF traces: metadata and one stream.

#include <gmock/gmock.h>

#include <cstring>

#include "formats/TraceFiles.h"

namespace kvx::test {

inline constexpr const char* kCtfTypes =
    "/* CTF 1.8 */\n"
    "typealias integer { size = 8; align = 8; signed = false; } := uint8_t;\n"
    "typealias integer { size = 32; align = 8; signed = false; } := uint32_t;\n"
    "typealias integer { size = 32; align = 8; signed = true; } := int32_t;\n"
    "typealias integer { size = 64; align = 8; signed = true; } := int64_t;\n"
    "typealias integer { size = 8; align = 8; signed = false; encoding = ASCII; } := name_t;\n"
    "typealias enum : uint32_t { MUTEX_LOCK = 35, SLEEP = 39 } := call_id;\n"
    "trace { major = 1; minor = 8; byte_order = le; };\n";

// Metadata and one stream, written field by field.
class CtfWriter {
  public:
    explicit CtfWriter(const char* header) : metadata_(std::string(kCtfTypes) + header) {}

    // fields: the text of the event's structure.
    void Declare(const char* name, int id, const char* fields) {
        metadata_ += FormatText("event { name = \"%s\"; id = %d;", name, id);
        if (*fields) metadata_ += FormatText(" fields := struct { %s };", fields);
        metadata_ += " };\n";
    }
    template <class Number>
    CtfWriter& Put(Number value) {
        char bytes[sizeof(value)];
        std::memcpy(bytes, &value, sizeof(value));
        stream_.append(bytes, sizeof(value));
        return *this;
    }
    CtfWriter& Event(std::uint32_t time, std::uint8_t id) { return Put(time).Put(id); }
    CtfWriter& Name(std::string name) {
        name.resize(8);
        stream_ += name;
        return *this;
    }
    std::string Write(const TempFolder& folder) const {
        folder.Write("trace/channel0", stream_);
        folder.Write("trace/metadata", metadata_);
        return folder.Path("trace");
    }

  private:
    std::string metadata_;
    std::string stream_;
};

// The events of the trace, once its losses and notes are as they should be.
inline std::vector<std::string> EventsOf(const CtfWriter& ctf,
                                         std::vector<std::string> counters = {}) {
    const TempFolder folder;
    const auto trace = Show(ctf.Write(folder));
    if (!trace) return {};
    EXPECT_THAT(CountersOf(trace->Summarize().losses, true), testing::ElementsAreArray(counters));
    return Events(*trace);
}

}  // namespace kvx::test
