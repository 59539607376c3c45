#pragma once
// Texts and arrays that cross interfaces: BSTR (UTF-16; whoever gets one out of a call frees it),
// VARIANT, SAFEARRAY, VARIANT_BOOL, and the one converter between BSTR and UTF-8.

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

using BSTR = char16_t*;
using VARIANT_BOOL = std::int16_t;
inline constexpr VARIANT_BOOL VARIANT_TRUE = -1;
inline constexpr VARIANT_BOOL VARIANT_FALSE = 0;

// Allocates a copy of the text; null when memory is out.
BSTR SysAllocString(std::u16string_view text);
// Frees what SysAllocString gave; null is allowed.
void SysFreeString(BSTR text);
// Length in UTF-16 units, without the terminator; 0 for null.
std::uint32_t SysStringLen(BSTR text);

namespace kvx {

// UTF-8 to a new BSTR (invalid bytes become U+FFFD). The receiver frees it.
BSTR ToBstr(std::string_view utf8);
// BSTR (null: empty) to UTF-8. Does not free.
std::string ToUtf8(const char16_t* text);
// Takes the text out of a BSTR and frees it.
std::string TakeUtf8(BSTR text);

// Owns one BSTR; Receive() is the out argument of a call.
class Bstr {
  public:
    Bstr() = default;
    explicit Bstr(std::string_view utf8) : text_(ToBstr(utf8)) {}
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;
    Bstr(Bstr&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
    ~Bstr() { SysFreeString(text_); }
    BSTR* Receive() {
        SysFreeString(std::exchange(text_, nullptr));
        return &text_;
    }
    BSTR Get() const { return text_; }
    std::string Utf8() const { return ToUtf8(text_); }

  private:
    BSTR text_ = nullptr;
};

}  // namespace kvx

using VARTYPE = std::uint16_t;
inline constexpr VARTYPE VT_EMPTY = 0;
inline constexpr VARTYPE VT_UINT = 23;
inline constexpr VARTYPE VT_ARRAY = 0x2000;

struct SAFEARRAY;

// The two kinds of value that the component passes: a number and an array.
struct VARIANT {
    VARTYPE vt = VT_EMPTY;
    union {
        std::uint32_t uintVal = 0;
        SAFEARRAY* parray;
    };
};

// One-dimensional array, lower bound 0, of VARIANT elements.
SAFEARRAY* SafeArrayCreateVector(std::uint32_t elements);
void SafeArrayDestroy(SAFEARRAY* array);
std::uint32_t SafeArrayGetCount(const SAFEARRAY* array);
// Null when index is not below the count.
VARIANT* SafeArrayElement(SAFEARRAY* array, std::uint32_t index);
const VARIANT* SafeArrayElement(const SAFEARRAY* array, std::uint32_t index);
// Frees what the value owns and makes it empty.
void VariantClear(VARIANT* value);
