#pragma once
// Draws into the surface of a window made here, which shows it when this ends. Of another
// window: draws nothing. The window may go meanwhile.

#include <memory>

#include "platform/drawing/SurfaceGraphics.h"

class CWnd;

namespace kvx {

class WindowGraphics : public SurfaceGraphics {
  public:
    explicit WindowGraphics(const CWnd* window);
    ~WindowGraphics() override;

  private:
    WindowGraphics(const CWnd* window, std::shared_ptr<Surface> surface);
    HWND window_;
    std::shared_ptr<Surface> keep_;
};

// The same drawing on several graphics, each at its own offset.
class GraphicsGroup : public IGraphics {
  public:
    void Add(std::unique_ptr<IGraphics> graphics, POINT offset);

    void SetClip(const std::optional<RECT>& clip) override;
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
    struct Member {
        std::unique_ptr<IGraphics> graphics;
        POINT offset;
    };
    std::vector<Member> members_;
};

}  // namespace kvx
