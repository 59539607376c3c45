#include "workbench/formats/events/ContextNames.h"

#include <algorithm>

namespace kvx::formats {

namespace {
constexpr std::string_view kNotKnown = "<...>";  // as Linux writes it
}

using service::ContextKey;
using service::ContextKind;

std::uint64_t ContextNames::NumberOf(ContextKind kind, std::uint64_t id) {
    if (!kernel_.NamesByAddress()) return id;
    const auto [at, isNew] = numbers_.try_emplace({kind, id});
    if (isNew) {
        at->second = ++counts_[kind];
        contexts_[{kind, at->second}].id = id;
    }
    return at->second;
}

void ContextNames::Learn(const ContextKey& numbered, std::string_view told) {
    Recent& recent = recent_[Hash()(numbered) % recent_.size()];
    if (!recent.named || recent.key != numbered) recent = {numbered, &contexts_[numbered]};
    Named& named = *recent.named;
    if (!kernel_.NamesByAddress()) named.id = numbered.id;
    if (!told.empty() && named.told != told && told != kNotKnown) named.told = told;
}

void ContextNames::LearnIdle(std::uint64_t task) {
    contexts_[{ContextKind::Task, task}].isIdle = true;
}

ContextKey ContextNames::KeyOf(const ContextKey& numbered) const {
    if (!kernel_.NamesByAddress() || numbered.kind != ContextKind::Task) return numbered;
    const auto at = contexts_.find(numbered);
    const bool idle = at == contexts_.end() || at->second.isIdle || kernel_.IsIdle(at->second.told);
    return idle ? ContextKey{ContextKind::Task, 0} : numbered;
}

std::vector<service::DeclaredContext> ContextNames::Declared() const {
    std::vector<service::DeclaredContext> declared;
    // Of a kernel with one processor all is known beforehand; with several, a task gets its line
    // when it comes to the one that is shown.
    const auto processor =
        kernel_.NamesByAddress() ? service::kAnyProcessor : service::kNoProcessor;
    for (const auto& [key, named] : contexts_) {
        if (key.kind == ContextKind::Task && KeyOf(key).id == 0) continue;
        auto name = kernel_.ContextName(key.kind, named.id, named.told);
        if (!name.empty()) declared.push_back({key, std::move(name), processor});
    }
    if (kernel_.NamesByAddress()) {
        const ContextKey interrupts{ContextKind::Interrupt, 0};
        declared.push_back({interrupts, kernel_.ContextName(interrupts.kind, 0, {}), processor});
    }
    std::ranges::sort(declared, {}, &service::DeclaredContext::key);
    return declared;
}

}  // namespace kvx::formats
