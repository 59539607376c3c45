#include "workbench/timing/TableCells.h"

#include <algorithm>

#include "platform/base/Text.h"
#include "workbench/timing/Times.h"

namespace kvx::timing {

bool TableInput::Has(ContextId context) const {
    return among.empty() || std::ranges::count(among, context) > 0;
}

std::string TableInput::Time(const std::optional<std::int64_t>& count) const {
    return count ? TimeText(*count, model.Recording().Clock()) : std::string();
}

std::string TableInput::Name(ContextId context) const {
    return model.AllContexts().NameOf(context);
}

std::int64_t NumberOf(const std::optional<std::int64_t>& value) {
    return value.value_or(kNoSortNumber);
}

std::string ShareText(double share) {
    return FormatText("%.2f %%", share * 100);
}

Value ValueOf(const std::optional<std::int64_t>& value) {
    return value ? Value(*value) : Value();
}

Value ValueOf(const std::optional<Statistics>& statistics) {
    if (!statistics) return {};
    return Members{{"min", statistics->min},       {"avg", statistics->avg},
                   {"median", statistics->median}, {"p90", statistics->p90},
                   {"p99", statistics->p99},       {"max", statistics->max}};
}

Value ValueOfText(std::string text) {
    return text.empty() ? Value() : Value(std::move(text));
}

}  // namespace kvx::timing
