#include "workbench/kernels/CallTable.h"

#include <algorithm>

namespace kvx::kernels {

CallTable::CallTable(std::span<const CallGroup> groups,
                     std::span<const std::string_view> neverReturn) {
    for (const auto& group : groups) {
        service::CallInfo info;
        info.cls = host::Code(group.cls);
        if (group.wait) info.waitCode = host::Code(*group.wait);
        for (std::size_t at = 0; at < group.names.size();) {
            const auto end = std::min(group.names.find(' ', at), group.names.size());
            const auto name = group.names.substr(at, end - at);
            info.returns = std::ranges::find(neverReturn, name) == neverReturn.end();
            calls_[name] = info;
            at = end + 1;
        }
    }
}

const service::CallInfo* CallTable::Find(std::string_view name) const {
    const auto at = calls_.find(name);
    return at == calls_.end() ? nullptr : &at->second;
}

}  // namespace kvx::kernels
