#include "workbench/timing/Contexts.h"

#include <charconv>
#include <map>

namespace kvx::timing {

using service::ContextKey;
using service::ContextKind;

std::string_view ContextInfo::TypeName() const {
    switch (key.kind) {
        case ContextKind::Task:
            return IsIdle() ? "idle" : "task";
        case ContextKind::Interrupt:
            return "interrupt";
        case ContextKind::Exception:
            return "exception";
        case ContextKind::ServiceRoutine:
            return "service_routine";
        case ContextKind::Cyclic:
            return "cyclic";
        case ContextKind::Alarm:
            return "alarm";
        case ContextKind::Unknown:
            break;
    }
    return "unknown";
}

Contexts::Contexts(const service::DecodedRecording& decoded) {
    std::map<ContextKey, ContextId> known;
    for (const auto& timeline : decoded.Timelines()) {
        auto& ids = ids_.emplace_back();
        for (std::uint32_t i = 0; i < timeline->contexts.Count(); ++i) {
            const auto& context = timeline->contexts.Get(i);
            const auto [at, isNew] = known.try_emplace(context.key, Count());
            ids.push_back(at->second);
            if (!isNew) continue;
            infos_.push_back({context.key, timeline->contexts.DisplayName(i), context.number});
            ++names_[infos_.back().name];
            if (infos_.back().IsTask()) tasks_.emplace(context.key.id, at->second);
        }
    }
}

ContextId Contexts::TaskOf(std::uint64_t id) const {
    const auto at = tasks_.find(id);
    return at == tasks_.end() ? kNobody : at->second;
}

std::string Contexts::NameOf(ContextId id) const {
    if (id == kNobody) return {};
    const auto& info = infos_[id];
    if (names_.at(info.name) < 2) return info.name;
    return info.name + " (" + std::to_string(info.number) + ")";
}

std::vector<ContextId> Contexts::Find(std::string_view nameOrNumber) const {
    std::vector<ContextId> found;
    for (ContextId id = 0; id < Count(); ++id) {
        const bool counts = infos_[id].IsTask() || infos_[id].IsHandler();
        if (counts && infos_[id].name == nameOrNumber) found.push_back(id);
    }
    if (!found.empty()) return found;
    std::int32_t number = 0;
    const char* const end = nameOrNumber.data() + nameOrNumber.size();
    const auto [stop, error] = std::from_chars(nameOrNumber.data(), end, number);
    if (error != std::errc() || stop != end) return found;
    for (ContextId id = 0; id < Count(); ++id)
        if (infos_[id].IsTask() && infos_[id].number == number) found.push_back(id);
    return found;
}

}  // namespace kvx::timing
