// Layout and scrolling: by rows and by characters.

#include <algorithm>

#include "analyze/AnalyzeView.h"
#include "host/DebuggerFunctions.h"
#include "platform/base/Keys.h"
#include "trace/TraceData.h"

void COSAnalyzeView::LayOutColumns() {
    columns_.LayOut();
    SizeTo(clientWidth_, clientHeight_);
}

void COSAnalyzeView::OnSize(UINT, int cx, int cy) {
    if (!kvx::host::IsDebuggerLoaded() || !data_) return;
    Default();
    SizeTo(cx, cy);
}

void COSAnalyzeView::SizeTo(int cx, int cy) {
    clientWidth_ = cx;
    clientHeight_ = cy;
    if (rowHeight_ == 0) return;
    visibleRows_ = cy / rowHeight_ - 1;
    if (IsOpen()) Rows().FillLastPage(RowCount(), visibleRows_);
    UpdateHorizontalBar();
    UpdateVerticalBar();
}

// A bar that comes or goes changes the client area, so this may be called again from within.
void COSAnalyzeView::UpdateHorizontalBar() {
    const int total = Columns().TotalWidth();
    if (!IsOpen() || clientWidth_ >= total || charWidth_ == 0) {
        horizontal_ = horizontalMaximum_ = 0;
        return ShowScrollBar(SB_HORZ, false);
    }
    horizontalMaximum_ = (total - clientWidth_) / charWidth_ + 1;
    horizontal_ = std::min(horizontal_, horizontalMaximum_);
    SCROLLINFO info;
    info.fMask = SIF_RANGE | SIF_POS;
    info.nMax = horizontalMaximum_;
    info.nPos = horizontal_;
    SetScrollInfo(SB_HORZ, info);
    ShowScrollBar(SB_HORZ, true);
}

void COSAnalyzeView::UpdateVerticalBar() {
    SCROLLINFO info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    if (IsOpen() && visibleRows_ < RowCount()) {
        info.nMax = RowCount();
        info.nPage = static_cast<UINT>(clientHeight_ / rowHeight_);
        info.nPos = Rows().First();
    }
    SetScrollInfo(SB_VERT, info);
}

void COSAnalyzeView::OnVScroll(UINT code, int position) {
    if (!IsOpen()) return;
    const int rows = RowCount();
    const int page = rowHeight_ > 0 ? clientHeight_ / rowHeight_ : 0;
    int up = 0;
    switch (code) {
        case SB_LINEUP:
            up = 1;
            break;
        case SB_LINEDOWN:
            up = -1;
            break;
        case SB_PAGEUP:
            up = page;
            break;
        case SB_PAGEDOWN:
            up = -page;
            break;
        case SB_THUMBPOSITION:
        case SB_THUMBTRACK:
            up = Rows().First() - position;
            break;
        case SB_TOP:
            up = rows;
            break;
        case SB_BOTTOM:
            up = -rows;
            break;
        default:
            break;
    }
    if (rows > 0 && Rows().Scroll(up, rows, visibleRows_)) {
        UpdateVerticalBar();
        Invalidate(true);
    }
    Default();
}

void COSAnalyzeView::OnHScroll(UINT code, int position) {
    if (!IsOpen() || charWidth_ == 0) return;
    const int page = clientWidth_ / charWidth_;
    int right = 0;
    switch (code) {
        case SB_LINELEFT:
            right = -1;
            break;
        case SB_LINERIGHT:
            right = 1;
            break;
        case SB_PAGELEFT:
            right = -page;
            break;
        case SB_PAGERIGHT:
            right = page;
            break;
        case SB_THUMBPOSITION:
        case SB_THUMBTRACK:
            right = position - horizontal_;
            break;
        case SB_LEFT:
            right = -horizontal_;
            break;
        case SB_RIGHT:
            right = horizontalMaximum_;
            break;
        default:
            break;
    }
    horizontal_ = std::clamp(horizontal_ + right, 0, horizontalMaximum_);
    UpdateHorizontalBar();
    Invalidate(false);
    UpdateWindow();
    Default();
}

void COSAnalyzeView::OnKeyDown(UINT key, UINT, UINT) {
    struct ScrollKey {
        UINT key;
        UINT message;
        UINT code;
    };
    static constexpr ScrollKey kKeys[] = {
        {VK_PRIOR, WM_VSCROLL, SB_PAGEUP},  {VK_NEXT, WM_VSCROLL, SB_PAGEDOWN},
        {VK_END, WM_VSCROLL, SB_BOTTOM},    {VK_HOME, WM_VSCROLL, SB_TOP},
        {VK_UP, WM_VSCROLL, SB_LINEUP},     {VK_DOWN, WM_VSCROLL, SB_LINEDOWN},
        {VK_LEFT, WM_HSCROLL, SB_LINELEFT}, {VK_RIGHT, WM_HSCROLL, SB_LINERIGHT},
    };
    for (const ScrollKey& each : kKeys) {
        if (each.key == key) SendMessage(each.message, MakeScroll(each.code, 0));
    }
    if (key == VK_ESCAPE) gesture_.Cancel();
    Default();
}
