#include "framework/FrameStatusBar.h"

#include <utility>

#include "framework/FontCell.h"
#include "platform/base/SystemInfo.h"
#include "platform/drawing/ClientDC.h"

const MessageMap& CFrameStatusBar::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        ON_WM_CREATE<&CFrameStatusBar::OnCreate>(),
        ON_WM_MOUSEMOVE<&CFrameStatusBar::OnMouseMove>(),
        ON_MESSAGE<WM_MOUSELEAVE, &CFrameStatusBar::OnMouseGone>(),
        ON_MESSAGE<WM_CANCELMODE, &CFrameStatusBar::OnMouseGone>(),
        ON_WM_DESTROY<&CFrameStatusBar::OnDestroy>(),
    };
    static const MessageMap kMap{&CStatusBarCtrl::GetMessageMap(), kEntries};
    return kMap;
}

bool CFrameStatusBar::Create(CWnd* parent, UINT id, bool sizeGrip) {
    const DWORD style = WS_CHILD | WS_VISIBLE | (sizeGrip ? SBARS_SIZEGRIP : 0);
    if (!CStatusBarCtrl::Create(style, RECT{}, parent, id)) return false;
    ModifyStyleEx(0, WS_EX_CLIENTEDGE);
    SetBkColor(CLR_DEFAULT);
    constexpr int kToRightEnd = -1;
    SetParts(1, &kToRightEnd);
    SetText("", 0, SBT_NOBORDERS);
    return true;
}

int CFrameStatusBar::OnCreate(const CREATESTRUCT* create) {
    if (CStatusBarCtrl::OnCreate(create) == -1) return -1;
    const FontCell cell = MeasureFontCell(*this, GetFont());
    charWidth_ = cell.width;
    lineHeight_ = cell.height;
    return 0;
}

// The bar has no size of its own before it is laid out first: its line and the borders of a pane
// decide then as they do later.
SIZE CFrameStatusBar::GetToFitSize() {
    return {0, kvx::StatusLineHeight(lineHeight_) + 2 * GetSystemMetrics(SM_CYEDGE)};
}

void CFrameStatusBar::SetPanes(const std::vector<CString>& texts) {
    ShowPanes(kvx::kStatusHorizontalBorder, texts);
}

void CFrameStatusBar::SetPane(const CString& text) {
    ShowPanes(kvx::kStatusVerticalBorder, {text});
}

// The first pane begins at x.
void CFrameStatusBar::ShowPanes(int x, const std::vector<CString>& texts) {
    CClientDC dc(this);
    CFont* const previous = dc.SelectObject(GetFont());
    const auto parts = kvx::StatusPartsOf(dc, x, texts);
    dc.SelectObject(previous);
    std::vector<int> edges;
    for (const kvx::StatusPart& part : parts) edges.push_back(part.right);
    SetParts(static_cast<int>(edges.size()), edges.data());
    for (std::size_t i = 0; i < texts.size(); ++i) SetText(texts[i], static_cast<int>(i));
}

void CFrameStatusBar::OnMouseMove(UINT, CPoint point) {
    Default();
    const int part = PartAt(point);
    if (part < 0 || !IsTextCut(part)) return HideTip();
    if (!tip_) {
        tip_ = std::make_unique<CTipWindow>();
        if (!tip_->CreateTip(*this)) return tip_.reset();
    }
    // What begins behind it has no room at all.
    std::vector<CString> lines;
    for (int cut = part; cut < GetParts(0, nullptr); ++cut) lines.push_back(GetText(cut));
    tip_->Show(*this, GetFont(), std::move(lines), GetSysColor(COLOR_INFOBK), point);
}

LRESULT CFrameStatusBar::OnMouseGone(WPARAM, LPARAM) {
    HideTip();
    return Default();
}

void CFrameStatusBar::OnDestroy() {
    HideTip();
    CStatusBarCtrl::OnDestroy();
}

void CFrameStatusBar::HideTip() {
    if (!tip_) return;
    tip_->DestroyWindow();
    tip_.reset();
}
