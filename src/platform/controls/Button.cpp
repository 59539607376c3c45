#include "platform/controls/Button.h"

#include "platform/Backend.h"
#include "platform/base/SystemInfo.h"
#include "platform/controls/MnemonicText.h"

const MessageMap& CButton::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        ON_WM_PAINT<&CButton::OnPaint>(),
    };
    static const MessageMap kMap{&CWnd::GetMessageMap(), kEntries};
    return kMap;
}

kvx::WindowKind CButton::Kind(DWORD style) const {
    switch (style & BS_TYPEMASK) {
        case BS_CHECKBOX:
        case BS_AUTOCHECKBOX:
            return kvx::WindowKind::CheckBox;
        case BS_RADIOBUTTON:
        case BS_AUTORADIOBUTTON:
            return kvx::WindowKind::RadioButton;
        case BS_GROUPBOX:
            return kvx::WindowKind::Backdrop;
        default:
            return kvx::WindowKind::PushButton;
    }
}

bool CButton::Create(const CString& text, DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return CreateEx(0, text, style, rect, parent ? parent->GetSafeHwnd() : nullptr, id);
}

void CButton::SetCheck(int check) {
    if (m_hWnd) kvx::Backend().Controls().SetCheck(m_hWnd, check != BST_UNCHECKED);
}

int CButton::GetCheck() const {
    return m_hWnd && kvx::Backend().Controls().Check(m_hWnd) ? BST_CHECKED : BST_UNCHECKED;
}

int CButton::BackgroundColour() const {
    return COLOR_3DFACE;
}

LRESULT CButton::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const LRESULT result = CWnd::DefWindowProc(message, wParam, lParam);
    if (message == WM_SETTEXT || message == WM_ENABLE) Invalidate();
    return result;
}

// An etched frame whose upper edge runs through the middle of the title.
void CButton::OnPaint() {
    constexpr int kTitleLeft = 7;
    constexpr int kTitleGap = 2;
    CPaintDC dc(this);
    if (CFont* font = GetFont()) dc.SelectObject(font);
    const CString title = kvx::WithoutMnemonics(GetWindowText());
    const SIZE size = dc.GetTextExtent(title);
    RECT frame = GetClientRect();
    frame.top += size.cy / 2;
    CBrush light(GetSysColor(COLOR_BTNHIGHLIGHT));
    CBrush dark(GetSysColor(COLOR_BTNSHADOW));
    dc.FrameRect({frame.left + 1, frame.top + 1, frame.right, frame.bottom}, &light);
    dc.FrameRect({frame.left, frame.top, frame.right - 1, frame.bottom - 1}, &dark);
    if (title.empty()) return;
    dc.SetBkMode(TRANSPARENT);
    dc.FillSolidRect(kTitleLeft - kTitleGap, 0, size.cx + 2 * kTitleGap, size.cy,
                     GetSysColor(COLOR_3DFACE));
    dc.SetTextColor(GetSysColor(IsWindowEnabled() ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    dc.TextOut(kTitleLeft, 0, title);
}
