#include "platform/controls/StatusBarCtrl.h"

#include <algorithm>
#include <utility>

#include "platform/base/SystemInfo.h"
#include "platform/drawing/ClientDC.h"

const CRuntimeClass CStatusBarCtrl::kClass =
    MakeDynamicClass<CStatusBarCtrl>("CStatusBarCtrl", &CWnd::kClass);

namespace {

constexpr int kGripSize = 12;

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
    kvx::StatusPart& entry = parts_[static_cast<std::size_t>(part)];
    if (entry.text == text && entry.type == type) return true;
    entry.text = text;
    entry.type = type;
    InvalidateRect(&area);
    return true;
}

CString CStatusBarCtrl::GetText(int part, int* type) const {
    if (part < 0 || part >= static_cast<int>(parts_.size())) return {};
    const kvx::StatusPart& entry = parts_[static_cast<std::size_t>(part)];
    if (type) *type = entry.type;
    return entry.text;
}

bool CStatusBarCtrl::GetBorders(int& horizontal, int& vertical, int& spacing) const {
    horizontal = kvx::kStatusHorizontalBorder;
    vertical = kvx::kStatusVerticalBorder;
    spacing = kvx::kStatusSpacing;
    return true;
}

bool CStatusBarCtrl::GetRect(int part, RECT* rect) const {
    if (part < 0 || part >= static_cast<int>(parts_.size())) return false;
    *rect =
        kvx::StatusPartArea(parts_, static_cast<std::size_t>(part), CRect(GetClientRect()).Size());
    return true;
}

bool CStatusBarCtrl::IsTextCut(int part) {
    RECT area;
    if (!GetRect(part, &area)) return false;
    CClientDC dc(this);
    if (CFont* font = GetFont()) dc.SelectObject(font);
    return dc.GetTextExtent(GetText(part)).cx >
           kvx::RoomForStatusText(area, CRect(GetClientRect()).Size());
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
    kvx::DrawStatusParts(dc, parts_, CRect(GetClientRect()).Size());
    if (GetStyle() & SBARS_SIZEGRIP) DrawGrip(dc);
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
