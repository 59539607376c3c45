#pragma once
// Fonts and text of the toolkit.

#include <QFont>

#include "platform/Backend.h"

namespace kvx::qt {

// The installed font that stands for the logical one: fixed faces become a metric-compatible fixed
// font, dialog faces a sans-serif one.
QFont RealFont(const LOGFONT& font);

class QtTextEngine final : public ITextEngine {
  public:
    TEXTMETRIC Metrics(const LOGFONT& font) override;
    SIZE Extent(const LOGFONT& font, std::string_view utf8) override;
    TextMask Render(const LOGFONT& font, std::string_view utf8) override;
};

}  // namespace kvx::qt
