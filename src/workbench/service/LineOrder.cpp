#include "workbench/service/LineOrder.h"

#include <algorithm>
#include <utility>

#include "host/OSTraceService.h"

namespace kvx::service {
namespace {

std::pair<int, std::int32_t> Rank(const Context& context) {
    if (context.type == kContextHandler) return {0, context.number};
    if (context.type == kContextUnknown) return {3, 0};
    return {context.IsIdle() ? 2 : 1, context.number};
}

}  // namespace

void LineOrder::Update(const ContextTable& contexts) {
    if (contexts.Count() == Count()) return;
    for (auto context = Count(); context < contexts.Count(); ++context) {
        auto at = contexts_.end();
        const auto rank = Rank(contexts.Get(context));
        if (moved_)
            at = std::ranges::find_if(
                contexts_, [&](std::uint32_t other) { return Rank(contexts.Get(other)) > rank; });
        contexts_.insert(at, context);
        shown_.push_back(true);
    }
    if (!moved_) Sort(contexts);
    Renumber();
}

void LineOrder::Reset(const ContextTable& contexts) {
    moved_ = false;
    Update(contexts);
    Sort(contexts);
    Renumber();
}

void LineOrder::Sort(const ContextTable& contexts) {
    std::ranges::sort(contexts_, {}, [&](std::uint32_t c) { return Rank(contexts.Get(c)); });
}

bool LineOrder::Move(std::int32_t from, std::int32_t to) {
    const auto count = static_cast<std::int32_t>(Count());
    if (from < 0 || from >= count || to < 0) return false;
    to = std::min(to, count - 1);
    moved_ = true;
    const auto first = contexts_.begin();
    if (from < to) std::rotate(first + from, first + from + 1, first + to + 1);
    if (to < from) std::rotate(first + to, first + from, first + from + 1);
    Renumber();
    return true;
}

bool LineOrder::SetShown(std::uint32_t line, bool shown) {
    if (line >= Count()) return false;
    shown_[contexts_[line]] = shown;
    return true;
}

void LineOrder::Renumber() {
    lines_.resize(contexts_.size());
    for (std::uint32_t line = 0; line < Count(); ++line) lines_[contexts_[line]] = line;
}

}  // namespace kvx::service
