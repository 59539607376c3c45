#pragma once
// Files that gzip or zstd has compressed, below whatever format stands in them.

#include <string>
#include <string_view>

#include "workbench/formats/OpenRecording.h"
#include "workbench/formats/text/MappedFile.h"

namespace kvx::formats {

struct FileContent {
    MappedFile file;  // mapped, or decompressed in memory
    std::string cut;  // where compressed data end too early, for people; empty: they do not
};

// What stands in a file. Of compressed data that are cut, what comes before the cut; damaged ones
// are an error that says at which byte, for nobody knows where the damage begins. progress may be
// null.
Result<FileContent> ReadContent(const std::string& path, IOpenProgress* progress);

}  // namespace kvx::formats
