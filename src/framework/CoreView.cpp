#include "framework/CoreView.h"

#include <array>

#include "platform/base/Keys.h"
#include "platform/base/SystemInfo.h"
#include "platform/base/WinApp.h"
#include "platform/drawing/ClientDC.h"
#include "platform/windows/Menu.h"
#include "utils/Path.h"

namespace {

constexpr DWORD kDragDelay = 200;  // milliseconds
constexpr int kDragDistance = 3;   // pixels

CObject* NewCoreView() {
    return new CCoreView;
}

}  // namespace

const CRuntimeClass CCoreView::kClass = {"CCoreView", &CQView::kClass, &NewCoreView};

const MessageMap& CCoreView::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        ON_WM_CREATE<&CCoreView::OnCreate>(),
        ON_WM_MOUSEWHEEL<&CCoreView::OnMouseWheel>(),
        ON_WM_GETDLGCODE<&CCoreView::OnGetDlgCode>(),
        ON_WM_LBUTTONDOWN<&CCoreView::OnLButtonDown>(),
        ON_WM_LBUTTONDBLCLK<&CCoreView::OnLButtonDblClk>(),
    };
    static const MessageMap kMap{&CQView::GetMessageMap(), kEntries};
    return kMap;
}

bool CCoreView::IsDispContextMenu(CPoint) {
    return true;
}
void CCoreView::StartDragDrop(CPoint) {}
void CCoreView::PreStartDrag() {
    isDragSource_ = true;
}

void CCoreView::PostStartDrag() {
    isDragSource_ = false;
    droppedOnSelf_ = false;
}

int CCoreView::DropTarget(COleDataObject*, DWORD, CPoint) {
    return 0;
}
DROPEFFECT CCoreView::GetDropEffect(COleDataObject*, DWORD, CPoint) {
    return DROPEFFECT_NONE;
}
int CCoreView::AutoScrollDrop(COleDataObject*, DWORD, CPoint) {
    return 0;
}
CRect CCoreView::DrawDropRect(COleDataObject*, DWORD, CPoint) {
    return {};
}
void CCoreView::OnDraw(CDC*) {}

int CCoreView::OnCreate(const CREATESTRUCT* create) {
    if (CQView::OnCreate(create) == -1) return -1;
    dropTarget_.Register(this);
    return 0;
}

// One line a message, however far the wheel was turned.
bool CCoreView::OnMouseWheel(UINT flags, short delta, CPoint) {
    const bool sideways = (flags & MK_SHIFT) != 0;
    const UINT code = delta >= 0 ? SB_LINEUP : SB_LINEDOWN;
    SendMessage(sideways ? WM_HSCROLL : WM_VSCROLL, MakeScroll(code, 0));
    return true;
}

// A container asks twice for one key press; only the first question gives a key-down message.
UINT CCoreView::OnGetDlgCode() {
    SetFocus();
    const auto code = static_cast<UINT>(Default());
    constexpr std::array<UINT, 4> kArrows = {VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN};
    for (const UINT key : kArrows) {
        if (GetKeyState(key) >= 0) continue;
        arrowSent_ = !arrowSent_;
        if (arrowSent_) SendMessage(WM_KEYDOWN, key);
        return code;
    }
    arrowSent_ = false;
    return code;
}

void CCoreView::OnLButtonDown(UINT, CPoint) {
    SetFocus();
    Default();
}

void CCoreView::OnLButtonDblClk(UINT, CPoint) {
    SetFocus();
    Default();
}

DROPEFFECT CCoreView::OnDragEnter(COleDataObject* data, DWORD keyState, CPoint point) {
    return GetDropEffect(data, keyState, point);
}

DROPEFFECT CCoreView::OnDragOver(COleDataObject* data, DWORD keyState, CPoint point) {
    InvalidateRect(&dropFeedback_, false);
    UpdateWindow();
    if (AutoScrollDrop(data, keyState, point) == 1) return DROPEFFECT_SCROLL;
    const DROPEFFECT effect = GetDropEffect(data, keyState, point);
    if (effect != DROPEFFECT_NONE) dropFeedback_ = DrawDropRect(data, keyState, point);
    return effect;
}

void CCoreView::OnDragLeave() {
    InvalidateRect(&dropFeedback_, false);
}

bool CCoreView::OnDrop(COleDataObject* data, DROPEFFECT effect, CPoint point) {
    const bool dropped = DropTarget(data, effect, point) == 1;
    if (dropped && isDragSource_) droppedOnSelf_ = true;
    InvalidateRect(&dropFeedback_, true);
    return dropped;
}

void CCoreView::Set_DragStart(CPoint point) {
    dragStart_ = point;
    armed_ = true;
    armedAt_ = GetTickCount();
}

void CCoreView::Start_DragDrop(CPoint point) {
    const CRect still = {dragStart_.x - kDragDistance, dragStart_.y - kDragDistance,
                         dragStart_.x + kDragDistance, dragStart_.y + kDragDistance};
    if (!armed_ || GetTickCount() - armedAt_ <= kDragDelay || still.PtInRect(point)) return;
    PreStartDrag();
    StartDragDrop(dragStart_);
    PostStartDrag();
    Reset_DragStart();
}

void CCoreView::Show_DragStartRect(const CRect& rect) {
    toShow_ = rect;
    showPending_ = true;
    InvalidateRect(&toShow_, false);
    UpdateWindow();
}

void CCoreView::DrawDragStartRect() {
    if (!isDragSource_ || !showPending_ || toShow_ == shown_) return;
    CClientDC(this).InvertRect(toShow_);
    shown_ = toShow_;
    showPending_ = false;
}

void CCoreView::Hide_DragStartRect() {
    InvalidateRect(&toShow_, false);
    UpdateWindow();
    toShow_ = shown_ = {};
    showPending_ = false;
}

CString CCoreView::GetOptionMenuString(UINT command) {
    CWnd* main = AfxGetMainWnd();
    const CMenu* option = AfxFindSubMenu(main ? main->GetMenu() : nullptr, "&Option");
    CString text;
    if (option) option->GetMenuString(command, text, MF_BYCOMMAND);
    return text;
}

int CCoreView::SearchMenuString(const CMenu* menu, UINT command, CString& text) {
    for (int i = 0; i < menu->GetMenuItemCount(); ++i) {
        const CMenu* popup = menu->GetSubMenu(i);
        text.clear();
        const int length = popup ? SearchMenuString(popup, command, text)
                                 : menu->GetMenuString(command, text, MF_BYCOMMAND);
        if (length > 0) return length;
    }
    return 0;
}
