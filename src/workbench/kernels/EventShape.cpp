#include "workbench/kernels/EventShape.h"

#include <algorithm>

namespace kvx::kernels {

FieldRef EventShape::Find(std::initializer_list<std::string_view> names) const {
    for (const auto wanted : names) {
        const auto at = std::ranges::find(fields, wanted, &EventField::name);
        if (at != fields.end()) return {static_cast<std::int32_t>(at - fields.begin())};
    }
    return {};
}

std::vector<EventDetail> EventShape::Payload() const {
    std::vector<EventDetail> payload;
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (fields[i].isPayload)
            payload.push_back({{static_cast<std::int32_t>(i)}, fields[i].name, fields[i].form});
    return payload;
}

}  // namespace kvx::kernels
