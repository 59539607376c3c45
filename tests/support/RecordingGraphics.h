#pragma once
// Graphics that write down what is drawn, one line of text a call, with fixed font metrics: every
// character is 8 pixels wide, every line 16 high, without external leading.
//
//     fill 10 20 30 40 #FF0000                  hatch 5 10 20 30 40 #FF0000 on #FFFFFF
//     invert 10 20 30 40                        xor 10 20 30 40 #C0C0C0
//     line 10 20 30 20 solid 1 #000000          line 10 20 30 20 dot 1 #000000 on #FFFFFF
//     roundrect 10 20 30 40 corner 6 6 pen solid 1 #000000 fill #FF0000
//     font "Courier New" -15                    (when it differs from that of the text before)
//     text 10 20 "RUN" #000000 on #FFFFFF clip 10 20 30 40
//     image 10 20 16 16                         clip 0 0 100 100, clip none
//
// Rectangles are left top right bottom. " on colour" stands only where gaps are painted.

#include <string>
#include <vector>

#include "platform/base/Text.h"
#include "platform/drawing/Graphics.h"

namespace kvx::test {

inline constexpr int kCharWidth = 8;
inline constexpr int kCharHeight = 16;

class RecordingGraphics : public IGraphics {
  public:
    const std::vector<std::string>& Lines() const { return lines_; }
    // All lines, each with its line end.
    std::string Text() const {
        std::string all;
        for (const std::string& line : lines_) all += line + "\n";
        return all;
    }
    void Clear() {
        lines_.clear();
        font_ = {};
    }

    void SetClip(const std::optional<RECT>& clip) override {
        lines_.push_back("clip " + (clip ? Name(*clip) : "none"));
    }
    void FillRect(const RECT& rect, const FillPattern& fill) override {
        lines_.push_back(Hatch(fill) + Name(rect) + " " + Name(fill.colour) + On(fill.gap));
    }
    void InvertRect(const RECT& rect) override { lines_.push_back("invert " + Name(rect)); }
    void XorRect(const RECT& rect, COLORREF colour) override {
        lines_.push_back("xor " + Name(rect) + " " + Name(colour));
    }
    void Line(POINT from, POINT to, const LinePattern& pen) override {
        lines_.push_back(
            FormatText("line %d %d %d %d %s", from.x, from.y, to.x, to.y, Name(pen).c_str()));
    }
    void RoundRect(const RECT& rect, SIZE corner, const std::optional<LinePattern>& pen,
                   const std::optional<FillPattern>& fill) override {
        std::string line = "roundrect " + Name(rect);
        line += FormatText(" corner %d %d", corner.cx, corner.cy);
        if (pen) line += " pen " + Name(*pen);
        if (fill) line += " " + Hatch(*fill) + Name(fill->colour) + On(fill->gap);
        lines_.push_back(line);
    }
    void Text(POINT at, std::string_view utf8, const TextStyle& style) override {
        if (style.font != font_) {
            font_ = style.font;
            lines_.push_back(
                FormatText("font \"%s\" %d", font_.lfFaceName.c_str(), font_.lfHeight));
        }
        std::string line = FormatText("text %d %d \"", at.x, at.y);
        line.append(utf8).append("\" ").append(Name(style.colour)).append(On(style.background));
        if (style.clip) line += " clip " + Name(*style.clip);
        lines_.push_back(line);
    }
    void Image(POINT at, SIZE size, const std::uint32_t*) override {
        lines_.push_back(FormatText("image %d %d %d %d", at.x, at.y, size.cx, size.cy));
    }

    SIZE TextExtent(const LOGFONT&, std::string_view utf8) override {
        int characters = 0;
        for (const char c : utf8) characters += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
        return {characters * kCharWidth, kCharHeight};
    }
    TEXTMETRIC Metrics(const LOGFONT&) override {
        TEXTMETRIC metrics;
        metrics.tmHeight = kCharHeight;
        metrics.tmAscent = 12;
        metrics.tmDescent = 4;
        metrics.tmAveCharWidth = kCharWidth;
        metrics.tmMaxCharWidth = kCharWidth;
        return metrics;
    }

  private:
    static std::string Name(const RECT& r) {
        return FormatText("%d %d %d %d", r.left, r.top, r.right, r.bottom);
    }
    static std::string Name(COLORREF c) {
        return FormatText("#%02X%02X%02X", GetRValue(c), GetGValue(c), GetBValue(c));
    }
    static std::string Name(const LinePattern& pen) {
        const char* style = pen.style == PS_DOT ? "dot" : pen.style == PS_DASH ? "dash" : "solid";
        return FormatText("%s %d %s", style, pen.width, Name(pen.colour).c_str()) + On(pen.gap);
    }
    static std::string Hatch(const FillPattern& fill) {
        return fill.hatch == kHatchNone ? "fill " : FormatText("hatch %d ", fill.hatch);
    }
    static std::string On(const std::optional<COLORREF>& colour) {
        return colour ? " on " + Name(*colour) : "";
    }

    std::vector<std::string> lines_;
    LOGFONT font_;
};

}  // namespace kvx::test
