#include "workbench/formats/text/MappedFile.h"

#include <utility>

namespace kvx::formats {

Result<MappedFile> MapFile(const std::string& path) {
    std::string reason;
    auto file = MappedFile::Open(path, reason);
    if (!file) return Error{path + ": " + reason};
    return std::move(*file);
}

}  // namespace kvx::formats
