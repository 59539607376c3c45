#include "workbench/timing/Rules.h"

#include <algorithm>

namespace kvx::timing {

const ContextRule* Rules::Of(ContextId context) const {
    const auto at = std::ranges::find_if(contexts, [&](const ContextRule& rule) {
        return std::ranges::count(rule.contexts, context) > 0;
    });
    return at == contexts.end() ? nullptr : &*at;
}

std::optional<std::int64_t> Rules::DeadlineOf(ContextId context) const {
    const auto* rule = Of(context);
    return rule ? rule->deadline : std::nullopt;
}

JobEndRules Rules::EndsFor(std::uint32_t count) const {
    JobEndRules ends(count);
    for (const ContextRule& rule : contexts)
        for (const auto context : rule.contexts) ends[context] = rule.ends;
    return ends;
}

}  // namespace kvx::timing
