// Making, frame, scroll bars, size and painting. Input: PlainWindowInput.cpp.

#include "platform/win32/PlainWindow.h"

#include <algorithm>
#include <utility>

#include "platform/os/windows/Wide.h"
#include "platform/win32/Convert.h"
#include "platform/win32/Geometry.h"
#include "platform/win32/PaintFrame.h"

namespace kvx::win32 {

namespace {

constexpr wchar_t kClass[] = L"KvxWindow";

int g_painting = 0;

bool HasCaption(DWORD style) {
    return (style & WS_CAPTION) == WS_CAPTION;
}

bool IsBubble(DWORD style) {
    return (style & (WS_CHILD | WS_POPUP)) == WS_POPUP && !HasCaption(style);
}

// Edges and scroll bars are made here. A window of its own that is no bubble has a caption.
DWORD SystemStyle(DWORD style) {
    if (!(style & (WS_CHILD | WS_POPUP))) style |= WS_CAPTION;
    style &= ~DWORD{WS_VISIBLE | WS_DISABLED | WS_HSCROLL | WS_VSCROLL};
    if (!HasCaption(style)) style &= ~DWORD{WS_BORDER | WS_DLGFRAME | WS_THICKFRAME};
    return style | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
}

DWORD SystemExStyle(const WindowRequest& request) {
    if (IsBubble(request.style)) return WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE | WS_EX_TOPMOST;
    DWORD style =
        HasCaption(SystemStyle(request.style)) ? request.exStyle & WS_EX_DLGMODALFRAME : 0;
    if (!(request.style & WS_TABSTOP)) style |= WS_EX_CONTROLPARENT;
    return style;
}

// The rectangle of a window of its own is that of its client area.
RECT FirstRect(const WindowRequest& request) {
    if (request.style & WS_CHILD) return GridOf(ToSystem(request.parent)).ToDevice(request.rect);
    const Monitor monitor = Screens::At(request.rect.TopLeft());
    const POINT corner = monitor.ToDevice(request.rect.TopLeft());
    const POINT end = monitor.ToDevice({request.rect.right, request.rect.bottom});
    win::RECT rect = {corner.x, corner.y, end.x, end.y};
    const auto dpi = static_cast<UINT>(monitor.Ratio() * 96);
    win::AdjustWindowRectExForDpi(&rect, SystemStyle(request.style), 0, SystemExStyle(request),
                                  dpi);
    return ToRect(rect);
}

win::HINSTANCE ThisModule() {
    win::HMODULE module = nullptr;
    win::GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        kClass, &module);
    return module;
}

}  // namespace

PlainWindow::PlainWindow(const WindowRequest& request, IWindowSink* sink)
    : OwnWindow(request, sink) {}

std::shared_ptr<PlainWindow> PlainWindow::Of(win::HWND window) {
    return std::dynamic_pointer_cast<PlainWindow>(OwnWindow::Of(window));
}

void PlainWindow::RegisterWindowClass() {
    win::WNDCLASSEXW description = {};
    description.cbSize = sizeof description;
    description.style = CS_DBLCLKS;
    description.lpfnWndProc = win::DefWindowProcW;
    description.hInstance = ThisModule();
    description.lpszClassName = kClass;
    win::RegisterClassExW(&description);
}

void PlainWindow::UnregisterWindowClass() {
    win::UnregisterClassW(kClass, ThisModule());
}

// The first messages of the system tell nothing that the request does not say.
win::HWND PlainWindow::Make(const WindowRequest& request, IWindowSink* sink) {
    const RECT rect = FirstRect(request);
    const auto self = std::make_shared<PlainWindow>(request, sink);
    const bool child = self->IsChild();
    win::HWND parent = ToSystem(request.parent);
    if (!child && parent) parent = win::GetAncestor(parent, GA_ROOT);
    const auto menu = reinterpret_cast<win::HMENU>(std::uintptr_t{child ? request.id : 0});
    const win::HWND window = win::CreateWindowExW(
        SystemExStyle(request), kClass, os::Wide(request.text).c_str(), SystemStyle(request.style),
        rect.left, rect.top, std::max(rect.Width(), 0), std::max(rect.Height(), 0), parent, menu,
        ThisModule(), nullptr);
    if (!window) return nullptr;
    self->Attach(window, self);
    win::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<win::LONG_PTR>(&Procedure));
    self->SetFrame(request.frame);
    self->lastClient_ = ClientSizeOf(window);
    self->living_ = true;
    return window;
}

void PlainWindow::Detach() {
    EndModal();
    AcceptDrops(false);
    OwnWindow::Detach();
}

bool PlainWindow::IsAnyPainting() {
    return g_painting > 0;
}

void PlainWindow::SetFrame(const WindowFrame& frame) {
    OwnWindow::SetFrame(frame);
    win::SetWindowPos(Handle(), nullptr, 0, 0, 0, 0,
                      SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    OnMoved();
}

// The frame lies between the window's edges and its client area, on the pixels of both.
win::LRESULT PlainWindow::OnCalcSize(win::WPARAM wParam, win::LPARAM lParam) {
    auto* const rect = reinterpret_cast<win::RECT*>(lParam);
    const win::LRESULT result = win::DefWindowProcW(Handle(), WM_NCCALCSIZE, wParam, lParam);
    const int edge = Frame().Width();
    if (edge == 0) return result;
    const double ratio = Screens::RatioOf(Handle());
    RECT outer = IsChild() ? Place() : Divided(ToRect(*rect), ratio);
    RECT inner = outer;
    inner.DeflateRect(edge, edge);
    const PixelGrid grid =
        IsChild() ? GridOf(win::GetAncestor(Handle(), GA_PARENT)) : PixelGrid(ratio, {0, 0});
    outer = grid.ToDevice(outer);
    inner = grid.ToDevice(inner);
    rect->left += inner.left - outer.left;
    rect->top += inner.top - outer.top;
    rect->right = std::max<win::LONG>(rect->right - (outer.right - inner.right), rect->left);
    rect->bottom = std::max<win::LONG>(rect->bottom - (outer.bottom - inner.bottom), rect->top);
    return result;
}

void PlainWindow::SyncSize() {
    if (!living_ || win::IsIconic(Handle())) return;
    const SIZE client = ClientSizeOf(Handle());
    if (client == lastClient_) return;
    lastClient_ = client;
    Send(WM_SIZE, 0, MakePointParam(client.cx, client.cy));
}

void PlainWindow::OnMoved() {
    NotePlace();
    LayOut();
    SyncSize();
}

SIZE PlainWindow::BarSize() const {
    return {barShown_[SB_VERT] ? GetSystemMetrics(SM_CXVSCROLL) : 0,
            barShown_[SB_HORZ] ? GetSystemMetrics(SM_CYHSCROLL) : 0};
}

// The scroll bars lie at the right and at the bottom of what is inside the frame.
void PlainWindow::LayOut() {
    const SIZE client = ClientSizeOf(Handle());
    const SIZE bars = BarSize();
    const PixelGrid grid = GridOf(Handle());
    const auto move = [&](int bar, const RECT& logical) {
        const RECT rect = grid.ToDevice(logical);
        win::SetWindowPos(bars_[bar], nullptr, rect.left, rect.top, rect.Width(), rect.Height(),
                          SWP_NOACTIVATE | SWP_NOZORDER);
    };
    if (bars.cx) move(SB_VERT, {client.cx, 0, client.cx + bars.cx, client.cy});
    if (bars.cy) move(SB_HORZ, {0, client.cy, client.cx, client.cy + bars.cy});
}

void PlainWindow::MakeScrollBar(int bar) {
    const DWORD style =
        WS_CHILD | WS_CLIPSIBLINGS | static_cast<DWORD>(bar == SB_VERT ? SBS_VERT : SBS_HORZ);
    bars_[bar] = win::CreateWindowExW(0, L"SCROLLBAR", L"", style, 0, 0, 0, 0, Handle(), nullptr,
                                      ThisModule(), nullptr);
    SetInternal(bars_[bar]);
}

void PlainWindow::SetScrollBar(int bar, const ScrollBarLook& look) {
    if (!bars_[bar] && !look.visible) return;
    if (!bars_[bar]) MakeScrollBar(bar);
    win::SCROLLINFO info = {};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMin = look.minimum;
    info.nPage = static_cast<UINT>(std::max(look.page, 1));
    info.nMax = look.maximum + static_cast<int>(info.nPage) - 1;
    info.nPos = look.position;
    win::SetScrollInfo(bars_[bar], SB_CTL, &info, 1);
    win::EnableWindow(bars_[bar], look.enabled);
    if (barShown_[bar] == look.visible) return;
    barShown_[bar] = look.visible;
    win::SetWindowPos(bars_[bar], nullptr, 0, 0, 0, 0,
                      static_cast<UINT>(SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE |
                                        (look.visible ? SWP_SHOWWINDOW : SWP_HIDEWINDOW)));
    win::InvalidateRect(Handle(), nullptr, 0);
    OnMoved();
}

int PlainWindow::ScrollTrackPosition(int bar) const {
    win::SCROLLINFO info = {};
    info.cbSize = sizeof info;
    info.fMask = SIF_TRACKPOS;
    if (bars_[bar]) win::GetScrollInfo(bars_[bar], SB_CTL, &info);
    return info.nTrackPos;
}

void PlainWindow::SendScroll(int bar, win::WPARAM wParam) {
    const UINT code = LOWORD(wParam);
    const bool thumb = code == SB_THUMBTRACK || code == SB_THUMBPOSITION;
    Send(bar == SB_VERT ? WM_VSCROLL : WM_HSCROLL,
         MakeScroll(code, thumb ? ScrollTrackPosition(bar) : 0));
}

// The picture first: what its making invalidates is shown by this very paint.
void PlainWindow::OnPaint() {
    const win::HWND window = Handle();
    ++g_painting;
    if (IWindowSink* sink = Sink()) shown_ = sink->Picture();
    if (win::IsWindow(window)) {
        win::PAINTSTRUCT paint = {};
        const win::HDC dc = win::BeginPaint(window, &paint);
        PaintClient(dc, window, shown_.get());
        win::EndPaint(window, &paint);
    }
    --g_painting;
}

void PlainWindow::OnFramePaint() const {
    if (Frame().Width() > 0) PaintFrame(Handle(), Frame());
}

void PlainWindow::OnMinMax(win::MINMAXINFO* info) {
    const double ratio = Screens::RatioOf(Handle());
    ::MINMAXINFO ours;
    Send(WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&ours));
    const auto least = [ratio](win::LONG& size, int asked) {
        if (asked > 0) size = static_cast<win::LONG>(PixelGrid::Round(asked * ratio));
    };
    least(info->ptMinTrackSize.x, ours.ptMinTrackSize.x);
    least(info->ptMinTrackSize.y, ours.ptMinTrackSize.y);
}

void PlainWindow::AcceptDrops(bool accept) {
    drops_.reset();
    if (accept) drops_ = std::make_unique<DropTarget>(Handle());
}

}  // namespace kvx::win32
