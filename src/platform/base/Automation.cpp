#include "platform/base/Automation.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <vector>

namespace {

// A BSTR is preceded by its length in bytes, as on the platform.
constexpr std::size_t kPrefix = 8;

constexpr char32_t kReplacement = 0xFFFD;

// Reads one code point of UTF-8 at i and moves i behind it. Overlong forms, surrogates and stray
// bytes give U+FFFD and cost one byte.
char32_t NextCodePoint(std::string_view text, std::size_t& i) {
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    const unsigned first = byte(i);
    const std::size_t length = first < 0x80       ? 1
                               : first >> 5 == 6  ? 2
                               : first >> 4 == 14 ? 3
                               : first >> 3 == 30 ? 4
                                                  : 0;
    if (length == 1) return byte(i++);
    if (length == 0 || i + length > text.size()) return ++i, kReplacement;
    char32_t value = first & (0x7Fu >> length);
    for (std::size_t k = 1; k < length; ++k) {
        if (byte(i + k) >> 6 != 2) return ++i, kReplacement;
        value = (value << 6) | (byte(i + k) & 0x3Fu);
    }
    constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
    if (value < kLeast[length] || value > 0x10FFFF || surrogate) return ++i, kReplacement;
    i += length;
    return value;
}

void AppendUtf8(std::string& out, char32_t value) {
    if (value < 0x80) {
        out += static_cast<char>(value);
    } else if (value < 0x800) {
        out += static_cast<char>(0xC0 | (value >> 6));
        out += static_cast<char>(0x80 | (value & 0x3F));
    } else if (value < 0x10000) {
        out += static_cast<char>(0xE0 | (value >> 12));
        out += static_cast<char>(0x80 | ((value >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (value & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (value >> 18));
        out += static_cast<char>(0x80 | ((value >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((value >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (value & 0x3F));
    }
}

}  // namespace

BSTR SysAllocString(std::u16string_view text) {
    const std::size_t bytes = text.size() * sizeof(char16_t);
    auto* block = static_cast<unsigned char*>(std::malloc(kPrefix + bytes + sizeof(char16_t)));
    if (!block) return nullptr;
    const auto length = static_cast<std::uint32_t>(bytes);
    std::memcpy(block + kPrefix - sizeof(length), &length, sizeof(length));
    auto* characters = reinterpret_cast<char16_t*>(block + kPrefix);
    std::memcpy(characters, text.data(), bytes);
    characters[text.size()] = 0;
    return characters;
}

void SysFreeString(BSTR text) {
    if (text) std::free(reinterpret_cast<unsigned char*>(text) - kPrefix);
}

std::uint32_t SysStringLen(BSTR text) {
    if (!text) return 0;
    std::uint32_t bytes = 0;
    std::memcpy(&bytes, reinterpret_cast<unsigned char*>(text) - sizeof(bytes), sizeof(bytes));
    return bytes / static_cast<std::uint32_t>(sizeof(char16_t));
}

namespace kvx {

BSTR ToBstr(std::string_view utf8) {
    std::u16string wide;
    wide.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        const char32_t c = NextCodePoint(utf8, i);
        if (c < 0x10000) {
            wide += static_cast<char16_t>(c);
        } else {
            wide += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
            wide += static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
        }
    }
    return SysAllocString(wide);
}

std::string ToUtf8(const char16_t* text) {
    std::string out;
    if (!text) return out;
    for (; *text; ++text) {
        const char32_t c = *text;
        const bool pair = c >= 0xD800 && c < 0xDC00 && text[1] >= 0xDC00 && text[1] < 0xE000;
        if (pair) {
            AppendUtf8(out, 0x10000 + ((c - 0xD800) << 10) + (text[1] - 0xDC00u));
            ++text;
        } else {
            AppendUtf8(out, c >= 0xD800 && c < 0xE000 ? kReplacement : c);
        }
    }
    return out;
}

std::string TakeUtf8(BSTR text) {
    std::string out = ToUtf8(text);
    SysFreeString(text);
    return out;
}

}  // namespace kvx

struct SAFEARRAY {
    std::vector<VARIANT> elements;
};

SAFEARRAY* SafeArrayCreateVector(std::uint32_t elements) {
    return new (std::nothrow) SAFEARRAY{std::vector<VARIANT>(elements)};
}

void SafeArrayDestroy(SAFEARRAY* array) {
    if (!array) return;
    for (VARIANT& element : array->elements) VariantClear(&element);
    delete array;
}

std::uint32_t SafeArrayGetCount(const SAFEARRAY* array) {
    return array ? static_cast<std::uint32_t>(array->elements.size()) : 0;
}

VARIANT* SafeArrayElement(SAFEARRAY* array, std::uint32_t index) {
    return index < SafeArrayGetCount(array) ? &array->elements[index] : nullptr;
}

const VARIANT* SafeArrayElement(const SAFEARRAY* array, std::uint32_t index) {
    return index < SafeArrayGetCount(array) ? &array->elements[index] : nullptr;
}

void VariantClear(VARIANT* value) {
    if (value->vt & VT_ARRAY) SafeArrayDestroy(value->parray);
    *value = VARIANT{};
}
