#pragma once
// Value types shared by every layer and by both sides of the module boundary: status codes,
// identifiers, colours, points and rectangles, window handles. No toolkit, no allocation.

#include <compare>
#include <cstdint>
#include <string>

// Calling convention of the entry points and of every interface method.
#if defined(_WIN32)
#define KVX_CALL __stdcall
#define KVX_EXPORT __declspec(dllexport)
#else
#define KVX_CALL
#define KVX_EXPORT __attribute__((visibility("default")))
#endif

using CString = std::string;  // UTF-8

using BOOL = int;
using UINT = std::uint32_t;
using DWORD = std::uint32_t;
// Parameters of window messages: two numbers of 32 bits, or a pointer, on every processor.
using WPARAM = std::uint64_t;
using LPARAM = std::int64_t;
using LRESULT = std::int64_t;

inline constexpr BOOL TRUE_ = 1;
inline constexpr BOOL FALSE_ = 0;

// 32-bit status of host and service calls: negative is failure.
using HRESULT = std::int32_t;
inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;
inline constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005u);
inline constexpr HRESULT E_NOINTERFACE = static_cast<HRESULT>(0x80004002u);
inline constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80004003u);
inline constexpr HRESULT E_NOTIMPL = static_cast<HRESULT>(0x80004001u);
inline constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057u);
inline constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000Eu);

constexpr bool Succeeded(HRESULT status) {
    return status >= 0;
}
constexpr bool Failed(HRESULT status) {
    return status < 0;
}

// A window of the toolkit in use, passed across the module boundary as an opaque handle. Both sides
// run on one toolkit, so the handle means the same window in the host and in the component.
struct NativeWindow;
using HWND = NativeWindow*;

// 0x00BBGGRR.
using COLORREF = std::uint32_t;
constexpr COLORREF RGB(unsigned red, unsigned green, unsigned blue) {
    return (red & 0xFFu) | ((green & 0xFFu) << 8) | ((blue & 0xFFu) << 16);
}
constexpr unsigned GetRValue(COLORREF colour) {
    return colour & 0xFFu;
}
constexpr unsigned GetGValue(COLORREF colour) {
    return (colour >> 8) & 0xFFu;
}
constexpr unsigned GetBValue(COLORREF colour) {
    return (colour >> 16) & 0xFFu;
}

struct SIZE {
    std::int32_t cx = 0;
    std::int32_t cy = 0;
    friend constexpr bool operator==(const SIZE&, const SIZE&) = default;
};
using CSize = SIZE;

struct POINT {
    std::int32_t x = 0;
    std::int32_t y = 0;
    friend constexpr bool operator==(const POINT&, const POINT&) = default;
    constexpr POINT operator+(POINT other) const { return {x + other.x, y + other.y}; }
    constexpr POINT operator-(POINT other) const { return {x - other.x, y - other.y}; }
};
using CPoint = POINT;

// Pixels; right and bottom are exclusive.
struct RECT {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;
    friend constexpr bool operator==(const RECT&, const RECT&) = default;
    constexpr std::int32_t Width() const { return right - left; }
    constexpr std::int32_t Height() const { return bottom - top; }
    constexpr bool IsRectEmpty() const { return right <= left || bottom <= top; }
    constexpr bool PtInRect(POINT p) const {
        return p.x >= left && p.x < right && p.y >= top && p.y < bottom;
    }
    constexpr void OffsetRect(POINT by) {
        left += by.x;
        right += by.x;
        top += by.y;
        bottom += by.y;
    }
    constexpr void DeflateRect(std::int32_t dx, std::int32_t dy) {
        left += dx;
        right -= dx;
        top += dy;
        bottom -= dy;
    }
    constexpr POINT TopLeft() const { return {left, top}; }
    constexpr SIZE Size() const { return {Width(), Height()}; }
};
using CRect = RECT;
