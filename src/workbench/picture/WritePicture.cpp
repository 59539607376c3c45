#include "workbench/picture/WritePicture.h"

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QSaveFile>
#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "platform/Backend.h"
#include "platform/base/SystemInfo.h"
#include "platform/drawing/SurfaceGraphics.h"
#include "workbench/picture/ToolkitMessages.h"

namespace kvx::picture {
namespace {

constexpr double kPlainDpi = 96.0;
constexpr double kInchesPerMetre = 1000.0 / 25.4;

}  // namespace

Offscreen::Offscreen() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // One pixel of the picture is one logical pixel of the window, however the screen is scaled.
    qputenv("QT_ENABLE_HIGHDPI_SCALING", "0");
    for (const char* name : {"QT_FONT_DPI", "QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS"})
        qunsetenv(name);
    FilterToolkitMessages();
    if (!InstallBackend()) throw std::runtime_error("the toolkit cannot draw here");
    RequireLightSysColors();
}

Offscreen::~Offscreen() {
    RemoveBackend();
}

bool IsSvgName(const std::string& name) {
    return name.ends_with(".svg") || name.ends_with(".SVG");
}

std::string EncodePng(PicturePage& page, int dpi) {
    const PixelGrid grid(dpi / kPlainDpi, {0, 0});
    const RECT area = grid.ToDevice(RECT{0, 0, page.Size().cx, page.Size().cy});
    QImage image(area.right, area.bottom, QImage::Format_RGB32);
    if (image.isNull()) throw std::runtime_error("the picture is too large");
    const auto paint = [&](SIZE size, int top, auto draw) {
        Surface surface(size, PicturePage::Ground(), PixelGrid(grid.Ratio(), {0, top}));
        SurfaceGraphics graphics(surface);
        CDC dc(&graphics);
        draw(dc);
        const auto from = static_cast<int>(grid.Y(top));
        const int rows = std::min(surface.DeviceSize().cy, image.height() - from);
        for (int y = 0; y < rows; ++y)
            std::copy_n(surface.Row(y), image.width(),
                        reinterpret_cast<std::uint32_t*>(image.scanLine(from + y)));
    };
    paint(page.StatusSize(), 0, [&page](CDC& dc) { page.DrawStatus(dc); });
    paint(page.BodySize(), page.StatusHeight(), [&page](CDC& dc) { page.DrawBody(dc); });
    image.setDotsPerMeterX(static_cast<int>(std::lround(dpi * kInchesPerMetre)));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG")) throw std::runtime_error("the picture is too large");
    return bytes.toStdString();
}

std::string WritePicture(const std::string& bytes, const std::string& name, std::ostream& out) {
    if (name == "-") {
        out << bytes << std::flush;
        return out ? "" : "standard output: cannot write";
    }
    QSaveFile file(QFile::decodeName(name.c_str()));
    const auto size = static_cast<qint64>(bytes.size());
    if (file.open(QIODevice::WriteOnly) && file.write(bytes.data(), size) == size && file.commit())
        return {};
    return (file.fileName() + ": " + file.errorString()).toStdString();
}

}  // namespace kvx::picture
