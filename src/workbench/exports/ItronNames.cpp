#include "workbench/exports/ItronNames.h"

#include <limits>

#include "platform/base/Text.h"

namespace kvx::exports {

using service::ContextKind;

std::uint32_t ItronNumber(const service::Context& context) {
    const bool fits = context.key.id <= std::numeric_limits<std::uint32_t>::max();
    return fits ? static_cast<std::uint32_t>(context.key.id)
                : static_cast<std::uint32_t>(context.number);
}

std::string ItronContext(const service::Context& context) {
    const char* kind = "task";
    switch (context.key.kind) {
        case ContextKind::Interrupt:
            kind = "int handler";
            break;
        case ContextKind::Exception:
            kind = "exc handler";
            break;
        case ContextKind::ServiceRoutine:
            kind = "isr";
            break;
        case ContextKind::Cyclic:
            kind = "cyclic handler";
            break;
        case ContextKind::Alarm:
            kind = "alarm handler";
            break;
        case ContextKind::Task:
        case ContextKind::Unknown:
            break;
    }
    return FormatText("%s %u", kind, ItronNumber(context));
}

}  // namespace kvx::exports
