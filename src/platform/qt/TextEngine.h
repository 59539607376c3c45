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
    TextMask Render(const LOGFONT& font, std::string_view utf8) override;

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
