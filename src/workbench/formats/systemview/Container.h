#pragma once
// The file around the packets: lines that begin with ';', then the packets of one core, or of
// several, one behind the other. The memory of a target has no such lines.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/service/Result.h"

namespace kvx::formats::systemview {

struct CorePart {
    std::uint32_t number = 0;
    std::string_view bytes;  // from the first sync on
};

struct Container {
    std::string author;  // as its line says
    std::vector<CorePart> cores;
    std::vector<std::uint32_t> missing;  // cores that the header names and the file does not reach
};

bool Recognises(std::string_view bytes);
// The error is without the path.
Result<Container> OpenContainer(std::string_view bytes);

}  // namespace kvx::formats::systemview
