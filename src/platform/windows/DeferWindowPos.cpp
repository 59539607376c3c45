#include "platform/windows/DeferWindowPos.h"

#include <memory>
#include <vector>

#include "platform/windows/Wnd.h"

struct DeferredPositions {
    struct Move {
        HWND window;
        RECT rect;
        UINT flags;
    };
    std::vector<Move> moves;
};

HDWP BeginDeferWindowPos(int windows) {
    auto batch = std::make_unique<DeferredPositions>();
    batch->moves.reserve(static_cast<std::size_t>(windows > 0 ? windows : 0));
    return batch.release();
}

HDWP DeferWindowPos(HDWP batch, HWND window, int x, int y, int width, int height, UINT flags) {
    if (batch) batch->moves.push_back({window, {x, y, x + width, y + height}, flags});
    return batch;
}

bool EndDeferWindowPos(HDWP batch) {
    const std::unique_ptr<DeferredPositions> owned(batch);
    if (!batch) return false;
    for (const auto& [handle, rect, flags] : batch->moves) {
        CWnd* const window = CWnd::FromHandle(handle);
        if (window)
            window->SetWindowPos(nullptr, rect.left, rect.top, rect.Width(), rect.Height(), flags);
    }
    return true;
}
