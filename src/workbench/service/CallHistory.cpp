#include "workbench/service/CallHistory.h"

#include <algorithm>

namespace kvx::service {

std::vector<NameCount> CallHistory::Occurring() const {
    std::vector<NameCount> counts(names_.Count());
    for (std::uint32_t i = 0; i < names_.Count(); ++i) counts[i].name = names_.Get(i).name;
    for (const auto event : Calls()) ++counts[store_->Call(event)].count;
    std::erase_if(counts, [](const NameCount& entry) { return entry.count == 0; });
    std::ranges::sort(counts, {}, &NameCount::name);
    return counts;
}

void CallHistory::PickUpOnly(const PickUp& chosen) {
    Forget();
    chosen_ = chosen.names;
    active_ = true;
}

void CallHistory::EndPickUp() {
    active_ = false;
    Forget();
}

void CallHistory::ShowCallsOf(const EventStore& store) {
    Forget();
    store_ = &store;
    end_ = 0;
}

void CallHistory::ShowUntil(std::uint32_t event) {
    if (event < end_) Forget();
    end_ = event;
}

void CallHistory::Forget() {
    picked_.clear();
    isChosen_.clear();
    seen_ = 0;
}

void CallHistory::CatchUp() {
    if (!active_) return;
    for (auto i = isChosen_.size(); i < names_.Count(); ++i)
        isChosen_.push_back(
            std::ranges::find(chosen_, names_.Get(static_cast<std::uint32_t>(i)).name) !=
            chosen_.end());
    const auto calls = Calls();
    for (; seen_ < calls.size(); ++seen_) {
        const auto event = calls[seen_];
        if (isChosen_[store_->Call(event)]) picked_.push_back(event);
    }
}

std::uint32_t CallHistory::Count() {
    CatchUp();
    return static_cast<std::uint32_t>(List().size());
}

std::uint32_t CallHistory::EventAt(std::uint32_t history) const {
    return List()[history];
}

std::optional<std::uint32_t> CallHistory::IndexOf(std::uint32_t event) {
    CatchUp();
    const auto list = List();
    const auto at = std::ranges::lower_bound(list, event);
    if (at == list.end() || *at != event) return std::nullopt;
    return static_cast<std::uint32_t>(at - list.begin());
}

std::uint32_t CallHistory::NumberOf(std::uint32_t event) const {
    const auto calls = Calls();
    const auto at = std::ranges::lower_bound(calls, event);
    return static_cast<std::uint32_t>(at - calls.begin()) + 1;
}

}  // namespace kvx::service
