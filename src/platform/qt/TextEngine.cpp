#include "platform/qt/TextEngine.h"

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "platform/qt/Convert.h"

namespace kvx::qt {

namespace {

constexpr int kDefaultPixels = 11;
constexpr int kTrialPixels = 100;
constexpr std::size_t kMaxFonts = 16;
constexpr int kOverhang = 4;  // logical pixels that glyphs may reach out of their cell

QStringList FacesFor(const CString& face) {
    const QString name = ToQString(face);
    const auto is = [&name](const char* other) {
        return name.compare(QLatin1String(other), Qt::CaseInsensitive) == 0;
    };
    if (is("Courier New") || is("Courier") || is("Fixedsys") || is("Terminal"))
        return {"Liberation Mono", "Cousine", "DejaVu Sans Mono", "monospace"};
    if (is("") || is("MS Sans Serif") || is("MS Shell Dlg") || is("Arial") || is("Helv"))
        return {"Liberation Sans", "Arimo", "DejaVu Sans", "sans-serif"};
    return {name, "Liberation Sans", "sans-serif"};
}

// Characters as high as asked, or the cell at most as high.
int PixelSize(QFont font, int height) {
    if (height == 0) return kDefaultPixels;
    if (height < 0) return -height;
    font.setPixelSize(kTrialPixels);
    const int cell = QFontMetrics(font).height();
    return std::max(height * kTrialPixels / std::max(cell, 1), 1);
}

}  // namespace

QFont RealFont(const LOGFONT& font) {
    QFont real;
    real.setFamilies(FacesFor(font.lfFaceName));
    real.setWeight(font.lfWeight >= FW_BOLD ? QFont::Bold : QFont::Normal);
    real.setItalic(font.lfItalic);
    real.setUnderline(font.lfUnderline);
    real.setPixelSize(PixelSize(real, font.lfHeight));
    if (font.lfWidth > 0) {
        const int natural = std::max(QFontMetrics(real).averageCharWidth(), 1);
        real.setStretch(std::clamp(font.lfWidth * 100 / natural, 1, 4000));
    }
    return real;
}

const QtTextEngine::KnownFont& QtTextEngine::Known(const LOGFONT& font, double ratio) {
    const auto found = std::ranges::find_if(
        known_, [&](const KnownFont& known) { return known.ratio == ratio && known.font == font; });
    if (found != known_.end()) {
        known_.splice(known_.begin(), known_, found);
        return known_.front();
    }
    if (known_.size() >= kMaxFonts) known_.pop_back();
    const QFont real = RealFont(font);
    const QFontMetrics metrics(real);
    std::optional<ScaledFont> scaled;
    if (ratio != 1) scaled.emplace(real, metrics.ascent(), metrics.descent(), ratio);
    return known_.emplace_front(KnownFont{font, ratio, real, metrics, scaled});
}

TEXTMETRIC QtTextEngine::Metrics(const LOGFONT& font) {
    const auto& [name, ratio, real, metrics, scaled] = Known(font, 1);
    TEXTMETRIC result;
    result.tmAscent = metrics.ascent();
    result.tmDescent = metrics.descent();
    result.tmHeight = metrics.ascent() + metrics.descent();
    result.tmInternalLeading = std::max(result.tmHeight - real.pixelSize(), 0);
    result.tmExternalLeading = std::max(metrics.leading(), 0);
    result.tmAveCharWidth = metrics.averageCharWidth();
    result.tmMaxCharWidth = metrics.maxWidth();
    return result;
}

TextMask QtTextEngine::Render(const LOGFONT& font, std::string_view utf8, double ratio) {
    const KnownFont& known = Known(font, ratio);
    const QFontMetrics& metrics = known.metrics;
    const QString text = ToQString(utf8);
    TextMask mask;
    mask.extent = {metrics.horizontalAdvance(text), metrics.ascent() + metrics.descent()};
    const auto overhang = static_cast<int>(std::lround(kOverhang * ratio));
    mask.offset = {-overhang, -overhang};
    mask.size = {static_cast<int>(mask.extent.cx * ratio) + 2 * overhang,
                 static_cast<int>(mask.extent.cy * ratio) + 2 * overhang};
    if (mask.extent.cx <= 0 || mask.extent.cy <= 0) return mask;
    QImage image(mask.size.cx, mask.size.cy, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setFont(known.real);
    painter.setPen(Qt::white);
    painter.translate(overhang, overhang);
    if (known.scaled)
        known.scaled->Draw(painter, text, mask.extent.cx);
    else
        painter.drawText(0, metrics.ascent(), text);
    painter.end();
    mask.coverage.reserve(static_cast<std::size_t>(mask.size.cx) *
                          static_cast<std::size_t>(mask.size.cy));
    for (int y = 0; y < mask.size.cy; ++y) {
        const auto* const row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < mask.size.cx; ++x)
            mask.coverage.push_back(static_cast<std::uint8_t>(qAlpha(row[x])));
    }
    return mask;
}

}  // namespace kvx::qt
