#include "traceview/model/LineSelection.h"

#include <algorithm>

namespace {

bool IsKey(const OSTrace_SelectContext& selected, const ContextKey& key) {
    return selected.type == key.type && selected.number == key.number;
}

}  // namespace

bool LineSelection::Contains(const ContextKey& key) const {
    return std::ranges::any_of(keys_, [&](const auto& each) { return IsKey(each, key); });
}

void LineSelection::Toggle(const ContextKey& key) {
    if (std::erase_if(keys_, [&](const auto& each) { return IsKey(each, key); }) == 0) {
        keys_.push_back({key.type, key.number});
    }
}

std::vector<std::uint32_t> LineSelection::Lines(const CContextMng& contexts) const {
    std::vector<std::uint32_t> lines;
    for (const OSTrace_SelectContext& selected : keys_) {
        for (int line = 0; line < contexts.GetCount(); ++line) {
            if (!IsKey(selected, contexts.GetKey(line))) continue;
            lines.push_back(static_cast<std::uint32_t>(line));
            break;
        }
    }
    return lines;
}
