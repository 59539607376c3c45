#include "workbench/service/CallNames.h"

namespace kvx::service {

std::uint32_t CallNames::Intern(std::string_view name) {
    if (const auto at = numbers_.find(name); at != numbers_.end()) return at->second;
    const auto number = Count();
    const auto& entry = entries_.Append(Entry{std::string(name), kernel_.FindCall(name)});
    numbers_.emplace(entry.name, number);
    return number;
}

}  // namespace kvx::service
