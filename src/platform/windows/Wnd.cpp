// Creation, destruction, identity and relations of windows, and the way of messages.
// Geometry, painting and scroll bars: WndLayout.cpp, WndPaint.cpp.

#include "platform/windows/Wnd.h"

#include <utility>

#include "platform/Backend.h"
#include "platform/base/MessageDispatch.h"
#include "platform/base/SystemInfo.h"
#include "platform/dialogs/MessageBox.h"
#include "platform/windows/Menu.h"
#include "platform/windows/WindowMap.h"
#include "platform/windows/WindowState.h"

using kvx::WindowState;

const CRuntimeClass CWnd::kClass = MakeDynamicClass<CWnd>("CWnd", &CObject::kClass);

namespace {

kvx::IWindows& Windows() {
    return kvx::Backend().Windows();
}

void NotifyDestroy(HWND window) {
    if (WindowState* state = WindowState::Of(kvx::FindWindow(window))) state->NotifyDestroy();
    if (!Windows().Exists(window)) return;
    for (const HWND child : Windows().Children(window)) NotifyDestroy(child);
}

}  // namespace

CWnd::CWnd() = default;

CWnd::~CWnd() {
    if (state_) DestroyWindow();
}

kvx::WindowKind CWnd::Kind(DWORD) const {
    return kvx::WindowKind::Plain;
}

bool CWnd::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
    return CreateEx(0, {}, style, rect, parent ? parent->GetSafeHwnd() : nullptr, id);
}

bool CWnd::Create(DWORD style, const RECT& rect, HWND parent, UINT id) {
    return CreateEx(0, {}, style, rect, parent, id);
}

bool CWnd::CreateEx(DWORD exStyle, const CString& text, DWORD style, const RECT& rect, HWND parent,
                    UINT id) {
    if (m_hWnd || !kvx::InstalledBackend()) return false;
    CREATESTRUCT create{text.c_str(), style, exStyle, rect, parent, id};
    PreCreateWindow(create);
    const kvx::WindowRequest request{
        Kind(create.style),       create.style,
        create.dwExStyle,         kvx::FrameOf(create.style, create.dwExStyle),
        create.lpszName,          create.rect,
        create.hwndParent,        create.id,
        TakesMouse(create.style), AreSysColorsLight()};
    state_ = std::make_unique<WindowState>(*this, create.style, create.dwExStyle);
    const HWND handle = Windows().Create(request, state_.get());
    if (!handle) {
        state_.reset();
        PostNcDestroy();
        return false;
    }
    m_hWnd = handle;
    kvx::AddWindow(handle, this);
    return FinishCreate(create);
}

// From WM_CREATE on a handler may destroy the window, and with it this object.
bool CWnd::FinishCreate(const CREATESTRUCT& create) {
    const HWND handle = m_hWnd;
    WindowState* const state = state_.get();
    const auto alive = [handle, state] {
        return WindowState::Of(kvx::FindWindow(handle)) == state;
    };
    if (create.style & WS_DISABLED) Windows().Enable(handle, false);
    if (create.dwExStyle & WS_EX_ACCEPTFILES) state->AcceptFiles(true);
    for (const int bar : {SB_HORZ, SB_VERT}) {
        state->Bar(bar).Show((create.style & (bar == SB_HORZ ? WS_HSCROLL : WS_VSCROLL)) != 0);
        if (Kind(create.style) == kvx::WindowKind::Plain) state->ShowBar(bar);
    }
    state->BeginLife();
    if (state->OnMessage(WM_CREATE, 0, reinterpret_cast<LPARAM>(&create)) == -1) {
        if (alive()) DestroyWindow();
        return false;
    }
    if (!alive()) return false;
    const SIZE size = Windows().ClientSize(handle);
    state->OnMessage(WM_SIZE, SIZE_RESTORED, MakePointParam(size.cx, size.cy));
    if (!alive()) return false;
    if (create.style & WS_VISIBLE) ShowWindow(SW_SHOWNOACTIVATE);
    return alive();
}

bool CWnd::DestroyWindow() {
    if (!m_hWnd) return false;
    const HWND handle = m_hWnd;
    if (!state_) return ::PostMessage(handle, WM_CLOSE, 0, 0);
    NotifyDestroy(handle);
    if (kvx::FindWindow(handle)) Windows().Destroy(handle);
    return true;
}

CWnd* CWnd::FromHandlePermanent(HWND window) {
    return kvx::FindWindow(window);
}

CWnd* CWnd::FromHandle(HWND window) {
    if (!window) return nullptr;
    CWnd* const own = kvx::FindWindow(window);
    return own ? own : kvx::WrapWindow(window);
}

bool CWnd::SubclassDlgItem(UINT id, CWnd* parent) {
    if (m_hWnd || !parent || !parent->m_hWnd) return false;
    CWnd* const before = kvx::FindWindow(Windows().Child(parent->m_hWnd, id));
    if (!before) return false;
    m_hWnd = std::exchange(before->m_hWnd, nullptr);
    state_ = std::move(before->state_);
    state_->SetOwner(*this);
    kvx::AddWindow(m_hWnd, this);
    return true;
}

CWnd* CWnd::GetParent() const {
    return m_hWnd ? FromHandle(Windows().Parent(m_hWnd)) : nullptr;
}

CWnd* CWnd::GetOwner() const {
    return owner_ ? owner_ : GetParent();
}

CWnd* CWnd::GetTopLevelParent() const {
    return m_hWnd ? FromHandle(Windows().TopLevel(m_hWnd)) : nullptr;
}

bool CWnd::IsChild(const CWnd* window) const {
    if (!m_hWnd || !window) return false;
    HWND above = window->m_hWnd;
    while (above && above != Windows().TopLevel(above)) {
        above = Windows().Parent(above);
        if (above == m_hWnd) return true;
    }
    return false;
}

CWnd* CWnd::GetDlgItem(UINT id) const {
    return m_hWnd ? FromHandle(Windows().Child(m_hWnd, id)) : nullptr;
}

UINT CWnd::GetDlgCtrlID() const {
    return m_hWnd ? Windows().Id(m_hWnd) : 0;
}

void CWnd::SetDlgItemText(UINT id, const CString& text) {
    if (CWnd* item = GetDlgItem(id)) item->SetWindowText(text);
}

CString CWnd::GetDlgItemText(UINT id) const {
    const CWnd* item = GetDlgItem(id);
    return item ? item->GetWindowText() : CString();
}

CMenu* CWnd::GetMenu() {
    static CMenu menu;
    if (!m_hWnd) return nullptr;
    menu.CreatePopupMenu();
    return kvx::Backend().Dialogs().ReadMenuBar(m_hWnd, menu) ? &menu : nullptr;
}

void CWnd::SetWindowText(const CString& text) {
    if (state_)
        SendMessage(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
    else if (m_hWnd)
        Windows().SetText(m_hWnd, text);
}

CString CWnd::GetWindowText() const {
    return m_hWnd ? Windows().Text(m_hWnd) : CString();
}

void CWnd::SetFont(CFont* font, bool redraw) {
    if (state_) SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(font), redraw);
}

CFont* CWnd::GetFont() const {
    return state_ ? state_->font : nullptr;
}

int CWnd::MessageBox(const CString& text, const CString& caption, UINT type) {
    return ::MessageBox(m_hWnd, text, caption, type);
}

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return ::SendMessage(m_hWnd, message, wParam, lParam);
}

bool CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return ::PostMessage(m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::SendDlgItemMessage(UINT id, UINT message, WPARAM wParam, LPARAM lParam) {
    CWnd* const item = GetDlgItem(id);
    return item ? item->SendMessage(message, wParam, lParam) : 0;
}

bool CWnd::OnUpdateCommand(UINT id, CCmdUI& ui) {
    if (OnCmdMsg(id, 0, &ui)) return true;
    ui.Enable(false);
    return false;
}

bool CWnd::OnCmdMsg(UINT id, UINT code, CCmdUI* ui) {
    const MessageMap& map = GetMessageMap();
    const MessageMapEntry* const command = map.FindCommand(id, code);
    if (!ui) {
        if (command) command->command(*this, id);
        return command != nullptr;
    }
    const MessageMapEntry* const update = map.FindUpdate(id);
    if (update) update->update(*this, *ui);
    return update || command;
}

const MessageMap& CWnd::GetMessageMap() const {
    static const MessageMap kMap{};
    return kMap;
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_COMMAND) {
        const auto param = static_cast<LPARAM>(wParam);
        if (OnCmdMsg(static_cast<UINT>(ParamX(param)), static_cast<UINT>(ParamY(param)), nullptr))
            return 1;
    } else if (const MessageMapEntry* entry = GetMessageMap().FindMessage(message)) {
        return entry->handler(*this, wParam, lParam);
    }
    return DefWindowProc(message, wParam, lParam);
}

LRESULT CWnd::Default() {
    const kvx::CurrentMessage* current = kvx::InnermostMessage();
    while (current && current->window != this) current = current->outer;
    return current ? DefWindowProc(current->message, current->wParam, current->lParam) : 0;
}

bool IsWindow(HWND window) {
    if (!window) return false;
    if (kvx::FindWindow(window)) return true;
    return kvx::InstalledBackend() && Windows().Exists(window);
}

LRESULT SendMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (WindowState* state = WindowState::Of(kvx::FindWindow(window)))
        return state->OnMessage(message, wParam, lParam);
    return IsWindow(window) ? Windows().Send(window, message, wParam, lParam) : 0;
}

bool PostMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!IsWindow(window)) return false;
    Windows().Post(window, message, wParam, lParam);
    return true;
}
