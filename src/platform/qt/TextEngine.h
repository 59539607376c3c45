#pragma once
// Fonts and text of the toolkit.

#include <QFont>
#include <QFontMetrics>
#include <list>

#include "platform/Backend.h"

namespace kvx::qt {

// The installed font that stands for the logical one: fixed faces become a metric-compatible fixed
// font, dialog faces a sans-serif one.
QFont RealFont(const LOGFONT& font);

class QtTextEngine final : public ITextEngine {
  public:
    TEXTMETRIC Metrics(const LOGFONT& font) override;
    // Glyphs have the size of the font times the ratio, or what of it fits into the cell; their
    // places are those of the logical layout, so that columns of a fixed font stay columns.
    TextMask Render(const LOGFONT& font, std::string_view utf8, double ratio) override;

  private:
    // Finding the installed font takes longer than drawing a text with it.
    struct KnownFont {
        LOGFONT font;
        QFont real;
        QFontMetrics metrics;
    };
    const KnownFont& Known(const LOGFONT& font);
    std::list<KnownFont> known_;  // the latest first
};

}  // namespace kvx::qt
