#include "platform/qt/ScaledFont.h"

#include <QGlyphRun>
#include <QPainter>
#include <QRawFont>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

namespace kvx::qt {

namespace {

constexpr double kStep = 1.0 / 64;

// How far the hinted glyphs reach below the baseline; the font's own descent is that of its
// outlines.
long Below(const QRawFont& font) {
    double lowest = font.descent();
    for (const quint32 glyph : font.glyphIndexesForString(QStringLiteral("gjpqy(")))
        lowest = std::max(lowest, font.boundingRect(glyph).bottom());
    return std::lround(lowest);
}

}  // namespace

// The toolkit does not hint fonts on a scaled screen; level strokes are sharp only when it does.
ScaledFont::ScaledFont(const QFont& font, int ascent, int descent, double ratio)
    : font_(font), ratio_(ratio), scale_(ratio) {
    font_.setHintingPreference(QFont::PreferVerticalHinting);
    FitInto(ascent, static_cast<int>((ascent + descent) * ratio));
}

// What hinting makes of ascent and descent, whole pixels both, has to fit.
void ScaledFont::FitInto(int ascent, int height) {
    QRawFont raw = QRawFont::fromFont(font_);
    const double size = raw.pixelSize();
    long above = height;
    long below = height;
    for (; scale_ > ratio_ / 2; scale_ -= kStep) {
        raw.setPixelSize(size * scale_);
        above = std::lround(raw.ascent());
        below = Below(raw);
        if (above + below <= height) break;
    }
    baseline_ = static_cast<int>(std::min(std::lround(ascent * ratio_), height - below));
}

void ScaledFont::Draw(QPainter& painter, const QString& text, int width) const {
    QTextLayout layout(text, font_);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    const double natural = line.naturalTextWidth();
    const double stretch = natural > 0 ? width / natural * ratio_ : ratio_;
    for (QGlyphRun run : layout.glyphRuns()) {
        QRawFont raw = run.rawFont();
        raw.setPixelSize(raw.pixelSize() * scale_);
        QList<QPointF> places = run.positions();
        for (QPointF& place : places)
            place = {place.x() * stretch, (place.y() - line.ascent()) * ratio_};
        run.setRawFont(raw);
        run.setPositions(places);
        painter.drawGlyphRun(QPointF(0, baseline_), run);
    }
}

}  // namespace kvx::qt
