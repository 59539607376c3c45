#pragma once
// Status bars: parts side by side, each with a text.

#include <vector>

#include "platform/drawing/StatusLine.h"
#include "platform/windows/Wnd.h"

inline constexpr COLORREF CLR_DEFAULT = 0xFF000000u;

class CStatusBarCtrl : public CWnd {
  public:
    static const CRuntimeClass kClass;
    const CRuntimeClass* GetRuntimeClass() const override { return &kClass; }

    using CWnd::Create;
    // Stays where rect puts it: it does not dock itself. SBARS_SIZEGRIP draws a size grip.
    bool Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) override;
    // Right edges in client coordinates; -1: to the right end.
    bool SetParts(int count, const int* rightEdges);
    int GetParts(int count, int* rightEdges) const;  // answers how many there are
    bool SetText(const CString& text, int part, int type = SBT_SUNKEN);
    CString GetText(int part, int* type = nullptr) const;
    // Widths of the horizontal and vertical border, and the space between parts.
    bool GetBorders(int& horizontal, int& vertical, int& spacing) const;
    bool GetRect(int part, RECT* rect) const;
    // The part has no room for its whole text, which ends in an ellipsis on the screen.
    bool IsTextCut(int part);
    // The part at the point in client coordinates; -1: there is none.
    int PartAt(CPoint point) const;
    // CLR_DEFAULT: the system's. Answers the previous one.
    COLORREF SetBkColor(COLORREF colour);

  protected:
    const MessageMap& GetMessageMap() const override;
    int BackgroundColour() const override;
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool OnEraseBkgnd(CDC* dc);
    void OnPaint();

  private:
    void DrawGrip(CDC& dc);

    std::vector<kvx::StatusPart> parts_ = std::vector<kvx::StatusPart>(1);
    COLORREF background_ = CLR_DEFAULT;
};
