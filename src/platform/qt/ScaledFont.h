#pragma once
// A font on a screen that has more pixels than logical ones: the glyphs of the logical font, drawn
// at the size in which they are shown, at the places of the logical layout.

#include <QFont>

class QPainter;

namespace kvx::qt {

class ScaledFont {
  public:
    // ascent, descent: of the logical cell. The glyphs have the font's size times the ratio, or
    // what of it fits into the cell's whole device pixels.
    ScaledFont(const QFont& font, int ascent, int descent, double ratio);

    // In device pixels, with the cell's corner at 0. width: of the text in logical pixels, which
    // the glyphs take up; so the columns of a fixed font stay columns.
    void Draw(QPainter& painter, const QString& text, int width) const;

  private:
    void FitInto(int ascent, int height);

    QFont font_;
    double ratio_;
    double scale_;  // of the glyphs
    int baseline_ = 0;
};

}  // namespace kvx::qt
