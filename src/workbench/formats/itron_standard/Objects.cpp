#include "workbench/formats/itron_standard/Objects.h"

#include <algorithm>

namespace kvx::formats::itron_standard {

using service::ContextKind;

std::uint32_t Object::ProcessorAt(std::uint32_t record) const {
    const auto after = std::ranges::upper_bound(moves, record, {},
                                                &std::pair<std::uint32_t, std::uint32_t>::first);
    return after == moves.begin() ? processor : std::prev(after)->second;
}

Objects::Objects(const ResourceFile& resources) {
    for (const auto& context : resources.contexts) {
        objects_.try_emplace(context.name, Object{context.key, context.processor, {}});
        auto& next = context.key.kind == ContextKind::Task ? nextTask_ : nextHandler_;
        next = std::max(next, context.key.id + 1);
    }
}

const Object* Objects::Find(std::string_view name) const {
    const auto at = objects_.find(name);
    return at == objects_.end() ? nullptr : &at->second;
}

Object& Objects::Meet(std::string_view name, bool isHandler) {
    if (const auto at = objects_.find(name); at != objects_.end()) return at->second;
    Object object;
    object.key = isHandler ? service::ContextKey{ContextKind::Interrupt, nextHandler_++}
                           : service::ContextKey{ContextKind::Task, nextTask_++};
    met_.emplace_back(name);
    return objects_.emplace(name, object).first->second;
}

std::vector<service::DeclaredContext> Objects::Declared(const ResourceFile& resources) const {
    auto contexts = resources.contexts;
    for (const auto& name : met_) {
        service::DeclaredContext context;
        context.key = Find(name)->key;
        context.name = name;
        contexts.push_back(std::move(context));
    }
    return contexts;
}

}  // namespace kvx::formats::itron_standard
