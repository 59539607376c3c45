// A resource library with one thing wrong, chosen when it is compiled.

#include <cstdint>
#include <cstring>

#include "platform/base/Types.h"

#ifdef VARIANT_WRONG_TYPE
#define VARIANT_TYPE "Other"
#else
#define VARIANT_TYPE "Resource"
#endif
#ifdef VARIANT_WRONG_PRODUCT
#define VARIANT_PRODUCT "1.1"
#else
#define VARIANT_PRODUCT "1.0"
#endif
#ifndef VARIANT_ORDINAL
#define VARIANT_ORDINAL 1
#endif
#ifndef VARIANT_MINOR
#define VARIANT_MINOR 0
#endif

namespace {

std::int32_t Give(const char* text, char* buffer, std::int32_t size) {
    std::strncpy(buffer, text, static_cast<std::size_t>(size));
    return 0;
}

}  // namespace

extern "C" {

KVX_EXPORT std::int32_t GetDLLInterfaceVersion(std::int32_t* major, std::int32_t* minor) {
    *major = 1;
    *minor = VARIANT_MINOR;
    return 0;
}

#ifndef VARIANT_NO_PRODUCT
// Asks for more room than it is first given, once.
KVX_EXPORT std::int32_t GetDLLProductVersion(char* buffer, std::int32_t size) {
    constexpr std::int32_t kWanted = 2000;
    return size < kWanted ? kWanted : Give(VARIANT_PRODUCT, buffer, size);
}
#endif

KVX_EXPORT std::int32_t GetDLLOrdinalVersion(std::int32_t* version) {
    *version = VARIANT_ORDINAL;
    return 0;
}

#ifndef VARIANT_NO_TYPE
KVX_EXPORT std::int32_t GetDLLType(char* buffer, std::int32_t size) {
    return Give(VARIANT_TYPE, buffer, size);
}
#endif
}
