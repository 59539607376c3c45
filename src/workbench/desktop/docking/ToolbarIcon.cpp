#include "workbench/desktop/docking/ToolbarIcon.h"

#include <QApplication>
#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <cmath>

namespace kvx::desktop {
namespace {

constexpr int kSide = 16;
constexpr double kReadableContrast = 2.2;
constexpr double kDisabledOpacity = 0.35;

// Relative luminance of a colour, 0 to 1.
double Luminance(const QColor& colour) {
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

double Contrast(double a, double b) {
    return a > b ? (a + 0.05) / (b + 0.05) : (b + 0.05) / (a + 0.05);
}

// The colour, or its counterpart of mirrored lightness when the background would swallow it and the
// counterpart stands out better.
QColor Readable(const QColor& colour, double background) {
    const double contrast = Contrast(Luminance(colour), background);
    if (contrast >= kReadableContrast) return colour;
    const QColor mirrored = QColor::fromHslF(colour.hslHueF(), colour.hslSaturationF(),
                                             1.0F - colour.lightnessF(), colour.alphaF());
    return Contrast(Luminance(mirrored), background) > contrast ? mirrored : colour;
}

class PixelIconEngine final : public QIconEngine {
  public:
    explicit PixelIconEngine(const QImage& image) : image_(image) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        if (mode == QIcon::Disabled) painter->setOpacity(kDisabledOpacity);
        const double ratio = painter->device()->devicePixelRatioF();
        painter->drawImage(rect, Scaled(rect.size() * ratio));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new PixelIconEngine(image_); }

  private:
    // A pixel of the picture becomes a whole number of device pixels, one more or less at odd
    // ratios: lines stay sharp. Only what has to shrink is smoothed.
    QImage Scaled(QSize size) const {
        const bool shrinks = size.width() < image_.width() || size.height() < image_.height();
        return Adapted().scaled(size, Qt::IgnoreAspectRatio,
                                shrinks ? Qt::SmoothTransformation : Qt::FastTransformation);
    }

    QImage Adapted() const {
        const double background = Luminance(QApplication::palette().color(QPalette::Window));
        QImage adapted = image_;
        for (int y = 0; y < adapted.height(); ++y) {
            for (int x = 0; x < adapted.width(); ++x) {
                const QColor colour = image_.pixelColor(x, y);
                if (colour.alpha() != 0) adapted.setPixelColor(x, y, Readable(colour, background));
            }
        }
        return adapted;
    }

    QImage image_;
};

}  // namespace

QIcon MakeToolbarIcon(const std::uint32_t* pixels) {
    QImage image(kSide, kSide, QImage::Format_ARGB32);
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) image.setPixel(x, y, pixels[y * kSide + x]);
    }
    return QIcon(new PixelIconEngine(image));
}

}  // namespace kvx::desktop
