#pragma once
// Opens a recorded trace. The format is recognised from the content.

#include <cstdint>
#include <memory>
#include <string>

#include "workbench/service/Recording.h"
#include "workbench/service/Result.h"

namespace kvx::formats {

using Recording = service::Recording;

struct OpenOptions {
    // Resource file of a text log; empty: the file of the same name with ".res", if there is one.
    std::string resourceFile;
};

class IOpenProgress {
  public:
    virtual ~IOpenProgress() = default;
    // total 0: not known. False: stop; OpenRecording then answers an error with cancelled set.
    virtual bool Progress(std::uint64_t done, std::uint64_t total) = 0;
};

// path: a file, a CTF folder, or the metadata file of one. progress may be null. The error says
// which file, where and why.
Result<std::unique_ptr<Recording>> OpenRecording(const std::string& path,
                                                 const OpenOptions& options = {},
                                                 IOpenProgress* progress = nullptr);

}  // namespace kvx::formats
