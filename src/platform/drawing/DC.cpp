#include "platform/drawing/DC.h"

#include <utility>

#include "platform/base/Rects.h"

using kvx::FillPattern;
using kvx::LinePattern;

namespace {

CPen* DefaultPen() {
    static CPen pen(PS_SOLID, 1, RGB(0, 0, 0));
    return &pen;
}

CBrush* DefaultBrush() {
    static CBrush brush(RGB(255, 255, 255));
    return &brush;
}

CFont* DefaultFont() {
    static CFont font;
    if (!font.IsCreated()) font.CreateFontIndirect(DefaultGuiFont());
    return &font;
}

}  // namespace

CDC::CDC() : pen_(DefaultPen()), brush_(DefaultBrush()), font_(DefaultFont()) {}

CDC::CDC(kvx::IGraphics* graphics) : CDC() {
    graphics_ = graphics;
}

CDC::~CDC() = default;

void CDC::Attach(kvx::IGraphics* graphics, const std::optional<RECT>& clip) {
    graphics_ = graphics;
    baseClip_ = clip;
    if (clip) graphics_->SetClip(clip);
}

CPen* CDC::SelectObject(CPen* pen) {
    return std::exchange(pen_, pen);
}

CBrush* CDC::SelectObject(CBrush* brush) {
    return std::exchange(brush_, brush);
}

CFont* CDC::SelectObject(CFont* font) {
    return std::exchange(font_, font);
}

COLORREF CDC::SetTextColor(COLORREF colour) {
    return std::exchange(textColour_, colour);
}

COLORREF CDC::SetBkColor(COLORREF colour) {
    return std::exchange(backColour_, colour);
}

int CDC::SetBkMode(int mode) {
    return std::exchange(backMode_, mode);
}

CPoint CDC::SetViewportOrg(int x, int y) {
    return std::exchange(origin_, POINT{x, y});
}

RECT CDC::ToSurface(RECT rect) const {
    rect.OffsetRect(origin_);
    return rect;
}

const LOGFONT& CDC::CurrentFont() const {
    return font_ && font_->IsCreated() ? font_->Description() : DefaultGuiFont();
}

std::optional<LinePattern> CDC::LinePatternOfPen() const {
    if (!pen_ || pen_->Style() == PS_NULL) return {};
    LinePattern pattern{pen_->Style(), pen_->Width(), pen_->Colour(), {}};
    if (pattern.style != PS_SOLID && backMode_ == OPAQUE) pattern.gap = backColour_;
    return pattern;
}

std::optional<FillPattern> CDC::FillPatternOf(const CBrush* brush) const {
    if (!brush || brush->IsNull()) return {};
    FillPattern pattern{brush->Colour(), brush->Hatch(), {}};
    if (pattern.hatch != kHatchNone && backMode_ == OPAQUE) pattern.gap = backColour_;
    return pattern;
}

void CDC::FillRect(const RECT& rect, const CBrush* brush) {
    const auto fill = FillPatternOf(brush);
    if (fill && !rect.IsRectEmpty()) graphics_->FillRect(ToSurface(rect), *fill);
}

void CDC::FillSolidRect(const RECT& rect, COLORREF colour) {
    if (!rect.IsRectEmpty()) graphics_->FillRect(ToSurface(rect), {colour, kHatchNone, {}});
}

void CDC::FillSolidRect(int x, int y, int width, int height, COLORREF colour) {
    FillSolidRect({x, y, x + width, y + height}, colour);
}

void CDC::FrameRect(const RECT& rect, const CBrush* brush) {
    FillRect({rect.left, rect.top, rect.right, rect.top + 1}, brush);
    FillRect({rect.left, rect.bottom - 1, rect.right, rect.bottom}, brush);
    FillRect({rect.left, rect.top + 1, rect.left + 1, rect.bottom - 1}, brush);
    FillRect({rect.right - 1, rect.top + 1, rect.right, rect.bottom - 1}, brush);
}

void CDC::DrawCell(const RECT& rect, const kvx::CellLook& look) {
    graphics_->Cell(ToSurface(rect), look);
}

void CDC::InvertRect(const RECT& rect) {
    if (!rect.IsRectEmpty()) graphics_->InvertRect(ToSurface(rect));
}

bool CDC::PatBlt(int x, int y, int width, int height, DWORD rop) {
    // A negative extent reaches to the left of x or above y.
    const RECT rect{width < 0 ? x + width : x, height < 0 ? y + height : y,
                    width < 0 ? x : x + width, height < 0 ? y : y + height};
    if (rect.IsRectEmpty()) return true;
    switch (rop) {
        case PATCOPY:
            FillRect(rect, brush_);
            return true;
        case DSTINVERT:
            InvertRect(rect);
            return true;
        case BLACKNESS:
            FillSolidRect(rect, RGB(0, 0, 0));
            return true;
        case WHITENESS:
            FillSolidRect(rect, RGB(255, 255, 255));
            return true;
        case PATINVERT:
            if (brush_ && !brush_->IsNull()) graphics_->XorRect(ToSurface(rect), brush_->Colour());
            return true;
        default:
            return false;
    }
}

CPoint CDC::MoveTo(int x, int y) {
    return std::exchange(position_, POINT{x, y});
}

bool CDC::LineTo(int x, int y) {
    const POINT from = std::exchange(position_, POINT{x, y});
    const auto pen = LinePatternOfPen();
    if (pen && from != position_) graphics_->Line(from + origin_, position_ + origin_, *pen);
    return true;
}

bool CDC::Rectangle(int left, int top, int right, int bottom) {
    return RoundRect(left, top, right, bottom, 0, 0);
}

bool CDC::RoundRect(int left, int top, int right, int bottom, int width, int height) {
    const RECT rect{left, top, right, bottom};
    if (rect.IsRectEmpty()) return true;
    graphics_->RoundRect(ToSurface(rect), {width, height}, LinePatternOfPen(),
                         FillPatternOf(brush_));
    return true;
}

bool CDC::TextOut(int x, int y, std::string_view text) {
    return ExtTextOut(x, y, 0, nullptr, text);
}

bool CDC::ExtTextOut(int x, int y, UINT options, const RECT* rect, std::string_view text) {
    if (rect && (options & ETO_OPAQUE)) FillSolidRect(*rect, backColour_);
    kvx::TextStyle style{CurrentFont(), textColour_, {}, {}};
    if (backMode_ == OPAQUE) style.background = backColour_;
    if (rect && (options & ETO_CLIPPED)) style.clip = ToSurface(*rect);
    if (!text.empty()) graphics_->Text(POINT{x, y} + origin_, text, style);
    return true;
}

CSize CDC::GetTextExtent(std::string_view text) {
    return graphics_->TextExtent(CurrentFont(), text);
}

bool CDC::GetTextMetrics(TEXTMETRIC* metrics) {
    *metrics = graphics_->Metrics(CurrentFont());
    return true;
}

void CDC::DrawImage(int x, int y, int width, int height, const std::uint32_t* pixels) {
    graphics_->Image(POINT{x, y} + origin_, {width, height}, pixels);
}

void CDC::SetClipRect(const RECT* rect) {
    std::optional<RECT> clip = baseClip_;
    if (rect) clip = clip ? kvx::Intersection(ToSurface(*rect), *clip) : ToSurface(*rect);
    graphics_->SetClip(clip);
}
