#include "viewer/ViewerWindow.h"

#include <algorithm>

#include "platform/base/Keys.h"
#include "platform/base/SystemInfo.h"
#include "platform/windows/DropTarget.h"

namespace kvx::viewer {
namespace {

constexpr UINT kBar = 90;
constexpr int kBarWidth = 5;
constexpr int kFirstShare = 62;  // of the window on the left, in per cent
constexpr int kStatusHeight = 22;
constexpr UINT kNobody = 0xFFFFFFFFu;
constexpr UINT kUpdateMessage = RegisterWindowMessage("KVX_VIEWER_UPDATE");
constexpr UINT kF10 = VK_F1 + 9;

}  // namespace

ViewerWindow::ViewerWindow()
    : docking_(*this),
      menuStrip_(docking_.Menus()),
      table_{{RCCOLGROUP | RCREST, 0, 0}, {RCPERCENT, kNobody, kFirstShare},
             {RCFIXED, kBar, kBarWidth},  {RCREST, kNobody, 0},
             {RCENDGROUP, kNobody, 0},    {0, kNobody, 0}},
      layout_(table_) {
    ConnectDocking();
}

ViewerWindow::~ViewerWindow() {
    DestroyWindow();
}

void ViewerWindow::ConnectDocking() {
    docking_.onPanesChanged = [this] { LayOut(); };
    docking_.onMenusChanged = [this] { menuStrip_.Invalidate(false); };
    docking_.onCommandDone = [this] { UpdateSoon(); };
    docking_.onStatusText = [this](const CString& text) { ShowStatus(text); };
    docking_.HostToolbar().onCommand = [this](const Command& command) { docking_.Run(command); };
    docking_.HostToolbar().onPrompt = docking_.onStatusText;
    menuStrip_.onOpen = [this](const MenuEntry& popup, POINT screen) {
        const auto keyText = [this](const Command& command) {
            const CString own = KeyTextOf(keys, command);
            return own.empty() ? docking_.KeyText(command) : own;
        };
        if (const auto command = AskPopup(popup, screen, keyText)) docking_.Run(*command);
    };
}

const MessageMap& ViewerWindow::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        ON_WM_SIZE<&ViewerWindow::OnSize>(),
        ON_WM_ERASEBKGND<&ViewerWindow::OnEraseBkgnd>(),
        ON_WM_CLOSE<&ViewerWindow::OnClose>(),
        ON_WM_DROPFILES<&ViewerWindow::OnDropFiles>(),
        ON_MESSAGE<kWinMgrMessage, &ViewerWindow::OnWinMgr>(),
        ON_MESSAGE<kUpdateMessage, &ViewerWindow::OnUpdate>(),
        ON_MESSAGE<WM_SETFOCUS, &ViewerWindow::OnSetFocus>(),
    };
    static const MessageMap kMap{&CWnd::GetMessageMap(), kEntries};
    return kMap;
}

bool ViewerWindow::CreateMain(const RECT& place) {
    constexpr DWORD kStyle =
        WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
    constexpr DWORD kChild = WS_CHILD | WS_VISIBLE;
    const bool made = Create(kStyle, place, nullptr, 0) &&
                      menuStrip_.Create(kChild, RECT{}, this, 0) &&
                      docking_.HostToolbar().Create(kChild, RECT{}, this, 0) &&
                      status_.Create(kChild, RECT{}, this, 0) &&
                      bar_.Create(WS_CHILD, this, layout_, kBar, RECT{});
    if (!made) return false;
    DragAcceptFiles();
    LayOut();
    return true;
}

void ViewerWindow::ShowStatus(const CString& text) {
    prompt_ = text;
    LayOutStatus();
}

void ViewerWindow::ShowRecordingStatus(const CString& text) {
    if (text == recording_) return;
    recording_ = text;
    LayOutStatus();
}

void ViewerWindow::LayOutStatus() {
    if (!status_.IsWindow()) return;
    CClientDC dc(&status_);
    constexpr int kPadding = 16;
    const int width = recording_.empty() ? 0 : dc.GetTextExtent(recording_).cx + kPadding;
    const int edges[] = {std::max(0, status_.GetClientRect().Width() - width), -1};
    status_.SetParts(2, edges);
    status_.SetText(prompt_, 0, SBT_NOBORDERS);
    status_.SetText(recording_, 1, recording_.empty() ? SBT_NOBORDERS : SBT_SUNKEN);
}

void ViewerWindow::UpdateSoon() {
    if (updating_ || !IsWindow()) return;
    updating_ = PostMessage(kUpdateMessage);
}

LRESULT ViewerWindow::OnUpdate(WPARAM, LPARAM) {
    updating_ = false;
    docking_.UpdateToolbars();
    docking_.Follow(GetFocus());
    onUpdate();
    return 0;
}

// What the user does may change the state of commands.
bool ViewerWindow::PreTranslateMessage(UINT message, WPARAM wParam, LPARAM) {
    UpdateSoon();
    if (message != WM_KEYDOWN) return false;
    const auto key = static_cast<UINT>(wParam);
    if (const auto command = CommandOf(keys, key)) {
        if (StateOf(*command).enabled) docking_.Run(*command);
        return true;
    }
    return OpenMenu(key);
}

// Alt and the underlined letter, or F10.
bool ViewerWindow::OpenMenu(UINT key) {
    if (GetKeyState(VK_CONTROL) < 0) return false;
    if (key == kF10) return menuStrip_.Open();
    const bool letter = key >= 'A' && key <= 'Z';
    return letter && GetKeyState(VK_MENU) < 0 && menuStrip_.Open(key);
}

void ViewerWindow::OnSize(UINT, int, int) {
    LayOut();
}

bool ViewerWindow::OnEraseBkgnd(CDC* dc) {
    dc->FillSolidRect(GetClientRect(), GetSysColor(COLOR_3DFACE));
    return true;
}

void ViewerWindow::OnClose() {
    onClose();
}

void ViewerWindow::OnDropFiles(HDROP drop) {
    const CString path = DragQueryFileCount(drop) > 0 ? DragQueryFile(drop, 0) : CString();
    DragFinish(drop);
    if (!path.empty()) onDrop(path);
}

LRESULT ViewerWindow::OnSetFocus(WPARAM, LPARAM) {
    for (const auto& pane : docking_.Panes()) {
        if (pane->IsHidden()) continue;
        pane->FocusControl();
        break;
    }
    UpdateSoon();
    return 0;
}

// The share that the user gave by the bar is kept when the window changes its size.
LRESULT ViewerWindow::OnWinMgr(WPARAM id, LPARAM address) {
    const auto* const notify = reinterpret_cast<const WINMGRNOTIFY*>(address);
    if (notify->code != kWinMgrSizeBarMoved) return 0;
    layout_.MoveRect(static_cast<UINT>(id), notify->moved, this);
    const int whole = std::max<int>(1, table_[0].GetRect().Width());
    table_[1].SetParam(std::clamp<int>(table_[1].GetRect().Width() * 100 / whole, 5, 95));
    layout_.SetWindowPositions(this);
    return 1;
}

void ViewerWindow::LayOut() {
    if (!status_.IsWindow()) return;
    const SIZE size = GetClientRect().Size();
    int top = MenuStrip::kHeight;
    menuStrip_.MoveWindow(0, 0, size.cx, top);
    docking_.HostToolbar().MoveWindow(0, top, size.cx, ToolStrip::kHeight);
    top += ToolStrip::kHeight;
    const int bottom = std::max(top, size.cy - kStatusHeight);
    status_.MoveWindow(0, bottom, size.cx, kStatusHeight);
    LayOutPanes({0, top, size.cx, bottom});
    LayOutStatus();
    Invalidate();
}

void ViewerWindow::LayOutPanes(const CRect& area) {
    std::vector<Pane*> shown;
    for (const auto& pane : docking_.Panes()) {
        if (!pane->IsHidden()) shown.push_back(pane.get());
    }
    bar_.ShowWindow(shown.size() == 2 ? SW_SHOWNOACTIVATE : SW_HIDE);
    if (shown.size() == 1) shown.front()->MoveWindow(area);
    if (shown.size() != 2) return;
    table_[1].SetID(shown[0]->GetDlgCtrlID());
    table_[3].SetID(shown[1]->GetDlgCtrlID());
    layout_.CalcLayout(area, this);
    layout_.SetWindowPositions(this);
}

}  // namespace kvx::viewer
