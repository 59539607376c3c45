#pragma once
// Writes logs of a simulated drive controller: the ITRON text log and the resource file beside it.

#include <cstdint>
#include <string>

#include "workbench/simulation/ByteOutput.h"

namespace kvx::simulation {

struct GenerateOptions {
    std::uint64_t events = 0;  // lines of the log; it has exactly as many
    std::uint64_t seed = 1;    // the same seed gives the same bytes
};

class IGenerateProgress {
  public:
    virtual ~IGenerateProgress() = default;
    virtual void Progress(std::uint64_t done, std::uint64_t total) = 0;
};

// Each answers an empty text, or a message that names the file and says why it failed. What was
// written until then stays. progress may be null.

// The log alone.
std::string GenerateLog(const GenerateOptions& options, IByteOutput& output,
                        IGenerateProgress* progress = nullptr);

// The log into path, and beside it the resource file, unless path is a device or a pipe.
std::string GenerateFiles(const GenerateOptions& options, const std::string& path,
                          IGenerateProgress* progress = nullptr);

// The built-in demonstration into path, and its resource file beside it: 120 ms in which the motor
// control task misses a deadline, because it waits for a semaphore that a task of low priority
// holds while one of medium priority keeps the processor.
std::string WriteDemonstration(const std::string& path);

// The resource file that belongs to the log: the same name, ending in ".res".
std::string ResourcePath(const std::string& logPath);

}  // namespace kvx::simulation
