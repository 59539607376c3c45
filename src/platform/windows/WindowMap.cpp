#include "platform/windows/WindowMap.h"

#include <memory>
#include <unordered_map>

#include "platform/Backend.h"
#include "platform/windows/Wnd.h"

namespace kvx {

namespace {

std::unordered_map<HWND, CWnd*>& Windows() {
    static std::unordered_map<HWND, CWnd*> windows;
    return windows;
}

std::unordered_map<HWND, std::unique_ptr<CWnd>>& Wrappers() {
    static std::unordered_map<HWND, std::unique_ptr<CWnd>> wrappers;
    return wrappers;
}

}  // namespace

void AddWindow(HWND handle, CWnd* window) {
    Windows()[handle] = window;
    Wrappers().erase(handle);
}

void RemoveWindow(HWND handle) {
    Windows().erase(handle);
}

CWnd* FindWindow(HWND handle) {
    const auto found = Windows().find(handle);
    return found == Windows().end() ? nullptr : found->second;
}

CWnd* WrapWindow(HWND handle) {
    IBackend* backend = InstalledBackend();
    if (!backend || !backend->Windows().Exists(handle)) return nullptr;
    const auto found = Wrappers().find(handle);
    if (found != Wrappers().end()) return found->second.get();
    std::erase_if(Wrappers(),
                  [&](const auto& entry) { return !backend->Windows().Exists(entry.first); });
    auto& wrapper = Wrappers()[handle];
    wrapper = std::make_unique<CWnd>();
    wrapper->m_hWnd = handle;
    return wrapper.get();
}

void ForgetWrappers() {
    Wrappers().clear();
}

}  // namespace kvx
