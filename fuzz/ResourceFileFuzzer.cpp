// Resource files of ITRON logs.

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "workbench/formats/text/ResourceFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto file = kvx::formats::ParseResourceFile(text, "x.res");
    if (!file && file.GetError().message.empty()) std::abort();
    return 0;
}
