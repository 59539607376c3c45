#include "workbench/exports/BtfText.h"

#include <algorithm>

namespace kvx::exports {

std::string BtfColumn(std::string_view text) {
    std::string column(text);
    std::ranges::replace_if(
        column, [](char c) { return c == ',' || c == '\n' || c == '\r'; }, '_');
    if (column.starts_with('#') || column.starts_with('[')) column.insert(0, "_");
    return column.empty() ? "_" : column;
}

const std::string& BtfNames::Of(const service::Timeline& timeline, std::uint32_t number) {
    const service::Context& context = timeline.contexts.Get(number);
    std::string& name = names_[{context.key, context.name}];
    if (!name.empty()) return name;
    name = BtfColumn(timeline.contexts.DisplayName(number));
    if (!taken_.insert(name).second) {
        name += "_" + std::to_string(context.key.id);
        while (!taken_.insert(name).second) name += "_";
    }
    return name;
}

}  // namespace kvx::exports
