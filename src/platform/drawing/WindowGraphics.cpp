#include "platform/drawing/WindowGraphics.h"

#include "platform/base/Rects.h"
#include "platform/drawing/TextCache.h"
#include "platform/windows/WindowMap.h"
#include "platform/windows/WindowState.h"

namespace kvx {

namespace {

std::shared_ptr<Surface> SurfaceOf(const CWnd* window) {
    WindowState* state = WindowState::Of(window);
    return state ? state->CurrentSurface() : std::make_shared<Surface>();
}

}  // namespace

WindowGraphics::WindowGraphics(const CWnd* window) : WindowGraphics(window, SurfaceOf(window)) {}

WindowGraphics::WindowGraphics(const CWnd* window, std::shared_ptr<Surface> surface)
    : SurfaceGraphics(*surface),
      window_(window ? window->GetSafeHwnd() : nullptr),
      keep_(std::move(surface)) {}

WindowGraphics::~WindowGraphics() {
    if (!Touched().IsRectEmpty() && FindWindow(window_))
        Backend().Windows().Present(window_, Touched(), false);
}

void GraphicsGroup::Add(std::unique_ptr<IGraphics> graphics, POINT offset) {
    members_.push_back({std::move(graphics), offset});
}

void GraphicsGroup::SetClip(const std::optional<RECT>& clip) {
    for (Member& m : members_)
        m.graphics->SetClip(clip ? std::optional(Moved(*clip, m.offset)) : std::nullopt);
}

void GraphicsGroup::FillRect(const RECT& rect, const FillPattern& fill) {
    for (Member& m : members_) m.graphics->FillRect(Moved(rect, m.offset), fill);
}

void GraphicsGroup::InvertRect(const RECT& rect) {
    for (Member& m : members_) m.graphics->InvertRect(Moved(rect, m.offset));
}

void GraphicsGroup::XorRect(const RECT& rect, COLORREF colour) {
    for (Member& m : members_) m.graphics->XorRect(Moved(rect, m.offset), colour);
}

void GraphicsGroup::Line(POINT from, POINT to, const LinePattern& pen) {
    for (Member& m : members_) m.graphics->Line(from + m.offset, to + m.offset, pen);
}

void GraphicsGroup::RoundRect(const RECT& rect, SIZE corner, const std::optional<LinePattern>& pen,
                              const std::optional<FillPattern>& fill) {
    for (Member& m : members_) m.graphics->RoundRect(Moved(rect, m.offset), corner, pen, fill);
}

void GraphicsGroup::Text(POINT at, std::string_view utf8, const TextStyle& style) {
    for (Member& m : members_) {
        TextStyle moved = style;
        if (moved.clip) moved.clip->OffsetRect(m.offset);
        m.graphics->Text(at + m.offset, utf8, moved);
    }
}

void GraphicsGroup::Image(POINT at, SIZE size, const std::uint32_t* pixels) {
    for (Member& m : members_) m.graphics->Image(at + m.offset, size, pixels);
}

SIZE GraphicsGroup::TextExtent(const LOGFONT& font, std::string_view utf8) {
    return TextExtentOf(font, utf8);
}

TEXTMETRIC GraphicsGroup::Metrics(const LOGFONT& font) {
    return MetricsOf(font);
}

}  // namespace kvx
