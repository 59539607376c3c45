#pragma once
// Fonts and text of the toolkit.

#include <QFont>
#include <QFontMetrics>
#include <list>
#include <optional>

#include "platform/Backend.h"
#include "platform/qt/ScaledFont.h"

namespace kvx::qt {

// The installed font that stands for the logical one: fixed faces become a metric-compatible fixed
// font, dialog faces a sans-serif one.
QFont RealFont(const LOGFONT& font);

class QtTextEngine final : public ITextEngine {
  public:
    TEXTMETRIC Metrics(const LOGFONT& font) override;
    TextMask Render(const LOGFONT& font, std::string_view utf8, double ratio) override;

  private:
    // Finding the installed font takes longer than drawing a text with it.
    struct KnownFont {
        LOGFONT font;
        double ratio;
        QFont real;
        QFontMetrics metrics;              // logical
        std::optional<ScaledFont> scaled;  // at other ratios than 1
    };
    const KnownFont& Known(const LOGFONT& font, double ratio);
    std::list<KnownFont> known_;  // the latest first
};

}  // namespace kvx::qt
