#include "workbench/service/CallStack.h"

#include <algorithm>

namespace kvx::service {
namespace {
constexpr std::size_t kDeepest = 64;
}

bool CallStack::Push(const OpenCall& call) {
    used_ = true;
    const bool full = open_.size() == kDeepest;
    if (full) open_.erase(open_.begin());
    open_.push_back(call);
    return full;
}

std::optional<OpenCall> CallStack::Return(std::string_view name, const CallNames& names,
                                          std::uint64_t& skipped) {
    for (auto i = open_.size(); i-- > 0;) {
        if (!name.empty() && !names.IsReturnOf(open_[i].call, name)) continue;
        const OpenCall call = open_[i];
        const auto overlaps = [&](const OpenCall& open) {
            return names.Get(open.call).info.overlaps;
        };
        const auto above = open_.erase(open_.begin() + static_cast<std::ptrdiff_t>(i));
        if (overlaps(call)) return call;
        const auto kept = std::stable_partition(above, open_.end(), overlaps);
        skipped += static_cast<std::uint64_t>(open_.end() - kept);
        open_.erase(kept, open_.end());
        return call;
    }
    return std::nullopt;
}

std::uint64_t CallStack::Clear() {
    const auto count = open_.size();
    open_.clear();
    return count;
}

}  // namespace kvx::service
