#include "workbench/formats/btf/Processes.h"

#include <algorithm>

#include "workbench/formats/text/LineCursor.h"

namespace kvx::formats::btf {
namespace {

constexpr std::uint16_t kMostCore = 4095;

// One task has one key, whatever core it is on.
std::string KeyOf(std::string_view target) {
    const auto prefixed = SplitPrefix(target);
    if (!prefixed) return std::string(target);
    return std::to_string(prefixed->id) + "/" + std::string(prefixed->name);
}

}  // namespace

std::optional<Prefixed> SplitPrefix(std::string_view text) {
    LineCursor cursor(text);
    if (!cursor.Accept("[")) return std::nullopt;
    const auto core = cursor.AcceptNumber<std::uint32_t>();
    if (!core || *core > kMostCore || !cursor.Accept("/")) return std::nullopt;
    const auto id = cursor.AcceptNumber<std::uint32_t>();
    if (!id || !cursor.Accept("]")) return std::nullopt;
    return Prefixed{*core, *id, cursor.Rest()};
}

Process& Processes::Get(Group& group, std::string_view target) {
    const auto [at, isNew] = group.processes.try_emplace(KeyOf(target));
    Process& process = at->second;
    if (!isNew) return process;
    const auto prefixed = SplitPrefix(target);
    process.name = prefixed ? prefixed->name : target;
    process.number = prefixed && prefixed->id > 0 ? prefixed->id : group.processes.size();
    while (!group.taken.insert(process.number).second) ++process.number;
    return process;
}

Process* Processes::Find(std::string_view name) {
    const auto key = KeyOf(name);
    for (Group* group : {&tasks_, &interrupts_})
        if (const auto at = group->processes.find(key); at != group->processes.end())
            return &at->second;
    return nullptr;
}

bool Processes::IsCore(std::string_view name, std::uint16_t core) const {
    const auto at = cores_.find(std::string(name));
    return at != cores_.end() && at->second == core;
}

std::uint16_t Processes::Core(std::string_view name) {
    const auto [at, isNew] = cores_.try_emplace(std::string(name));
    if (!isNew) return at->second;
    const auto digits = name.substr(TrimDigits(name).size());
    const auto number = LineCursor(digits).AcceptNumber<std::uint16_t>();
    auto core = number && *number <= kMostCore ? *number : std::uint16_t{0};
    while (!takenCores_.insert(core).second) ++core;
    return at->second = core;
}

}  // namespace kvx::formats::btf
