#include "framework/WinMgr.h"

#include <algorithm>
#include <cstdlib>

#include "platform/base/SystemInfo.h"
#include "platform/windows/DeferWindowPos.h"

namespace {

constexpr std::int32_t kUnlimited = 32767;

// The component of a size along a group's direction.
std::int32_t& Along(SIZE& size, bool row) {
    return row ? size.cy : size.cx;
}

SIZE Clamp(SIZE size, SIZE minimum, SIZE maximum) {
    return {std::max(std::min(size.cx, maximum.cx), minimum.cx),
            std::max(std::min(size.cy, maximum.cy), minimum.cy)};
}

// Adds a child's sizes to those of its group: along the group they add up, across they combine.
void Combine(SIZEINFO& info, SIZEINFO child, bool row) {
    Along(info.minimum, row) += Along(child.minimum, row);
    Along(info.maximum, row) =
        std::min(Along(info.maximum, row) + Along(child.maximum, row), kUnlimited);
    Along(info.desired, row) += Along(child.desired, row);
    Along(info.minimum, !row) = std::max(Along(info.minimum, !row), Along(child.minimum, !row));
    Along(info.maximum, !row) = std::min(Along(info.maximum, !row), Along(child.maximum, !row));
    Along(info.desired, !row) = std::max(Along(info.desired, !row), Along(child.desired, !row));
}

void AddMargins(SIZEINFO& info, const WINRECT& group) {
    int x = 0;
    int y = 0;
    group.GetMargins(x, y);
    info.minimum.cx += std::max(2 * x, 0);
    info.minimum.cy += std::max(2 * y, 0);
    info.desired.cx += std::abs(2 * x);
    info.desired.cy += std::abs(2 * y);
}

void FixedSize(SIZEINFO& info, std::int32_t param, bool row) {
    Along(info.desired, row) = std::abs(param);
    Along(info.maximum, row) = std::abs(param);
    Along(info.minimum, row) = std::max(param, 0);
}

void PercentSize(SIZEINFO& info, WINRECT& entry) {
    const WINRECT& parent = *entry.Parent();
    const bool row = parent.IsRowGroup();
    info.desired = parent.GetRect().Size();
    Along(info.desired, row) = Along(info.desired, row) * entry.GetParam() / 100;
}

}  // namespace

CWinMgr::CWinMgr(WINRECT* table) : table_(table) {
    WINRECT::InitMap(table, nullptr);
}

void CWinMgr::CalcLayout(CWnd* window) {
    CRect rect;
    window->GetClientRect(&rect);
    CalcLayout(rect, window);
}

void CWinMgr::CalcLayout(int width, int height, CWnd* window) {
    CalcLayout(CRect{0, 0, width, height}, window);
}

void CWinMgr::CalcLayout(const CRect& rect, CWnd* window) {
    table_->SetRect(rect);
    CalcGroup(table_, window);
}

WINRECT* CWinMgr::FindRect(UINT id) const {
    for (WINRECT* entry = table_; !entry->IsEnd(); ++entry) {
        if (entry->GetID() == id) return entry;
    }
    return nullptr;
}

CRect CWinMgr::GetRect(UINT id) const {
    return FindRect(id)->GetRect();
}

void CWinMgr::SetRect(UINT id, const CRect& rect) {
    FindRect(id)->SetRect(rect);
}

int CWinMgr::CountWindows() const {
    int count = 0;
    for (const WINRECT* entry = table_; !entry->IsEnd(); ++entry) count += entry->IsWindow();
    return count;
}

void CWinMgr::OnGetSizeInfo(SIZEINFO& info, WINRECT* entry, CWnd* window) {
    info.minimum = {0, 0};
    info.maximum = {kUnlimited, kUnlimited};
    info.desired = entry->GetRect().Size();
    if (entry->IsGroup()) {
        info.desired = {0, 0};
        if (entry->Type() != RCPERCENT) return AddGroupSizes(info, entry, window);
    }
    switch (entry->Type()) {
        case RCFIXED:
            FixedSize(info, entry->GetParam(), entry->Parent()->IsRowGroup());
            break;
        case RCPERCENT:
            PercentSize(info, *entry);
            break;
        case RCTOFIT:
            if (entry->HasToFitSize()) info.desired = entry->GetToFitSize();
            break;
        default:
            break;
    }
    AskWindow(info, entry, window);
    info.desired = Clamp(info.desired, info.minimum, info.maximum);
}

void CWinMgr::AddGroupSizes(SIZEINFO& info, WINRECT* group, CWnd* window) {
    for (WINRECT* child = group->Children(); child; child = child->Next()) {
        SIZEINFO childInfo;
        OnGetSizeInfo(childInfo, child, window);
        Combine(info, childInfo, group->IsRowGroup());
    }
    AddMargins(info, *group);
}

// Lets the entry's window speak: a hidden one wants nothing, others may answer the size query.
void CWinMgr::AskWindow(SIZEINFO& info, WINRECT* entry, CWnd* window) {
    CWnd* child = entry->IsWindow() && window ? window->GetDlgItem(entry->GetID()) : nullptr;
    if (!child) return;
    if (!child->IsWindowVisible() && window->IsWindowVisible()) {
        info.desired = {0, 0};
        return;
    }
    info.available = entry->Parent()->GetRect().Size();
    SendGetSizeInfo(info, window, entry->GetID());
}

bool CWinMgr::SendGetSizeInfo(SIZEINFO& info, CWnd* window, UINT id) {
    WINMGRNOTIFY record;
    record.id = id;
    record.code = kWinMgrGetSizeInfo;
    record.sizeInfo = info;
    const auto argument = reinterpret_cast<LPARAM>(&record);
    LRESULT handled = window->SendMessage(kWinMgrMessage, id, argument);
    if (!handled) {
        CWnd* child = window->GetDlgItem(id);
        if (child) handled = child->SendMessage(kWinMgrMessage, id, argument);
    }
    if (handled) info = record.sizeInfo;
    return handled != 0;
}

void CWinMgr::CalcGroup(WINRECT* group, CWnd* window) {
    CRect rect = group->GetRect();
    int x = 0;
    int y = 0;
    if (group->GetMargins(x, y) && group->Type() != RCPERCENT) {
        rect.DeflateRect(std::min(std::abs(x), rect.Width() / 2),
                         std::min(std::abs(y), rect.Height() / 2));
    }
    const bool row = group->IsRowGroup();
    int remaining = row ? rect.Height() : rect.Width();
    for (WINRECT* child = group->Children(); child; child = child->Next()) {
        SIZEINFO info;
        OnGetSizeInfo(info, child, window);
        const int size = std::min<int>(Along(info.minimum, row), remaining);
        child->SetHeightOrWidth(size, row);
        remaining -= size;
    }
    WINRECT* rest = nullptr;
    for (WINRECT* child = group->Children(); child; child = child->Next()) {
        if (child->Type() == RCREST) {
            rest = child;
        } else {
            AdjustSize(child, row, remaining, window);
        }
    }
    if (rest) AdjustSize(rest, row, remaining, window);
    PositionRects(group, rect, row);
    for (WINRECT* child = group->Children(); child; child = child->Next()) {
        if (child->IsGroup()) CalcGroup(child, window);
    }
}

void CWinMgr::AdjustSize(WINRECT* entry, bool row, int& remaining, CWnd* window) {
    SIZEINFO info;
    OnGetSizeInfo(info, entry, window);
    const int current = entry->GetHeightOrWidth(row);
    const int target = entry->Type() == RCREST ? remaining + current : Along(info.desired, row);
    const int grow = std::min(std::max(target - current, 0), remaining);
    entry->SetHeightOrWidth(current + grow, row);
    remaining -= grow;
}

void CWinMgr::PositionRects(WINRECT* group, const RECT& rect, bool row) {
    if (!group->IsGroup()) return;
    int at = row ? rect.top : rect.left;
    for (WINRECT* child = group->Children(); child; child = child->Next()) {
        const int size = child->GetHeightOrWidth(row);
        child->SetRect(row ? CRect{rect.left, at, rect.right, at + size}
                           : CRect{at, rect.top, at + size, rect.bottom});
        at += size;
    }
}

void CWinMgr::SetWindowPositions(CWnd* parent) {
    const int count = table_ && parent ? CountWindows() : 0;
    if (count == 0) return;
    HDWP batch = BeginDeferWindowPos(count);
    for (WINRECT* entry = table_; !entry->IsEnd(); ++entry) {
        if (!entry->IsWindow()) {
            parent->InvalidateRect(&entry->GetRect(), true);
        } else if (CWnd* child = parent->GetDlgItem(entry->GetID())) {
            const RECT& to = entry->GetRect();
            batch = DeferWindowPos(batch, child->GetSafeHwnd(), to.left, to.top, to.Width(),
                                   to.Height(), SWP_NOZORDER);
            child->Invalidate(true);
        }
    }
    EndDeferWindowPos(batch);
}

void CWinMgr::GetWindowPositions(CWnd* parent) {
    for (WINRECT* entry = table_; !entry->IsEnd(); ++entry) {
        CWnd* child = entry->IsWindow() ? parent->GetDlgItem(entry->GetID()) : nullptr;
        if (!child) continue;
        CRect rect;
        child->GetWindowRect(&rect);
        parent->ScreenToClient(&rect);
        entry->SetRect(rect);
    }
}

void CWinMgr::InitToFitSizeFromCurrent(CWnd* parent) {
    GetWindowPositions(parent);
    for (WINRECT* entry = table_; !entry->IsEnd(); ++entry) {
        if (!entry->IsGroup() && entry->Type() == RCTOFIT) {
            entry->SetToFitSize(entry->GetRect().Size());
        }
    }
}

void CWinMgr::GetMinMaxInfo(CWnd* window, SIZEINFO& info) {
    OnGetSizeInfo(info, table_, window);
    if (!window || !window->IsWindowVisible()) return;
    const DWORD style = window->GetStyle();
    SIZE& minimum = info.minimum;
    if (!(style & WS_CHILD)) {
        if ((style & WS_CAPTION) == WS_CAPTION) minimum.cy += GetSystemMetrics(SM_CYCAPTION);
        if (window->GetMenu()) minimum.cy += GetSystemMetrics(SM_CYMENU);
    }
    if (style & WS_THICKFRAME) {
        minimum.cx += 2 * GetSystemMetrics(SM_CXFRAME);
        minimum.cy += 2 * GetSystemMetrics(SM_CYFRAME);
    } else if (style & WS_BORDER) {
        minimum.cx += 2 * GetSystemMetrics(SM_CXBORDER);
        minimum.cy += 2 * GetSystemMetrics(SM_CYBORDER);
    }
    if (window->GetExStyle() & WS_EX_CLIENTEDGE) {
        minimum.cx += 2 * GetSystemMetrics(SM_CXEDGE);
        minimum.cy += 2 * GetSystemMetrics(SM_CYEDGE);
    }
}

void CWinMgr::GetMinMaxInfo(CWnd* window, MINMAXINFO* info) {
    SIZEINFO sizes;
    GetMinMaxInfo(window, sizes);
    info->ptMinTrackSize = {sizes.minimum.cx, sizes.minimum.cy};
    info->ptMaxTrackSize = {sizes.maximum.cx, sizes.maximum.cy};
}

void CWinMgr::MoveRect(WINRECT* entry, CPoint delta, CWnd* window) {
    WINRECT* prev = entry->Prev();
    WINRECT* next = entry->Next();
    if (entry->Parent()->IsRowGroup()) {
        prev->GetRect().bottom += delta.y;
        next->GetRect().top += delta.y;
        entry->GetRect().OffsetRect({0, delta.y});
    } else {
        prev->GetRect().right += delta.x;
        next->GetRect().left += delta.x;
        entry->GetRect().OffsetRect({delta.x, 0});
    }
    if (prev->IsGroup()) CalcGroup(prev, window);
    if (next->IsGroup()) CalcGroup(next, window);
}

void CWinMgr::MoveRect(UINT id, CPoint delta, CWnd* window) {
    MoveRect(FindRect(id), delta, window);
}
