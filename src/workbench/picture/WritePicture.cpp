#include "workbench/picture/WritePicture.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "platform/Backend.h"
#include "platform/base/SystemInfo.h"
#include "platform/drawing/SurfaceGraphics.h"
#include "workbench/picture/Png.h"
#include "workbench/simulation/FileOutput.h"

namespace kvx::picture {
namespace {

constexpr double kPlainDpi = 96.0;

}  // namespace

Offscreen::Offscreen() {
    if (!InstallBackend(Screen::None)) throw std::runtime_error("the toolkit cannot draw here");
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
    PngWriter image({area.right, area.bottom}, dpi);
    int written = 0;
    const auto paint = [&](SIZE size, int top, int end, auto draw) {
        Surface surface(size, PicturePage::Ground(), PixelGrid(grid.Ratio(), {0, top}));
        SurfaceGraphics graphics(surface);
        CDC dc(&graphics);
        draw(dc);
        // Where two parts meet inside a pixel, the lower one has it.
        const int rows = std::min(surface.DeviceSize().cy, end - written);
        for (int y = 0; y < rows; ++y) image.Add(surface.Row(y));
        written += rows;
    };
    const auto middle = static_cast<int>(grid.Y(page.StatusHeight()));
    paint(page.StatusSize(), 0, middle, [&page](CDC& dc) { page.DrawStatus(dc); });
    paint(page.BodySize(), page.StatusHeight(), area.bottom,
          [&page](CDC& dc) { page.DrawBody(dc); });
    return image.Finish();
}

std::string WritePicture(const std::string& bytes, const std::string& name, std::ostream& out) {
    if (name == "-") {
        out << bytes << std::flush;
        return out ? "" : "standard output: cannot write";
    }
    // Beside it first, so that a picture that is there stays until the new one is whole.
    const std::string part = name + ".part";
    std::string failure = simulation::WriteFile(part, bytes);
    std::error_code error;
    if (failure.empty())
        std::filesystem::rename(std::filesystem::path(part), std::filesystem::path(name), error);
    if (failure.empty() && !error) return {};
    std::error_code ignored;
    std::filesystem::remove(std::filesystem::path(part), ignored);
    return failure.empty() ? name + ": " + error.message() : failure;
}

}  // namespace kvx::picture
