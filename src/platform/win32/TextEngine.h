#pragma once
// Fonts and text of the system.

#include <list>
#include <memory>

#include "platform/win32/System.h"

namespace kvx::win32 {

using FontHandle = std::unique_ptr<std::remove_pointer_t<win::HFONT>, decltype(&win::DeleteObject)>;

// The system's font for the logical one, so many times as large. A face that the system has only in
// fixed sizes is replaced by one of the same kind that can be scaled.
FontHandle RealFont(const LOGFONT& font, double ratio);

class Win32TextEngine final : public ITextEngine {
  public:
    Win32TextEngine();
    ~Win32TextEngine() override;
    TEXTMETRIC Metrics(const LOGFONT& font) override;
    TextMask Render(const LOGFONT& font, std::string_view utf8, double ratio) override;

  private:
    // Making a font takes longer than drawing a text with it.
    struct KnownFont {
        LOGFONT font;
        double ratio;
        FontHandle logical;  // at ratio 1: what is measured
        FontHandle scaled;   // what is drawn
        win::TEXTMETRICW metrics;
        int ascent;  // of the drawn one, fitted into the cell
    };
    const KnownFont& Known(const LOGFONT& font, double ratio);
    // Selects into the canvas what text of that size in pixels is drawn on, black.
    void Clear(SIZE size);

    std::list<KnownFont> known_;  // the latest first
    win::HDC dc_;
    win::HBITMAP bitmap_ = nullptr;
    std::uint32_t* pixels_ = nullptr;
    SIZE canvas_;
};

}  // namespace kvx::win32
