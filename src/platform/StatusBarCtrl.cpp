#include "platform/StatusBarCtrl.h"

#include <algorithm>
#include <utility>

#include "platform/ClientDC.h"
#include "platform/SystemInfo.h"
#include "platform/Text.h"

const CRuntimeClass CStatusBarCtrl::kClass =
    MakeDynamicClass<CStatusBarCtrl>("CStatusBarCtrl", &CWnd::kClass);

namespace {

constexpr int kHorizontalBorder = 0;
constexpr int kVerticalBorder = 2;
constexpr int kSpacing = 2;
constexpr int kTextMargin = 2;  // from a part's left edge
constexpr int kGripSize = 12;

// The text, or as much of its beginning as fits before an ellipsis.
CString FittingText(CDC& dc, const CString& text, int room) {
    if (dc.GetTextExtent(text).cx <= room) return text;
    const CString ellipsis = "\u2026";
    std::size_t length = text.size();
    while (length > 0) {
        const CString shorter(kvx::Utf8Prefix(text, --length));
        length = shorter.size();
        if (dc.GetTextExtent(shorter + ellipsis).cx <= room) return shorter + ellipsis;
    }
    return ellipsis;
}

// One pixel on each side.
void DrawEdge(CDC& dc, const RECT& r, COLORREF topLeft, COLORREF bottomRight) {
    dc.FillSolidRect({r.left, r.top, r.right - 1, r.top + 1}, topLeft);
    dc.FillSolidRect({r.left, r.top, r.left + 1, r.bottom - 1}, topLeft);
    dc.FillSolidRect({r.left, r.bottom - 1, r.right, r.bottom}, bottomRight);
    dc.FillSolidRect({r.right - 1, r.top, r.right, r.bottom}, bottomRight);
}

}  // namespace

const MessageMap& CStatusBarCtrl::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        ON_WM_PAINT<&CStatusBarCtrl::OnPaint>(),
        ON_WM_ERASEBKGND<&CStatusBarCtrl::OnEraseBkgnd>(),
    };
    static const MessageMap kMap{&CWnd::GetMessageMap(), kEntries};
    return kMap;
}

bool CStatusBarCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return CreateEx(0, {}, style, rect, parent ? parent->GetSafeHwnd() : nullptr, id);
}

int CStatusBarCtrl::BackgroundColour() const {
    return COLOR_3DFACE;
}

LRESULT CStatusBarCtrl::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_SETTEXT) return CWnd::DefWindowProc(message, wParam, lParam);
    return SetText(reinterpret_cast<const char*>(lParam), 0) ? 1 : 0;
}

bool CStatusBarCtrl::SetParts(int count, const int* rightEdges) {
    if (count < 1) return false;
    const auto parts = static_cast<std::size_t>(count);
    bool changed = parts != parts_.size();
    parts_.resize(parts);
    for (std::size_t i = 0; i < parts; ++i)
        changed = std::exchange(parts_[i].right, rightEdges[i]) != rightEdges[i] || changed;
    if (changed) Invalidate();
    return true;
}

int CStatusBarCtrl::GetParts(int count, int* rightEdges) const {
    const int parts = static_cast<int>(parts_.size());
    for (int i = 0; rightEdges && i < std::min(count, parts); ++i)
        rightEdges[i] = parts_[static_cast<std::size_t>(i)].right;
    return parts;
}

bool CStatusBarCtrl::SetText(const CString& text, int part, int type) {
    RECT area;
    if (!GetRect(part, &area)) return false;
    Part& entry = parts_[static_cast<std::size_t>(part)];
    if (entry.text == text && entry.type == type) return true;
    entry.text = text;
    entry.type = type;
    InvalidateRect(&area);
    return true;
}

CString CStatusBarCtrl::GetText(int part, int* type) const {
    if (part < 0 || part >= static_cast<int>(parts_.size())) return {};
    const Part& entry = parts_[static_cast<std::size_t>(part)];
    if (type) *type = entry.type;
    return entry.text;
}

bool CStatusBarCtrl::GetBorders(int& horizontal, int& vertical, int& spacing) const {
    horizontal = kHorizontalBorder;
    vertical = kVerticalBorder;
    spacing = kSpacing;
    return true;
}

bool CStatusBarCtrl::GetRect(int part, RECT* rect) const {
    if (part < 0 || part >= static_cast<int>(parts_.size())) return false;
    const RECT client = GetClientRect();
    const auto index = static_cast<std::size_t>(part);
    const int right = parts_[index].right;
    rect->left = part == 0 ? kHorizontalBorder : parts_[index - 1].right + kSpacing;
    rect->right = right < 0 ? client.right : right;
    rect->top = kVerticalBorder;
    rect->bottom = client.bottom;
    return true;
}

// Pixels for a text in the part, as far as the bar reaches.
int CStatusBarCtrl::RoomFor(const RECT& rect) const {
    return std::min(rect.right, GetClientRect().right) - rect.left - kTextMargin;
}

bool CStatusBarCtrl::IsTextCut(int part) {
    RECT area;
    if (!GetRect(part, &area)) return false;
    CClientDC dc(this);
    if (CFont* font = GetFont()) dc.SelectObject(font);
    return dc.GetTextExtent(GetText(part)).cx > RoomFor(area);
}

int CStatusBarCtrl::PartAt(CPoint point) const {
    for (int i = 0; i < static_cast<int>(parts_.size()); ++i) {
        RECT area;
        if (GetRect(i, &area) && CRect(area).PtInRect(point)) return i;
    }
    return -1;
}

COLORREF CStatusBarCtrl::SetBkColor(COLORREF colour) {
    Invalidate();
    return std::exchange(background_, colour);
}

bool CStatusBarCtrl::OnEraseBkgnd(CDC* dc) {
    dc->FillSolidRect(GetClientRect(),
                      background_ == CLR_DEFAULT ? GetSysColor(COLOR_3DFACE) : background_);
    return true;
}

void CStatusBarCtrl::OnPaint() {
    CPaintDC dc(this);
    if (CFont* font = GetFont()) dc.SelectObject(font);
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(GetSysColor(COLOR_BTNTEXT));
    for (int i = 0; i < static_cast<int>(parts_.size()); ++i) {
        RECT area;
        if (GetRect(i, &area)) DrawPart(dc, parts_[static_cast<std::size_t>(i)], area);
    }
    if (GetStyle() & SBARS_SIZEGRIP) DrawGrip(dc);
}

void CStatusBarCtrl::DrawPart(CDC& dc, const Part& part, const RECT& rect) {
    const COLORREF light = GetSysColor(COLOR_BTNHIGHLIGHT);
    const COLORREF dark = GetSysColor(COLOR_BTNSHADOW);
    if (part.type == SBT_SUNKEN) DrawEdge(dc, rect, dark, light);
    if (part.type == SBT_POPOUT) DrawEdge(dc, rect, light, dark);
    if (part.text.empty()) return;
    const int y = rect.top + (rect.Height() - dc.GetTextExtent(part.text).cy) / 2;
    dc.ExtTextOut(rect.left + kTextMargin, y, ETO_CLIPPED, &rect,
                  FittingText(dc, part.text, RoomFor(rect)));
}

// Three slanted ridges in the lower right corner.
void CStatusBarCtrl::DrawGrip(CDC& dc) {
    const RECT client = GetClientRect();
    CPen light(PS_SOLID, 1, GetSysColor(COLOR_BTNHIGHLIGHT));
    CPen dark(PS_SOLID, 1, GetSysColor(COLOR_BTNSHADOW));
    CPen* const before = dc.SelectObject(&light);
    for (int offset = kGripSize; offset > 0; offset -= kGripSize / 3) {
        dc.SelectObject(&light);
        dc.MoveTo(client.right - offset, client.bottom - 1);
        dc.LineTo(client.right, client.bottom - 1 - offset);
        dc.SelectObject(&dark);
        dc.MoveTo(client.right - offset + 1, client.bottom - 1);
        dc.LineTo(client.right, client.bottom - offset);
    }
    dc.SelectObject(before);
}
