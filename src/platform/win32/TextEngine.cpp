#include "platform/win32/TextEngine.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "platform/os/windows/Wide.h"

namespace kvx::win32 {

namespace {

constexpr int kDefaultPixels = 11;
constexpr std::size_t kMaxFonts = 16;
constexpr int kOverhang = 4;  // logical pixels that glyphs may reach out of their cell
constexpr double kStep = 1.0 / 64;

struct Face {
    std::wstring name;
    unsigned pitch;
};

Face FaceFor(const CString& face) {
    const auto is = [&face](const char* other) { return win::lstrcmpiA(face.c_str(), other) == 0; };
    if (is("Courier New") || is("Courier") || is("Fixedsys") || is("Terminal"))
        return {L"Courier New", FIXED_PITCH | FF_MODERN};
    if (is("") || is("MS Sans Serif") || is("MS Shell Dlg") || is("Arial") || is("Helv"))
        return {L"Arial", VARIABLE_PITCH | FF_SWISS};
    return {os::Wide(face), DEFAULT_PITCH | FF_DONTCARE};
}

int Scaled(int pixels, double ratio) {
    return static_cast<int>(std::lround(pixels * ratio));
}

win::TEXTMETRICW MetricsOf(win::HDC dc, const FontHandle& font) {
    win::TEXTMETRICW metrics = {};
    win::SelectObject(dc, font.get());
    win::GetTextMetricsW(dc, &metrics);
    return metrics;
}

// Where each character ends, from the start of the text.
std::vector<int> EndsOf(win::HDC dc, const FontHandle& font, const std::wstring& text) {
    std::vector<int> ends(text.size());
    win::SIZE extent = {};
    win::SelectObject(dc, font.get());
    win::GetTextExtentExPointW(dc, text.data(), static_cast<int>(text.size()), 0, nullptr,
                               ends.data(), &extent);
    return ends;
}

}  // namespace

FontHandle RealFont(const LOGFONT& font, double ratio) {
    const Face face = FaceFor(font.lfFaceName);
    win::LOGFONTW real = {};
    real.lfHeight = Scaled(font.lfHeight == 0 ? -kDefaultPixels : font.lfHeight, ratio);
    real.lfWidth = Scaled(font.lfWidth, ratio);
    real.lfWeight = font.lfWeight;
    real.lfItalic = font.lfItalic;
    real.lfUnderline = font.lfUnderline;
    real.lfCharSet = DEFAULT_CHARSET;
    real.lfQuality = ANTIALIASED_QUALITY;
    real.lfPitchAndFamily = static_cast<unsigned char>(face.pitch);
    face.name.copy(real.lfFaceName, LF_FACESIZE - 1);
    return {win::CreateFontIndirectW(&real), win::DeleteObject};
}

Win32TextEngine::Win32TextEngine() : dc_(win::CreateCompatibleDC(nullptr)) {
    win::SetTextColor(dc_, 0xFFFFFF);
    win::SetBkMode(dc_, TRANSPARENT);
    win::SetTextAlign(dc_, TA_BASELINE);
}

Win32TextEngine::~Win32TextEngine() {
    win::DeleteDC(dc_);
    win::DeleteObject(bitmap_);
}

const Win32TextEngine::KnownFont& Win32TextEngine::Known(const LOGFONT& font, double ratio) {
    const auto found = std::ranges::find_if(
        known_, [&](const KnownFont& known) { return known.ratio == ratio && known.font == font; });
    if (found != known_.end()) {
        known_.splice(known_.begin(), known_, found);
        return known_.front();
    }
    if (known_.size() >= kMaxFonts) known_.pop_back();
    FontHandle logical = RealFont(font, 1);
    const win::TEXTMETRICW metrics = MetricsOf(dc_, logical);
    const int height = static_cast<int>(metrics.tmHeight * ratio);
    FontHandle scaled = RealFont(font, ratio);
    win::TEXTMETRICW drawn = MetricsOf(dc_, scaled);
    for (double scale = ratio - kStep; drawn.tmHeight > height && scale > ratio / 2;
         scale -= kStep) {
        scaled = RealFont(font, scale);
        drawn = MetricsOf(dc_, scaled);
    }
    const int ascent = std::min(Scaled(static_cast<int>(metrics.tmAscent), ratio),
                                height - static_cast<int>(drawn.tmDescent));
    return known_.emplace_front(
        KnownFont{font, ratio, std::move(logical), std::move(scaled), metrics, ascent});
}

TEXTMETRIC Win32TextEngine::Metrics(const LOGFONT& font) {
    const win::TEXTMETRICW& metrics = Known(font, 1).metrics;
    TEXTMETRIC result;
    result.tmHeight = static_cast<int>(metrics.tmHeight);
    result.tmAscent = static_cast<int>(metrics.tmAscent);
    result.tmDescent = static_cast<int>(metrics.tmDescent);
    result.tmInternalLeading = static_cast<int>(metrics.tmInternalLeading);
    result.tmExternalLeading = static_cast<int>(metrics.tmExternalLeading);
    result.tmAveCharWidth = static_cast<int>(metrics.tmAveCharWidth);
    result.tmMaxCharWidth = static_cast<int>(metrics.tmMaxCharWidth);
    return result;
}

void Win32TextEngine::Clear(SIZE size) {
    if (size.cx > canvas_.cx || size.cy > canvas_.cy) {
        canvas_ = {std::max(size.cx, canvas_.cx), std::max(size.cy, canvas_.cy)};
        win::BITMAPINFO info = {};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = canvas_.cx;
        info.bmiHeader.biHeight = -canvas_.cy;  // the first row on top
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* pixels = nullptr;
        const win::HBITMAP made =
            win::CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
        win::SelectObject(dc_, made);
        win::DeleteObject(bitmap_);
        bitmap_ = made;
        pixels_ = static_cast<std::uint32_t*>(pixels);
    }
    for (int y = 0; y < size.cy; ++y) std::fill_n(pixels_ + y * canvas_.cx, size.cx, 0u);
}

TextMask Win32TextEngine::Render(const LOGFONT& font, std::string_view utf8, double ratio) {
    const KnownFont& known = Known(font, ratio);
    const std::wstring text = os::Wide(utf8);
    const std::vector<int> ends = EndsOf(dc_, known.logical, text);
    TextMask mask;
    mask.extent = {ends.empty() ? 0 : ends.back(), static_cast<int>(known.metrics.tmHeight)};
    const int overhang = Scaled(kOverhang, ratio);
    mask.offset = {-overhang, -overhang};
    mask.size = {static_cast<int>(mask.extent.cx * ratio) + 2 * overhang,
                 static_cast<int>(mask.extent.cy * ratio) + 2 * overhang};
    if (mask.extent.cx <= 0 || mask.extent.cy <= 0) return mask;
    Clear(mask.size);
    std::vector<int> widths;
    int start = 0;
    for (const int end : ends) {
        widths.push_back(Scaled(end, ratio) - start);
        start = Scaled(end, ratio);
    }
    win::SelectObject(dc_, known.scaled.get());
    win::ExtTextOutW(dc_, overhang, overhang + known.ascent, 0, nullptr, text.data(),
                     static_cast<UINT>(text.size()), widths.data());
    win::GdiFlush();
    mask.coverage.reserve(static_cast<std::size_t>(mask.size.cx) *
                          static_cast<std::size_t>(mask.size.cy));
    for (int y = 0; y < mask.size.cy; ++y)
        for (int x = 0; x < mask.size.cx; ++x)
            mask.coverage.push_back(static_cast<std::uint8_t>(pixels_[y * canvas_.cx + x] >> 8));
    return mask;
}

}  // namespace kvx::win32
