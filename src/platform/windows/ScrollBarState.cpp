#include "platform/windows/ScrollBarState.h"

#include <algorithm>

namespace kvx {

int ScrollBarState::LastPosition() const {
    const int page = static_cast<int>(std::min<UINT>(info_.nPage, 0x7FFFFFFF));
    return std::max(info_.nMax - std::max(page - 1, 0), info_.nMin);
}

void ScrollBarState::Set(const SCROLLINFO& info) {
    if (info.fMask & SIF_RANGE) {
        info_.nMin = info.nMin;
        info_.nMax = std::max(info.nMin, info.nMax);
    }
    if (info.fMask & SIF_PAGE) info_.nPage = info.nPage;
    if (info.fMask & SIF_POS) info_.nPos = info.nPos;
    info_.nPos = std::clamp(info_.nPos, info_.nMin, LastPosition());
    if (!(info.fMask & (SIF_RANGE | SIF_PAGE))) return;
    const bool scrolls = LastPosition() > info_.nMin;
    if (info.fMask & SIF_DISABLENOSCROLL) {
        shown_ = true;
        enabled_ = scrolls;
    } else {
        shown_ = scrolls;
    }
}

ScrollBarLook ScrollBarState::Look() const {
    const int page = static_cast<int>(std::min<UINT>(info_.nPage, 0x7FFFFFFF));
    return {shown_, enabled_, info_.nMin, LastPosition(), page, info_.nPos};
}

}  // namespace kvx
