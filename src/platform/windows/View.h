#pragma once
// Views: windows that draw a document and delete themselves with their window.

#include "platform/windows/DropTarget.h"
#include "platform/windows/Wnd.h"

class CView : public CWnd {
  public:
    static const CRuntimeClass kClass;
    const CRuntimeClass* GetRuntimeClass() const override { return &kClass; }

    virtual void OnInitialUpdate();  // base: OnUpdate(null, 0, null)
    // Base: invalidates the view, erasing.
    virtual void OnUpdate(CWnd* sender, LPARAM hint, CObject* object);
    virtual void OnDraw(CDC* dc) = 0;

    // Drag and drop over a registered drop target (platform/windows/DropTarget.h).
    virtual DROPEFFECT OnDragEnter(COleDataObject* data, DWORD keyState, CPoint point);
    virtual DROPEFFECT OnDragOver(COleDataObject* data, DWORD keyState, CPoint point);
    virtual void OnDragLeave();
    virtual bool OnDrop(COleDataObject* data, DROPEFFECT effect, CPoint point);

  protected:
    const MessageMap& GetMessageMap() const override;
    void PostNcDestroy() override { delete this; }
    int BackgroundColour() const override;
    void OnPaint();  // OnDraw on a paint context
};
