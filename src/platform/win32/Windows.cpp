// Making, finding and ending windows. Look, place and input focus: WindowsLayout.cpp.

#include "platform/win32/Windows.h"

#include <algorithm>

#include "platform/win32/ControlFactory.h"
#include "platform/win32/Convert.h"
#include "platform/win32/FileDrop.h"
#include "platform/win32/MessagePump.h"
#include "platform/win32/PlainWindow.h"

namespace kvx::win32 {

namespace {

constexpr UINT kSystemMessages = 0x10000;  // numbers from here on are not the system's

bool IsBackdrop(win::HWND window) {
    const auto own = OwnWindow::Of(window);
    return own && own->Kind() == WindowKind::Backdrop;
}

// The system puts a new child below its siblings; backdrops stay below all others.
void Stack(win::HWND window) {
    win::HWND above = win::GetWindow(window, GW_HWNDLAST);
    while (above && (above == window || IsBackdrop(above)))
        above = win::GetWindow(above, GW_HWNDPREV);
    const bool backdrop = IsBackdrop(window);
    win::SetWindowPos(window, backdrop ? win::HWND(1) : above, 0, 0, 0, 0,
                      SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

// The window or one that it is in, or owns it.
bool BelongsTo(HWND window, win::HWND to) {
    const Win32Windows windows;
    for (; window; window = windows.Parent(window))
        if (ToSystem(window) == to) return true;
    return false;
}

}  // namespace

HWND Win32Windows::Create(const WindowRequest& request, IWindowSink* sink) {
    if ((request.style & WS_CHILD) && !request.parent) return nullptr;
    const bool plain = request.kind == WindowKind::Plain || request.kind == WindowKind::Backdrop;
    const win::HWND window = plain ? PlainWindow::Make(request, sink) : MakeControl(request, sink);
    if (window && (request.style & WS_CHILD)) Stack(window);
    return ToHandle(window);
}

void Win32Windows::Destroy(HWND window) {
    const win::HWND handle = ToSystem(window);
    std::vector<std::shared_ptr<OwnWindow>> inside;
    for (const auto& own : OwnWindow::All())
        if (BelongsTo(ToHandle(own->Handle()), handle)) inside.push_back(own);
    std::stable_partition(inside.begin(), inside.end(),
                          [&](const auto& own) { return own->Handle() == handle; });
    for (const auto& own : inside) own->Detach();
    if (!win::IsWindow(handle)) return;
    ActivateOwner(handle);
    win::DestroyWindow(handle);
}

bool Win32Windows::Exists(HWND window) const {
    if (!window) return false;
    if (const auto own = OwnWindow::Of(ToSystem(window))) return own->Sink() != nullptr;
    return win::IsWindow(ToSystem(window)) && !IsInternal(ToSystem(window));
}

LRESULT Win32Windows::Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const win::HWND handle = ToSystem(window);
    if (message == WM_DROPFILES) {
        const auto drop = reinterpret_cast<HDROP>(wParam);
        std::vector<CString> files;
        for (UINT i = 0; i < DragQueryFileCount(drop); ++i)
            files.push_back(::DragQueryFile(drop, i));
        DragFinish(drop);
        return DropFilesOn(handle, files) ? 1 : 0;
    }
    if (message >= kSystemMessages) return 0;
    if (message == WM_COMMAND) {
        const auto command = static_cast<LPARAM>(wParam);
        wParam = static_cast<WPARAM>((ParamY(command) << 16) | (ParamX(command) & 0xFFFF));
    }
    return win::SendMessageW(handle, message, static_cast<win::WPARAM>(wParam),
                             static_cast<win::LPARAM>(lParam));
}

void Win32Windows::Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (const auto own = OwnWindow::Of(ToSystem(window)))
        own->Post(message, wParam, lParam);
    else if (message < kSystemMessages)
        win::PostMessageW(ToSystem(window), message, static_cast<win::WPARAM>(wParam),
                          static_cast<win::LPARAM>(lParam));
}

HWND Win32Windows::Parent(HWND window) const {
    const win::HWND handle = ToSystem(window);
    const auto own = OwnWindow::Of(handle);
    if (own && !own->IsChild()) return own->Owner();
    const bool top = win::GetAncestor(handle, GA_ROOT) == handle;
    return ToHandle(top ? win::GetWindow(handle, GW_OWNER) : win::GetAncestor(handle, GA_PARENT));
}

// From the first to the last of the stack, which is the order in which they were made; then the
// windows that it owns.
std::vector<HWND> Win32Windows::Children(HWND window) const {
    std::vector<HWND> children;
    for (win::HWND child = win::GetWindow(ToSystem(window), GW_CHILD); child;
         child = win::GetWindow(child, GW_HWNDNEXT))
        if (!IsInternal(child)) children.push_back(ToHandle(child));
    for (const auto& own : OwnWindow::All())
        if (own->Owner() == window && own->Sink()) children.push_back(ToHandle(own->Handle()));
    return children;
}

HWND Win32Windows::Child(HWND window, UINT id) const {
    for (const HWND child : Children(window))
        if (Id(child) == id && TopLevel(child) != child) return child;
    return nullptr;
}

UINT Win32Windows::Id(HWND window) const {
    if (const auto own = OwnWindow::Of(ToSystem(window))) return own->Id();
    return static_cast<UINT>(win::GetDlgCtrlID(ToSystem(window)));
}

HWND Win32Windows::TopLevel(HWND window) const {
    return ToHandle(win::GetAncestor(ToSystem(window), GA_ROOT));
}

void Win32Windows::DispatchWaiting(HWND window) {
    DispatchWaitingFor(ToSystem(window));
}

int Win32Windows::Run() {
    return RunMessages();
}

void Win32Windows::Quit() {
    win::PostQuitMessage(0);
}

}  // namespace kvx::win32
