#include "platform/qt/TextEngine.h"

#include <QGlyphRun>
#include <QImage>
#include <QPainter>
#include <QRawFont>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

#include "platform/qt/Convert.h"

namespace kvx::qt {

namespace {

constexpr int kDefaultPixels = 11;
constexpr int kTrialPixels = 100;
constexpr std::size_t kMaxFonts = 16;
constexpr int kOverhang = 4;  // logical pixels that glyphs may reach out of their cell
constexpr double kStep = 1.0 / 64;

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

// Where the glyphs of a font stand in a cell of device pixels, and how large they are there.
struct DeviceFont {
    double scale;  // of the logical size
    int baseline;
};

// Ascent and descent, as whole pixels, fit into the cell: at odd ratios the glyphs are a little
// smaller than the ratio says.
DeviceFont FitIntoCell(const QFont& font, int ascent, int height, double ratio) {
    QRawFont raw = QRawFont::fromFont(font);
    const double size = raw.pixelSize();
    double scale = ratio;
    const auto room = [&] {
        raw.setPixelSize(size * scale);
        const long below = std::lround(raw.descent());
        return std::pair(height - std::lround(raw.ascent()) - below, height - below);
    };
    auto [spare, lowest] = room();
    for (; spare < 0 && scale > ratio / 2; std::tie(spare, lowest) = room()) scale -= kStep;
    const long wanted = std::lround(ascent * ratio);
    return {scale, static_cast<int>(std::min(wanted, lowest))};
}

void DrawGlyphs(QPainter& painter, const QString& text, const QFont& font, int extent, double ratio,
                const DeviceFont& device) {
    QTextLayout layout(text, font);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    const double natural = line.naturalTextWidth();
    const double stretch = natural > 0 ? extent / natural * ratio : ratio;
    const QPointF origin(std::lround(kOverhang * ratio), device.baseline);
    for (QGlyphRun run : layout.glyphRuns()) {
        QRawFont raw = run.rawFont();
        raw.setPixelSize(raw.pixelSize() * device.scale);
        QList<QPointF> places = run.positions();
        for (QPointF& place : places)
            place = QPointF(place.x() * stretch, (place.y() - line.ascent()) * ratio);
        run.setRawFont(raw);
        run.setPositions(places);
        painter.drawGlyphRun(origin, run);
    }
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

const QtTextEngine::KnownFont& QtTextEngine::Known(const LOGFONT& font) {
    const auto found = std::ranges::find(known_, font, &KnownFont::font);
    if (found != known_.end()) {
        known_.splice(known_.begin(), known_, found);
        return known_.front();
    }
    if (known_.size() >= kMaxFonts) known_.pop_back();
    const QFont real = RealFont(font);
    return known_.emplace_front(KnownFont{font, real, QFontMetrics(real)});
}

TEXTMETRIC QtTextEngine::Metrics(const LOGFONT& font) {
    const auto& [name, real, metrics] = Known(font);
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
    const auto& [name, real, metrics] = Known(font);
    const QString text = ToQString(utf8);
    TextMask mask;
    mask.extent = {metrics.horizontalAdvance(text), metrics.ascent() + metrics.descent()};
    const auto overhang = static_cast<int>(std::lround(kOverhang * ratio));
    mask.offset = {-overhang, 0};
    mask.size = {static_cast<int>(mask.extent.cx * ratio) + 2 * overhang,
                 static_cast<int>(mask.extent.cy * ratio)};
    if (mask.extent.cx <= 0 || mask.extent.cy <= 0) return mask;
    QImage image(mask.size.cx, mask.size.cy, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setFont(real);
    painter.setPen(Qt::white);
    if (ratio == 1)
        painter.drawText(kOverhang, metrics.ascent(), text);
    else
        DrawGlyphs(painter, text, real, mask.extent.cx, ratio,
                   FitIntoCell(real, metrics.ascent(), mask.size.cy, ratio));
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
