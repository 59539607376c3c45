#include "platform/win32/OwnWindow.h"

#include <unordered_map>
#include <utility>

#include "platform/win32/Convert.h"
#include "platform/win32/Geometry.h"

namespace kvx::win32 {

namespace {

constexpr wchar_t kInternal[] = L"KvxInternal";

std::unordered_map<win::HWND, std::shared_ptr<OwnWindow>>& OwnWindows() {
    static std::unordered_map<win::HWND, std::shared_ptr<OwnWindow>> windows;
    return windows;
}

UINT PostedMessage() {
    static const UINT message = win::RegisterWindowMessageW(L"KvxPostedMessage");
    return message;
}

}  // namespace

OwnWindow::OwnWindow(const WindowRequest& request, IWindowSink* sink)
    : sink_(sink),
      kind_(request.kind),
      id_(request.id),
      isChild_((request.style & WS_CHILD) != 0),
      takesMouse_(request.takesMouse),
      owner_(isChild_ ? nullptr : request.parent),
      frame_(request.frame),
      place_(request.rect) {}

std::shared_ptr<OwnWindow> OwnWindow::Of(win::HWND window) {
    const auto found = OwnWindows().find(window);
    return found == OwnWindows().end() ? nullptr : found->second;
}

std::vector<std::shared_ptr<OwnWindow>> OwnWindow::All() {
    std::vector<std::shared_ptr<OwnWindow>> all;
    for (const auto& [handle, window] : OwnWindows()) all.push_back(window);
    return all;
}

win::LRESULT CALLBACK OwnWindow::Procedure(win::HWND window, UINT message, win::WPARAM wParam,
                                           win::LPARAM lParam) {
    const std::shared_ptr<OwnWindow> own = Of(window);
    if (!own) return win::DefWindowProcW(window, message, wParam, lParam);
    if (message == PostedMessage()) {
        own->TakePosted();
        return 0;
    }
    if (message == WM_DESTROY) own->Detach();
    const win::LRESULT result = own->OnSystemMessage(message, wParam, lParam);
    if (message == WM_NCDESTROY) OwnWindows().erase(window);
    return result;
}

void OwnWindow::Attach(win::HWND window, std::shared_ptr<OwnWindow> self) {
    handle_ = window;
    OwnWindows()[window] = std::move(self);
}

void OwnWindow::Detach() {
    if (IWindowSink* sink = std::exchange(sink_, nullptr)) sink->OnWindowGone();
}

LRESULT OwnWindow::Send(UINT message, WPARAM wParam, LPARAM lParam) {
    return sink_ ? sink_->OnMessage(message, wParam, lParam) : 0;
}

void OwnWindow::Post(UINT message, WPARAM wParam, LPARAM lParam) {
    posted_.push_back({message, wParam, lParam});
    win::PostMessageW(handle_, PostedMessage(), 0, 0);
}

void OwnWindow::TakePosted() {
    if (posted_.empty()) return;
    const Posted first = posted_.front();
    posted_.pop_front();
    Send(first.message, first.wParam, first.lParam);
}

void OwnWindow::SetFont(const LOGFONT& font) {
    FontHandle made = RealFont(font, Screens::RatioOf(handle_));
    win::SendMessageW(handle_, WM_SETFONT, reinterpret_cast<win::WPARAM>(made.get()), 1);
    font_ = std::move(made);
    NotePlace();  // a closed combo box is as high as its font asks
}

void OwnWindow::SetPlace(const RECT& place) {
    place_ = place;
    place_.right = std::max(place.right, place.left);
    place_.bottom = std::max(place.bottom, place.top);
    const win::HWND parent = win::GetAncestor(handle_, GA_PARENT);
    const PixelGrid grid = GridOf(parent);
    const RECT device = grid.ToDevice(place_);
    // A window of another size paints anew; old edges would be seen inside until then.
    const bool sameSize = DeviceBounds(handle_).Size() == device.Size();
    win::SetWindowPos(
        handle_, nullptr, device.left, device.top, device.Width(), device.Height(),
        static_cast<UINT>(SWP_NOZORDER | SWP_NOACTIVATE | (sameSize ? 0 : SWP_NOCOPYBITS)));
    if (grid.Ratio() != 1) PlaceChildren(handle_);
}

void OwnWindow::NotePlace() {
    if (!isChild_) return;
    const PixelGrid grid = GridOf(win::GetAncestor(handle_, GA_PARENT));
    const RECT device = DeviceBounds(handle_);
    if (device != grid.ToDevice(place_)) place_ = Divided(device, grid.Ratio());
}

void SetInternal(win::HWND window) {
    win::SetPropW(window, kInternal, window);
}

bool IsInternal(win::HWND window) {
    return win::GetPropW(window, kInternal) != nullptr;
}

}  // namespace kvx::win32
