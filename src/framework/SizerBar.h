#pragma once
// A thin bar between two entries of a layout table. Dragging it with the mouse moves an inverted
// copy within the limits of the two neighbours; on release it tells its parent, by the layout
// manager's message, how far it moved. Escape or a cancelled mode ends a drag without effect.

#include "framework/WinMgr.h"
#include "platform/controls/Static.h"

class KVX_EXPORT CSizerBar : public CStatic {
  public:
    static const CRuntimeClass kClass;
    const CRuntimeClass* GetRuntimeClass() const override { return &kClass; }

    using CStatic::Create;
    // The manager is borrowed; its table has an entry of the bar's id with neighbours on both
    // sides.
    bool Create(DWORD style, CWnd* parent, CWinMgr& manager, UINT id, const RECT& rect);

  protected:
    const MessageMap& GetMessageMap() const override;
    bool OnSetCursor(CWnd* window, UINT hitTest, UINT message);
    void OnLButtonDown(UINT flags, CPoint point);
    void OnMouseMove(UINT flags, CPoint point);
    void OnLButtonUp(UINT flags, CPoint point);
    void OnChar(UINT character, UINT repeat, UINT flags);
    void OnCancelMode();

    // Drawing twice restores the screen.
    virtual void OnDrawBar(CDC& dc, CRect& rect);

    // Wider than high. False without a window; found once and kept.
    bool IsHorizontal();
    // The point without the coordinate along the bar.
    CPoint Rectify(CPoint point);
    CPoint Constrain(CPoint point) const;
    void NotifyMoved(CPoint delta);
    void DrawBar();
    void CancelDrag();

  private:
    RECT LimitsOfBar();
    void SetLimits(CPoint screen);

    CWinMgr* manager_ = nullptr;
    int horizontal_ = -1;  // not known yet
    bool dragging_ = false;
    RECT bar_;  // screen
    CPoint start_;
    CPoint previous_;
    RECT limits_;  // of the mouse point, client coordinates
    HWND focusBefore_ = nullptr;
};
