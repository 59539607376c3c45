#include "framework/WinRect.h"

namespace {

constexpr std::uint32_t LowHalf(std::int32_t value) {
    return static_cast<std::uint32_t>(value) & 0xFFFFu;
}
constexpr std::uint32_t HighHalf(std::int32_t value) {
    return static_cast<std::uint32_t>(value) >> 16;
}

}  // namespace

WINRECT* WINRECT::Parent() {
    WINRECT* first = this;
    while (first->prev_) first = first->prev_;
    return first - 1;
}

SIZE WINRECT::GetToFitSize() const {
    return {static_cast<std::int32_t>(LowHalf(param_)),
            static_cast<std::int32_t>(HighHalf(param_))};
}

void WINRECT::SetToFitSize(SIZE size) {
    param_ = static_cast<std::int32_t>(LowHalf(size.cx) | (LowHalf(size.cy) << 16));
}

bool WINRECT::GetMargins(int& x, int& y) const {
    x = IsGroup() ? static_cast<std::int16_t>(LowHalf(param_)) : 0;
    y = IsGroup() ? static_cast<std::int16_t>(HighHalf(param_)) : 0;
    return IsGroup();
}

WINRECT* WINRECT::InitMap(WINRECT* first, WINRECT* parent) {
    WINRECT* prev = nullptr;
    WINRECT* entry = first;
    for (; !entry->IsEndGroup(); ++entry) {
        entry->prev_ = prev;
        entry->next_ = nullptr;
        if (prev) prev->next_ = entry;
        prev = entry;
        if (entry->IsGroup()) entry = InitMap(entry + 1, entry);
    }
    return parent ? entry : nullptr;
}
