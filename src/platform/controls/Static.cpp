#include "platform/controls/Static.h"

#include <algorithm>
#include <vector>

#include "platform/base/SystemInfo.h"
#include "platform/controls/MnemonicText.h"

const CRuntimeClass CStatic::kClass = MakeDynamicClass<CStatic>("CStatic", &CWnd::kClass);

namespace {

// Breaks at line ends and, unless wrap is false, between words where the width is full.
std::vector<CString> BreakLines(CDC& dc, const CString& text, int width, bool wrap) {
    std::vector<CString> lines(1);
    std::size_t at = 0;
    while (at < text.size()) {
        if (text[at] == '\n') {
            lines.emplace_back();
            ++at;
            continue;
        }
        const std::size_t end = std::min(text.find_first_of(" \n", at + 1), text.size());
        const CString word = text.substr(at, end - at);
        CString& line = lines.back();
        const bool fits = line.empty() || !wrap || dc.GetTextExtent(line + word).cx <= width;
        if (fits)
            line += word;
        else
            lines.push_back(word.front() == ' ' ? word.substr(1) : word);
        at = end;
    }
    return lines;
}

}  // namespace

const MessageMap& CStatic::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        ON_WM_PAINT<&CStatic::OnPaint>(),
    };
    static const MessageMap kMap{&CWnd::GetMessageMap(), kEntries};
    return kMap;
}

bool CStatic::Create(const CString& text, DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return CreateEx(0, text, style, rect, parent ? parent->GetSafeHwnd() : nullptr, id);
}

// Frames leave their inside to whoever fills it.
int CStatic::BackgroundColour() const {
    return (GetStyle() & SS_TYPEMASK) == SS_BLACKFRAME ? -1 : COLOR_3DFACE;
}

LRESULT CStatic::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const LRESULT result = CWnd::DefWindowProc(message, wParam, lParam);
    if (message == WM_SETTEXT || message == WM_ENABLE) Invalidate();
    return result;
}

void CStatic::OnPaint() {
    CPaintDC dc(this);
    const RECT client = GetClientRect();
    const DWORD kind = GetStyle() & SS_TYPEMASK;
    if (kind == SS_BLACKFRAME) {
        CBrush black(RGB(0, 0, 0));
        dc.FrameRect(client, &black);
        return;
    }
    if (CFont* font = GetFont()) dc.SelectObject(font);
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(GetSysColor(IsWindowEnabled() ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    const CString text =
        GetStyle() & SS_NOPREFIX ? GetWindowText() : kvx::WithoutMnemonics(GetWindowText());
    int y = 0;
    for (const CString& line : BreakLines(dc, text, client.Width(), kind != SS_LEFTNOWORDWRAP)) {
        const SIZE size = dc.GetTextExtent(line);
        const int spare = client.Width() - size.cx;
        dc.TextOut(kind == SS_CENTER ? spare / 2 : kind == SS_RIGHT ? spare : 0, y, line);
        y += size.cy;
    }
}
