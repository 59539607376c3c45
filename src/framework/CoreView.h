#pragma once
// Behaviour common to all views: wheel, focus and dialog keys, a drop target with hooks that refuse
// everything, the start of a drag, and texts of the host's "&Option" menu.

#include "framework/QView.h"
#include "platform/windows/DropTarget.h"

class CMenu;

class KVX_EXPORT CCoreView : public CQView {
  public:
    static const CRuntimeClass kClass;
    const CRuntimeClass* GetRuntimeClass() const override { return &kClass; }

    virtual bool IsDispContextMenu(CPoint point);
    // What a drag does, and what happens around it.
    virtual void StartDragDrop(CPoint start);
    virtual void PreStartDrag();
    virtual void PostStartDrag();
    // Drops; the base refuses. DropTarget answers 1 when it took the data, AutoScrollDrop 1 to
    // scroll instead, DrawDropRect the area to be marked.
    virtual int DropTarget(COleDataObject* data, DWORD keyState, CPoint point);
    virtual DROPEFFECT GetDropEffect(COleDataObject* data, DWORD keyState, CPoint point);
    virtual int AutoScrollDrop(COleDataObject* data, DWORD keyState, CPoint point);
    virtual CRect DrawDropRect(COleDataObject* data, DWORD keyState, CPoint point);

    void OnDraw(CDC* dc) override;
    DROPEFFECT OnDragEnter(COleDataObject* data, DWORD keyState, CPoint point) override;
    DROPEFFECT OnDragOver(COleDataObject* data, DWORD keyState, CPoint point) override;
    void OnDragLeave() override;
    bool OnDrop(COleDataObject* data, DROPEFFECT effect, CPoint point) override;

    // A drag starts when the mouse has moved far enough, long enough after Set_DragStart.
    void Set_DragStart(CPoint point);
    void Reset_DragStart() { armed_ = false; }
    void Start_DragDrop(CPoint point);

    // The rectangle where a drag began, shown by inversion.
    void Show_DragStartRect(const CRect& rect);
    void DrawDragStartRect();
    void Hide_DragStartRect();

    // Text of a command in the host's "&Option" menu, or empty.
    CString GetOptionMenuString(UINT command);

  protected:
    const MessageMap& GetMessageMap() const override;
    int OnCreate(const CREATESTRUCT* create);
    bool OnMouseWheel(UINT flags, short delta, CPoint point);
    UINT OnGetDlgCode();
    void OnLButtonDown(UINT flags, CPoint point);
    void OnLButtonDblClk(UINT flags, CPoint point);

    // Length of the command's text in the menu or a popup of it; 0 when it is not there.
    int SearchMenuString(const CMenu* menu, UINT command, CString& text);

  private:
    bool isDragSource_ = false;
    bool droppedOnSelf_ = false;
    CRect toShow_;
    CRect shown_;
    bool showPending_ = false;
    CRect dropFeedback_;
    COleDropTarget dropTarget_;
    bool armed_ = false;
    CPoint dragStart_;
    DWORD armedAt_ = 0;  // tick count
    bool arrowSent_ = false;
};
