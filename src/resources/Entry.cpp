// Exports of the resource library. The first four are probed by whoever loads it: the type, the two
// versions that must match exactly, and the product version.

#include <cstdint>
#include <cstring>

#include "resources/Tables.h"

namespace {

// Copies the text with its terminator when it fits and answers 0; else answers the size it needs.
std::int32_t GiveText(const char* text, char* buffer, std::int32_t size) {
    const auto needed = static_cast<std::int32_t>(std::strlen(text) + 1);
    if (!buffer || size < needed) return needed;
    std::memcpy(buffer, text, static_cast<std::size_t>(needed));
    return 0;
}

}  // namespace

extern "C" {

KVX_EXPORT std::int32_t GetDLLInterfaceVersion(std::int32_t* major, std::int32_t* minor) {
    *major = 1;
    *minor = 0;
    return 0;
}

KVX_EXPORT std::int32_t GetDLLProductVersion(char* buffer, std::int32_t size) {
    return GiveText("1.0", buffer, size);
}

KVX_EXPORT std::int32_t GetDLLOrdinalVersion(std::int32_t* version) {
    *version = 1;
    return 0;
}

KVX_EXPORT std::int32_t GetDLLType(char* buffer, std::int32_t size) {
    return GiveText("Resource", buffer, size);
}

KVX_EXPORT const ResourceTable* GetKvxResources() {
    return &kvx::resources::Table();
}
}
