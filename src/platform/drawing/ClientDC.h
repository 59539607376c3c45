#pragma once
// Contexts of windows: CClientDC draws at once, CPaintDC answers WM_PAINT, CWindowDC also reaches
// over the children.

#include <memory>

#include "platform/drawing/DC.h"

class CWnd;

namespace kvx {
class WindowGraphics;
}

// Draws into the window's surface; the screen follows when the context ends. A window that is not
// this module's gives a context that draws nothing.
class CClientDC : public CDC {
  public:
    explicit CClientDC(CWnd* window);
    ~CClientDC() override;

  private:
    std::unique_ptr<kvx::WindowGraphics> graphics_;
};

struct PAINTSTRUCT {
    bool fErase = false;  // the background could not be erased
    RECT rcPaint;
};

// In the handler of WM_PAINT: erases the background where that is due (WM_ERASEBKGND), clips to the
// invalid rectangle and validates it.
class CPaintDC : public CDC {
  public:
    explicit CPaintDC(CWnd* window);
    ~CPaintDC() override;
    PAINTSTRUCT m_ps;

  private:
    std::unique_ptr<kvx::WindowGraphics> graphics_;
};

// Coordinates count from the window's outer corner. What is drawn lies over the window's children
// too: rectangles inverted twice disappear from all of them.
class CWindowDC : public CDC {
  public:
    explicit CWindowDC(CWnd* window);
    ~CWindowDC() override;

  private:
    std::unique_ptr<kvx::IGraphics> graphics_;
};
