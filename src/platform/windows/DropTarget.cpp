#include "platform/windows/DropTarget.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include "platform/windows/View.h"
#include "platform/windows/WindowState.h"

// A count, then that many zero-terminated paths; one block of the C heap, so that any module can
// read and free it.
struct DropHandle {
    std::uint32_t count;
    static constexpr std::size_t kHeader = sizeof(std::uint32_t);
};

namespace {

const char* FirstPath(HDROP drop) {
    return reinterpret_cast<const char*>(drop) + DropHandle::kHeader;
}

}  // namespace

HDROP CreateDrop(const std::vector<CString>& files) {
    std::size_t size = DropHandle::kHeader;
    for (const CString& file : files) size += file.size() + 1;
    char* const block = static_cast<char*>(std::malloc(size));
    if (!block) return nullptr;
    char* at = block + DropHandle::kHeader;
    for (const CString& file : files) {
        std::memcpy(at, file.c_str(), file.size() + 1);
        at += file.size() + 1;
    }
    return new (block) DropHandle{static_cast<std::uint32_t>(files.size())};
}

UINT DragQueryFileCount(HDROP drop) {
    return drop ? drop->count : 0;
}

CString DragQueryFile(HDROP drop, UINT index) {
    if (index >= DragQueryFileCount(drop)) return {};
    const char* path = FirstPath(drop);
    while (index-- > 0) path += std::strlen(path) + 1;
    return path;
}

void DragFinish(HDROP drop) {
    std::free(drop);
}

bool COleDropTarget::Register(CView* view) {
    kvx::WindowState* const state = kvx::WindowState::Of(view);
    if (!state || view_) return false;
    state->SetDropView(view);
    view_ = view;
    return true;
}

void COleDropTarget::Revoke() {
    kvx::WindowState* const state = kvx::WindowState::Of(view_);
    if (state && state->DropView() == view_) state->SetDropView(nullptr);
    view_ = nullptr;
}
