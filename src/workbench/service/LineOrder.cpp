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

void LineOrder::Update(const ContextTable& contexts, std::uint32_t count) {
    if (count <= Count()) return;
    std::vector<std::uint32_t> added;
    for (auto context = Count(); context < count; ++context) {
        const ArrangedLine* const wanted = Wanted(contexts.Get(context));
        shown_.push_back(!wanted || wanted->shown);
        added.push_back(context);
    }
    Insert(contexts, std::move(added));
    if (!moved_ && !wanted_.empty()) Sort(contexts);
    Renumber();
}

// Each before the first line that the default order puts behind it.
void LineOrder::Insert(const ContextTable& contexts, std::vector<std::uint32_t> added) {
    const auto rank = [&](std::uint32_t context) { return Rank(contexts.Get(context)); };
    std::ranges::stable_sort(added, {}, rank);
    std::vector<std::uint32_t> merged;
    merged.reserve(contexts_.size() + added.size());
    auto next = added.begin();
    for (const auto context : contexts_) {
        while (next != added.end() && rank(context) > rank(*next)) merged.push_back(*next++);
        merged.push_back(context);
    }
    merged.insert(merged.end(), next, added.end());
    contexts_ = std::move(merged);
}

void LineOrder::Reset(const ContextTable& contexts) {
    moved_ = false;
    wanted_.clear();
    wantedAt_.clear();
    Sort(contexts);
    Renumber();
}

LineArrangement LineOrder::Arrangement(const ContextTable& contexts) const {
    if (!moved_ && wanted_.empty() && std::ranges::find(shown_, false) == shown_.end()) return {};
    LineArrangement arrangement;
    for (const std::uint32_t index : contexts_) {
        const Context& context = contexts.Get(index);
        arrangement.push_back({context.type, context.number, shown_[index]});
    }
    return arrangement;
}

void LineOrder::Arrange(const ContextTable& contexts, LineArrangement arrangement) {
    moved_ = false;
    wanted_ = std::move(arrangement);
    wantedAt_.clear();
    for (std::size_t i = 0; i < wanted_.size(); ++i)
        wantedAt_.emplace(WantedKey(wanted_[i].type, wanted_[i].number), i);
    for (std::uint32_t context = 0; context < Count(); ++context) {
        const ArrangedLine* const wanted = Wanted(contexts.Get(context));
        shown_[context] = !wanted || wanted->shown;
    }
    Sort(contexts);
    Renumber();
}

std::uint64_t LineOrder::WantedKey(std::int32_t type, std::int32_t number) {
    return static_cast<std::uint64_t>(type) << 32 | static_cast<std::uint32_t>(number);
}

const ArrangedLine* LineOrder::Wanted(const Context& context) const {
    const auto found = wantedAt_.find(WantedKey(context.type, context.number));
    return found == wantedAt_.end() ? nullptr : &wanted_[found->second];
}

void LineOrder::Sort(const ContextTable& contexts) {
    std::ranges::sort(contexts_, {}, [&](std::uint32_t c) { return Rank(contexts.Get(c)); });
    if (wanted_.empty()) return;
    const auto others =
        std::stable_partition(contexts_.begin(), contexts_.end(),
                              [&](std::uint32_t c) { return Wanted(contexts.Get(c)) != nullptr; });
    std::ranges::sort(contexts_.begin(), others, {},
                      [&](std::uint32_t c) { return Wanted(contexts.Get(c)); });
    std::vector<std::uint32_t> rest(others, contexts_.end());
    contexts_.erase(others, contexts_.end());
    Insert(contexts, std::move(rest));
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
