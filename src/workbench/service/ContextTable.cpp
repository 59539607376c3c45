#include "workbench/service/ContextTable.h"

#include <limits>

#include "host/OSTraceService.h"
#include "platform/base/Text.h"

namespace kvx::service {
namespace {

struct KindInfo {
    const char* name;
    std::int32_t type;
    std::uint64_t firstNumber;  // of the first hundred, which fit a narrow column
    std::uint32_t tableAddress;
};

// In the order of ContextKind.
constexpr KindInfo kKinds[] = {
    {"task", kContextTask, 0, 0},
    {"int handler", kContextHandler, 0, 0},
    {"exc handler", kContextHandler, 600, 0xE00000},
    {"isr", kContextHandler, 700, 0x100000},
    {"cyclic handler", kContextHandler, 800, 0xC00000},
    {"alarm handler", kContextHandler, 900, 0xA00000},
    {"unknown", kContextUnknown, 0, 0},
};

constexpr std::uint64_t kNumbersOfAKind = 100;
constexpr std::uint64_t kFirstSpareNumber = 1000000000;

const KindInfo& InfoOf(ContextKind kind) {
    return kKinds[static_cast<std::size_t>(kind)];
}

}  // namespace

std::uint32_t ContextTable::Add(const ContextKey& key, std::uint32_t appears) {
    const auto [number, isNew] = numbers_.try_emplace(key, Count());
    if (!isNew) return number->second;
    const auto& kind = InfoOf(key.kind);
    Context context;
    context.key = key;
    if (const auto at = declared_.find(key); at != declared_.end()) context.name = at->second;
    if (context.name.empty())
        context.name = FormatText("%s %llu", kind.name, static_cast<unsigned long long>(key.id));
    context.type = kind.type;
    const bool fits = kind.firstNumber == 0 || key.id < kNumbersOfAKind;
    context.number = FreeNumber(kind.type, fits ? kind.firstNumber + key.id : kFirstSpareNumber);
    if (kind.tableAddress)
        context.tableAddress = kind.tableAddress | static_cast<std::uint32_t>(key.id & 0xFFFFF);
    context.appears = appears;
    contexts_.Append(std::move(context));
    return number->second;
}

std::uint32_t ContextTable::CountWith(std::uint32_t events) const {
    std::uint32_t first = 0;
    std::uint32_t behind = Count();
    while (first < behind) {
        const auto middle = first + (behind - first) / 2;
        if (contexts_[middle].appears <= events)
            first = middle + 1;
        else
            behind = middle;
    }
    return first;
}

std::string ContextTable::DisplayName(std::uint32_t context) const {
    const Context& c = contexts_[context];
    if (c.IsIdle()) return "Idle";
    return c.type == kContextUnknown ? "Unknown" : c.name;
}

std::int32_t ContextTable::FreeNumber(std::int32_t type, std::uint64_t wanted) {
    constexpr std::uint64_t kMost = std::numeric_limits<std::int32_t>::max();
    const auto base = static_cast<std::uint64_t>(type) << 32;
    auto number = wanted <= kMost ? wanted : kFirstSpareNumber;
    if (taken_.contains(base | number)) number = kFirstSpareNumber + contexts_.size();
    while (!taken_.insert(base | number).second) ++number;
    return static_cast<std::int32_t>(number);
}

}  // namespace kvx::service
