#pragma once
// The borderless pop-up window of a tip.

#include <vector>

#include "platform/drawing/Font.h"
#include "platform/windows/Wnd.h"

// Where a tip of that size stands for a pointer at (x, y) of a view whose window has its corner at
// view: below the pointer, and held within the work area (above the pointer near its bottom).
CRect PlaceTip(CPoint view, CPoint pointer, SIZE size, const RECT& work);

class CTipWindow : public CWnd {
  public:
    bool CreateTip(CWnd& view);
    // Lines from top to bottom on the colour; font may be null.
    void Show(CWnd& view, CFont* font, std::vector<CString> lines, COLORREF colour, CPoint pointer);
    const std::vector<CString>& Lines() const { return lines_; }

  protected:
    const MessageMap& GetMessageMap() const override;
    void OnPaint();

  private:
    // Size of the window for the lines; sets the line pitch.
    SIZE Measure();

    std::vector<CString> lines_;
    CFont* font_ = nullptr;
    COLORREF colour_ = 0;
    int pitch_ = 0;
};
