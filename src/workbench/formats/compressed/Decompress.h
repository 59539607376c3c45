#pragma once
// Files that gzip or zstd has compressed, below whatever format stands in them.

#include <string>
#include <string_view>

#include "workbench/formats/OpenRecording.h"
#include "workbench/formats/text/MappedFile.h"

namespace kvx::formats {

// Whether the bytes begin like those of a compressed file.
bool IsCompressed(std::string_view bytes);

// The content of a compressed file, in memory that its path leads to. path is for messages. An
// error says at which byte the compressed data are damaged or end. progress may be null.
Result<MappedFile> Decompress(const std::string& path, std::string_view bytes,
                              IOpenProgress* progress);

}  // namespace kvx::formats
