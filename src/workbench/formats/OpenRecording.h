#pragma once
// Opens a recorded trace. The format is recognised from the content.

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/service/Recording.h"
#include "workbench/service/Result.h"

namespace kvx::formats {

using Recording = service::Recording;

struct OpenOptions {
    // Resource file of a text log; empty: the file of the same name with ".res", if there is one.
    std::string resourceFile = {};
    // Ticks a second of a counter whose frequency the recording does not tell; 0: not known.
    std::uint64_t frequency = 0;
    // Further files of one recording, a processor each; for formats that are recorded so.
    std::vector<std::string> moreFiles = {};
    // Which numbering of its calls a recording has that does not tell; see CallNumberings. Empty:
    // what it shows itself.
    std::string calls = {};
    // Where files that describe calls are looked for before anywhere else; may be empty.
    std::string descriptions = {};
};

// The numberings of calls that there are: "espressif", "segger".
std::span<const std::string_view> CallNumberings();
// "1MHz", "32.768 kHz", "32768": ticks a second. None: no frequency, or none from 1 Hz to 1 THz.
std::optional<std::uint64_t> ParseFrequency(std::string_view text);

class IOpenProgress {
  public:
    virtual ~IOpenProgress() = default;
    // total 0: not known. False: stop; OpenRecording then answers an error with cancelled set.
    virtual bool Progress(std::uint64_t done, std::uint64_t total) = 0;
    // Whether the beginning of a recording that takes long to read is of use before the rest. It is
    // handed over once at most, a recording in itself, and reading goes on.
    virtual bool WantsBeginning() const { return false; }
    virtual void Beginning(std::unique_ptr<Recording> /*beginning*/) {}
};

// path: a file, a CTF folder, or the metadata file of one. progress may be null. The error says
// which file, where and why.
Result<std::unique_ptr<Recording>> OpenRecording(const std::string& path,
                                                 const OpenOptions& options = {},
                                                 IOpenProgress* progress = nullptr);

}  // namespace kvx::formats
