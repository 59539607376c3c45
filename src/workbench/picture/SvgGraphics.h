#pragma once
// Writes what is drawn as elements of an SVG picture, one pixel a unit. Text stays text: it is set
// in the font that the picture was measured with, or one like it.

#include <map>
#include <ostream>
#include <string>
#include <string_view>

#include "platform/drawing/Graphics.h"

namespace kvx::picture {

class SvgGraphics final : public IGraphics {
  public:
    // The whole file around what is drawn, at the size and on the ground colour.
    std::string Finish(SIZE size, COLORREF ground);

    // What is drawn until the end of the group belongs to it. attributes: as they stand in the tag,
    // for example "id=\"line-1\""; title: what a browser shows at the pointer, empty for none.
    void BeginGroup(std::string_view attributes, std::string_view title = {});
    void EndGroup();

    void SetClip(const std::optional<RECT>& clip) override { clip_ = clip; }
    void FillRect(const RECT& rect, const FillPattern& fill) override;
    void InvertRect(const RECT& rect) override;
    void XorRect(const RECT& rect, COLORREF colour) override;
    void Line(POINT from, POINT to, const LinePattern& pen) override;
    void RoundRect(const RECT& rect, SIZE corner, const std::optional<LinePattern>& pen,
                   const std::optional<FillPattern>& fill) override;
    void Text(POINT at, std::string_view utf8, const TextStyle& style) override;
    void Image(POINT at, SIZE size, const std::uint32_t* pixels) override;
    SIZE TextExtent(const LOGFONT& font, std::string_view utf8) override;
    TEXTMETRIC Metrics(const LOGFONT& font) override;

  private:
    // A definition is written once, under the number that is answered.
    std::size_t Define(const std::string& definition);
    std::string PaintOf(const FillPattern& fill);
    std::string ClipAttribute(const std::optional<RECT>& clip);
    void AddRect(const RECT& rect, std::string_view attributes);

    std::string body_;
    std::map<std::string, std::size_t> definitions_;  // with "@" where the number stands
    std::optional<RECT> clip_;
};

// The text with what has a meaning in XML written out; characters that XML has not are left out.
std::string XmlText(std::string_view utf8);

}  // namespace kvx::picture
