#pragma once
// Statics: texts, and black frames that others fill (SS_BLACKFRAME).

#include "platform/windows/Wnd.h"

class CStatic : public CWnd {
  public:
    static const CRuntimeClass kClass;
    const CRuntimeClass* GetRuntimeClass() const override { return &kClass; }

    using CWnd::Create;
    bool Create(const CString& text, DWORD style, const RECT& rect, CWnd* parent, UINT id);

  protected:
    const MessageMap& GetMessageMap() const override;
    int BackgroundColour() const override;
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool TakesMouse(DWORD style) const override { return (style & SS_NOTIFY) != 0; }
    void OnPaint();
};
