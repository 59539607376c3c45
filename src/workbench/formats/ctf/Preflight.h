#pragma once
// A look at the files of a trace before the library sees them: whether metadata, streams and
// indexes are as large as they say. What is damaged is kept from the library, which ends its
// process, or never comes back, on some of it.

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "workbench/service/Result.h"

namespace kvx::formats::ctf {

// A folder of its own, removed with its content.
class Shadow {
  public:
    Shadow() = default;
    Shadow(Shadow&& other) noexcept : path_(std::move(other.path_)) { other.path_.clear(); }
    Shadow& operator=(Shadow&&) = delete;
    ~Shadow();
    // False: it cannot be made.
    bool Make();
    const std::filesystem::path& Path() const { return path_; }

  private:
    std::filesystem::path path_;
};

// A trace that the library may read.
struct CheckedTrace {
    std::string folder;  // absolute: the trace's own, or a shadow of it without what is damaged
    Shadow shadow;
    std::uint64_t streamBytes = 0;
    std::uint64_t damagedStreams = 0;   // cut at the damage, or left out
    std::vector<std::string> warnings;  // one sentence each, naming file and place
};

// folder holds a file "metadata". An error: the trace cannot be read at all.
Result<CheckedTrace> CheckTrace(const std::string& folder);

}  // namespace kvx::formats::ctf
