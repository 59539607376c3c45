#include "workbench/picture/SvgGraphics.h"

#include <fmt/format.h>

#include <iterator>

#include "platform/base/Rects.h"
#include "platform/drawing/Patterns.h"
#include "platform/drawing/TextCache.h"

namespace kvx::picture {
namespace {

std::string Colour(COLORREF colour) {
    return fmt::format("#{:02x}{:02x}{:02x}", GetRValue(colour), GetGValue(colour),
                       GetBValue(colour));
}

std::string RectAttributes(const RECT& rect) {
    return fmt::format("x=\"{}\" y=\"{}\" width=\"{}\" height=\"{}\"", rect.left, rect.top,
                       rect.Width(), rect.Height());
}

// The marked pixels of a tile, as a path of squares.
std::string TilePath(const HatchTile& tile) {
    std::string path;
    for (int y = 0; y < tile.period; ++y) {
        for (int x = 0; x < tile.period; ++x) {
            if (tile.rows[static_cast<std::size_t>(y)] >> x & 1)
                path += fmt::format("M{} {}h1v1h-1z", x, y);
        }
    }
    return path;
}

// Dashes are counted from the corner of the picture, as they are on the screen.
std::string DashAttributes(POINT from, POINT to, const LinePattern& pen) {
    if (pen.style == PS_SOLID) return {};
    const Dashes dashes = DashesOf(pen.style, PixelGrid());
    const int begin = from.y == to.y ? from.x : from.y;
    return fmt::format(" stroke-dasharray=\"{} {}\" stroke-dashoffset=\"{}\"", dashes.on,
                       dashes.period - dashes.on, begin % dashes.period);
}

}  // namespace

std::string XmlText(std::string_view utf8) {
    std::string text;
    for (const char c : utf8) {
        if (c == '&')
            text += "&amp;";
        else if (c == '<')
            text += "&lt;";
        else if (c == '>')
            text += "&gt;";
        else if (c == '"')
            text += "&quot;";
        else if (static_cast<unsigned char>(c) >= ' ' || c == '\n' || c == '\t')
            text += c;
    }
    return text;
}

std::string SvgGraphics::Finish(SIZE size, COLORREF ground) {
    std::string text = fmt::format(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"{0}\" height=\"{1}\" "
        "viewBox=\"0 0 {0} {1}\" shape-rendering=\"crispEdges\">\n<defs>\n",
        size.cx, size.cy);
    for (const auto& [definition, number] : definitions_) {
        const std::size_t at = definition.find('@');
        text +=
            definition.substr(0, at) + std::to_string(number) + definition.substr(at + 1) + '\n';
    }
    text += fmt::format("</defs>\n<rect width=\"{}\" height=\"{}\" fill=\"{}\"/>\n", size.cx,
                        size.cy, Colour(ground));
    return text + body_ + "</svg>\n";
}

void SvgGraphics::BeginGroup(std::string_view attributes, std::string_view title) {
    body_ += attributes.empty() ? "<g>" : fmt::format("<g {}>", attributes);
    if (!title.empty()) body_ += "<title>" + XmlText(title) + "</title>";
    body_ += '\n';
}

void SvgGraphics::EndGroup() {
    body_ += "</g>\n";
}

std::size_t SvgGraphics::Define(const std::string& definition) {
    return definitions_.try_emplace(definition, definitions_.size()).first->second;
}

std::string SvgGraphics::PaintOf(const FillPattern& fill) {
    if (fill.hatch == kHatchNone) return Colour(fill.colour);
    const HatchTile& tile = HatchTileOf(fill.hatch, PixelGrid());
    const std::string gap = fill.gap ? fmt::format("<path d=\"M0 0h{0}v{0}h-{0}z\" fill=\"{1}\"/>",
                                                   tile.period, Colour(*fill.gap))
                                     : "";
    return fmt::format(
        "url(#d{})",
        Define(fmt::format("<pattern id=\"d@\" width=\"{0}\" height=\"{0}\" "
                           "patternUnits=\"userSpaceOnUse\">{1}<path d=\"{2}\" fill=\"{3}\"/>"
                           "</pattern>",
                           tile.period, gap, TilePath(tile), Colour(fill.colour))));
}

std::string SvgGraphics::ClipAttribute(const std::optional<RECT>& clip) {
    if (!clip) return {};
    return fmt::format(
        " clip-path=\"url(#d{})\"",
        Define(fmt::format("<clipPath id=\"d@\"><rect {}/></clipPath>", RectAttributes(*clip))));
}

void SvgGraphics::AddRect(const RECT& rect, std::string_view attributes) {
    if (rect.Width() <= 0 || rect.Height() <= 0) return;
    body_ +=
        fmt::format("<rect {} {}{}/>\n", RectAttributes(rect), attributes, ClipAttribute(clip_));
}

void SvgGraphics::FillRect(const RECT& rect, const FillPattern& fill) {
    AddRect(rect, fmt::format("fill=\"{}\"", PaintOf(fill)));
}

void SvgGraphics::InvertRect(const RECT& rect) {
    XorRect(rect, RGB(255, 255, 255));
}

// The difference to white turns every bit over; of another colour it is what comes nearest.
void SvgGraphics::XorRect(const RECT& rect, COLORREF colour) {
    AddRect(rect, fmt::format("fill=\"{}\" style=\"mix-blend-mode:difference\"", Colour(colour)));
}

void SvgGraphics::Line(POINT from, POINT to, const LinePattern& pen) {
    if (from == to) return;
    const std::string path = fmt::format(
        "<path d=\"M{} {}L{} {}\" fill=\"none\" stroke-width=\"{}\"",
        from.x + (from.x == to.x ? 0.5 : 0.0), from.y + (from.y == to.y ? 0.5 : 0.0),
        to.x + (from.x == to.x ? 0.5 : 0.0), to.y + (from.y == to.y ? 0.5 : 0.0), pen.width);
    const std::string clip = ClipAttribute(clip_);
    if (pen.gap && pen.style != PS_SOLID)
        body_ += fmt::format("{} stroke=\"{}\"{}/>\n", path, Colour(*pen.gap), clip);
    body_ += fmt::format("{} stroke=\"{}\"{}{}/>\n", path, Colour(pen.colour),
                         DashAttributes(from, to, pen), clip);
}

// The outline stands inside the rectangle.
void SvgGraphics::RoundRect(const RECT& rect, SIZE corner, const std::optional<LinePattern>& pen,
                            const std::optional<FillPattern>& fill) {
    const double inset = pen ? pen->width / 2.0 : 0.0;
    const double width = rect.Width() - 2 * inset;
    const double height = rect.Height() - 2 * inset;
    if (width <= 0 || height <= 0) return;
    body_ += fmt::format(
        "<rect x=\"{}\" y=\"{}\" width=\"{}\" height=\"{}\" rx=\"{}\" ry=\"{}\" fill=\"{}\"{}"
        " shape-rendering=\"auto\"{}/>\n",
        rect.left + inset, rect.top + inset, width, height, std::min(corner.cx / 2.0, width / 2),
        std::min(corner.cy / 2.0, height / 2), fill ? PaintOf(*fill) : "none",
        pen ? fmt::format(" stroke=\"{}\" stroke-width=\"{}\"", Colour(pen->colour), pen->width)
            : "",
        ClipAttribute(clip_));
}

void SvgGraphics::Text(POINT at, std::string_view utf8, const TextStyle& style) {
    const SIZE extent = TextExtent(style.font, utf8);
    if (extent.cx <= 0) return;
    const RECT cell = RectAt(at, extent);
    if (style.background) AddRect(cell, fmt::format("fill=\"{}\"", Colour(*style.background)));
    std::optional<RECT> clip = clip_;
    if (style.clip) clip = clip ? Intersection(*clip, *style.clip) : *style.clip;
    if (clip && Intersection(*clip, cell) == cell) clip.reset();  // it cuts nothing off
    const TEXTMETRIC metrics = Metrics(style.font);
    body_ += fmt::format(
        "<text x=\"{}\" y=\"{}\" fill=\"{}\" font-family=\"{}\" font-size=\"{}\"{} "
        "textLength=\"{}\" xml:space=\"preserve\"{}>{}</text>\n",
        at.x, at.y + metrics.tmAscent, Colour(style.colour),
        style.font.lfFaceName == "Courier New" ? "Liberation Mono, Courier New, monospace"
                                               : "Liberation Sans, Arial, sans-serif",
        metrics.tmHeight - metrics.tmInternalLeading,
        style.font.lfWeight >= FW_BOLD ? " font-weight=\"bold\"" : "", extent.cx,
        ClipAttribute(clip), XmlText(utf8));
}

void SvgGraphics::Image(POINT at, SIZE size, const std::uint32_t* pixels) {
    for (int i = 0; i < size.cx * size.cy; ++i) {
        if (pixels[i] >> 24 == 0) continue;
        const POINT corner = at + POINT{i % size.cx, i / size.cx};
        AddRect(RectAt(corner, {1, 1}),
                fmt::format("fill=\"#{:06x}\" fill-opacity=\"{:.3f}\"", pixels[i] & 0xFFFFFFu,
                            (pixels[i] >> 24) / 255.0));
    }
}

SIZE SvgGraphics::TextExtent(const LOGFONT& font, std::string_view utf8) {
    return TextExtentOf(font, utf8);
}

TEXTMETRIC SvgGraphics::Metrics(const LOGFONT& font) {
    return MetricsOf(font);
}

}  // namespace kvx::picture
