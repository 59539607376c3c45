#pragma once
// Device context: selected objects, colours and origin over any graphics.

#include <string_view>

#include "platform/drawing/Graphics.h"

inline constexpr int TRANSPARENT = 1;
inline constexpr int OPAQUE = 2;

inline constexpr UINT ETO_OPAQUE = 0x0002;   // fills the rectangle with the background colour
inline constexpr UINT ETO_CLIPPED = 0x0004;  // the text is clipped to the rectangle

inline constexpr DWORD PATCOPY = 0x00F00021;
inline constexpr DWORD PATINVERT = 0x005A0049;
inline constexpr DWORD DSTINVERT = 0x00550009;
inline constexpr DWORD BLACKNESS = 0x00000042;
inline constexpr DWORD WHITENESS = 0x00FF0062;

class CDC : public CObject {
  public:
    // Borrows the graphics. A context starts with a black pen, a white brush, the default font,
    // black text on white, opaque, origin (0, 0).
    explicit CDC(kvx::IGraphics* graphics);
    ~CDC() override;

    // Each answers what was selected before; the object must outlive its selection. Null selects
    // nothing.
    CPen* SelectObject(CPen* pen);
    CBrush* SelectObject(CBrush* brush);
    CFont* SelectObject(CFont* font);

    COLORREF SetTextColor(COLORREF colour);
    COLORREF GetTextColor() const { return textColour_; }
    COLORREF SetBkColor(COLORREF colour);
    COLORREF GetBkColor() const { return backColour_; }
    int SetBkMode(int mode);
    int GetBkMode() const { return backMode_; }

    // Added to every coordinate. Answers the previous origin.
    CPoint SetViewportOrg(int x, int y);
    CPoint SetViewportOrg(POINT origin) { return SetViewportOrg(origin.x, origin.y); }
    CPoint GetViewportOrg() const { return origin_; }

    void FillRect(const RECT& rect, const CBrush* brush);
    void FillSolidRect(const RECT& rect, COLORREF colour);
    void FillSolidRect(int x, int y, int width, int height, COLORREF colour);
    // One pixel wide, inside the rectangle.
    void FrameRect(const RECT& rect, const CBrush* brush);
    void DrawCell(const RECT& rect, const kvx::CellLook& look);
    void InvertRect(const RECT& rect);
    // PATCOPY and PATINVERT use the selected brush.
    bool PatBlt(int x, int y, int width, int height, DWORD rop);

    CPoint MoveTo(int x, int y);
    CPoint MoveTo(POINT to) { return MoveTo(to.x, to.y); }
    bool LineTo(int x, int y);
    bool LineTo(POINT to) { return LineTo(to.x, to.y); }
    bool Rectangle(int left, int top, int right, int bottom);
    bool Rectangle(const RECT& r) { return Rectangle(r.left, r.top, r.right, r.bottom); }
    // width, height: of the ellipse that rounds the corners.
    bool RoundRect(int left, int top, int right, int bottom, int width, int height);

    // (x, y): top left of the text.
    bool TextOut(int x, int y, std::string_view text);
    // rect may be null when options are 0.
    bool ExtTextOut(int x, int y, UINT options, const RECT* rect, std::string_view text);
    CSize GetTextExtent(std::string_view text);
    bool GetTextMetrics(TEXTMETRIC* metrics);

    // 0xAARRGGBB pixels, blended over what is there.
    void DrawImage(int x, int y, int width, int height, const std::uint32_t* pixels);
    // Restricts drawing to the rectangle and what the context was clipped to before; null: only to
    // the latter.
    void SetClipRect(const RECT* rect);

    kvx::IGraphics& Graphics() { return *graphics_; }

  protected:
    CDC();  // for contexts that make their graphics themselves
    void Attach(kvx::IGraphics* graphics, const std::optional<RECT>& clip);

  private:
    RECT ToSurface(RECT rect) const;
    const LOGFONT& CurrentFont() const;
    std::optional<kvx::LinePattern> LinePatternOfPen() const;
    std::optional<kvx::FillPattern> FillPatternOf(const CBrush* brush) const;

    kvx::IGraphics* graphics_ = nullptr;
    std::optional<RECT> baseClip_;
    CPen* pen_ = nullptr;
    CBrush* brush_ = nullptr;
    CFont* font_ = nullptr;
    COLORREF textColour_ = 0;
    COLORREF backColour_ = 0xFFFFFFu;
    int backMode_ = OPAQUE;
    POINT origin_;
    POINT position_;
};
