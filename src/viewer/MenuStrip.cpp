#include "viewer/MenuStrip.h"

#include <cctype>

#include "platform/base/SystemInfo.h"
#include "platform/controls/MnemonicText.h"

namespace kvx::viewer {
namespace {

constexpr int kPadding = 8;

UINT LetterOf(const CString& text) {
    const std::size_t mark = text.find('&');
    if (mark == CString::npos || mark + 1 >= text.size()) return 0;
    return static_cast<UINT>(std::toupper(static_cast<unsigned char>(text[mark + 1])));
}

// Under the letter that opens the menu.
void UnderlineLetter(CDC& dc, const CString& text, POINT at) {
    const std::size_t mark = text.find('&');
    if (LetterOf(text) == 0) return;
    const int left = at.x + dc.GetTextExtent(text.substr(0, mark)).cx;
    const CSize letter = dc.GetTextExtent(text.substr(mark + 1, 1));
    dc.FillSolidRect(left, at.y + letter.cy - 2, letter.cx, 1, dc.GetTextColor());
}

}  // namespace

const MessageMap& MenuStrip::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        ON_WM_PAINT<&MenuStrip::OnPaint>(),
        ON_WM_LBUTTONDOWN<&MenuStrip::OnLButtonDown>(),
        ON_WM_MOUSEMOVE<&MenuStrip::OnMouseMove>(),
        ON_MESSAGE<WM_MOUSELEAVE, &MenuStrip::OnMouseLeave>(),
    };
    static const MessageMap kMap{&CWnd::GetMessageMap(), kEntries};
    return kMap;
}

bool MenuStrip::Open(UINT letter) {
    const auto& popups = menus_.Popups();
    for (std::size_t i = 0; i < popups.size(); ++i) {
        if (letter != 0 && LetterOf(popups[i].text) != letter) continue;
        OpenAt(i);
        return true;
    }
    return false;
}

std::vector<int> MenuStrip::Edges() {
    CClientDC dc(this);
    std::vector<int> edges{2};
    for (const MenuEntry& popup : menus_.Popups()) {
        const int width = dc.GetTextExtent(WithoutMnemonics(popup.text)).cx;
        edges.push_back(edges.back() + width + 2 * kPadding);
    }
    return edges;
}

int MenuStrip::At(int x) {
    const std::vector<int> edges = Edges();
    for (std::size_t i = 0; i + 1 < edges.size(); ++i) {
        if (x >= edges[i] && x < edges[i + 1]) return static_cast<int>(i);
    }
    return -1;
}

void MenuStrip::OnPaint() {
    CPaintDC dc(this);
    const RECT area = GetClientRect();
    dc.FillSolidRect(area, GetSysColor(COLOR_3DFACE));
    dc.SetBkMode(TRANSPARENT);
    const std::vector<int> edges = Edges();
    for (std::size_t i = 0; i < menus_.Popups().size(); ++i) {
        const bool hot = static_cast<int>(i) == hot_;
        if (hot) {
            dc.FillSolidRect(edges[i], 0, edges[i + 1] - edges[i], area.Height() - 1,
                             GetSysColor(COLOR_HIGHLIGHT));
        }
        const CString text = WithoutMnemonics(menus_.Popups()[i].text);
        dc.SetTextColor(GetSysColor(hot ? COLOR_HIGHLIGHTTEXT : COLOR_MENUTEXT));
        const int top = (area.Height() - dc.GetTextExtent(text).cy) / 2;
        dc.TextOut(edges[i] + kPadding, top, text);
        UnderlineLetter(dc, menus_.Popups()[i].text, {edges[i] + kPadding, top});
    }
}

void MenuStrip::OnMouseMove(UINT, CPoint point) {
    ShowHot(At(point.x));
}

LRESULT MenuStrip::OnMouseLeave(WPARAM, LPARAM) {
    ShowHot(-1);
    return 0;
}

void MenuStrip::ShowHot(int which) {
    if (which == hot_) return;
    hot_ = which;
    Invalidate(false);
}

void MenuStrip::OnLButtonDown(UINT, CPoint point) {
    const int which = At(point.x);
    if (which >= 0) OpenAt(static_cast<std::size_t>(which));
}

void MenuStrip::OpenAt(std::size_t which) {
    ShowHot(static_cast<int>(which));
    UpdateWindow();
    POINT corner{Edges()[which], GetClientRect().Height()};
    ClientToScreen(&corner);
    onOpen(menus_.Popups()[which], corner);
    ShowHot(-1);
}

}  // namespace kvx::viewer
