#pragma once
// The contexts of one processor: numbered in order of appearance, never renumbered. One thread adds
// them, others may read those below a count that they have seen.

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "workbench/service/Record.h"
#include "workbench/service/StableVector.h"

namespace kvx::service {

inline constexpr std::uint32_t kNoContext = 0xFFFFFFFFu;

struct Context {
    ContextKey key;
    std::string name;  // as in the file or the resource file, or made from kind and number
    std::int32_t type = 0;
    std::int32_t number = 0;  // unique within the type
    std::uint32_t tableAddress = 0;
    std::uint32_t appears = 0;  // with so many events; 0: from the start
    bool IsIdle() const { return key.kind == ContextKind::Task && key.id == 0; }
};

// Handlers other than interrupt handlers are numbered apart: exception handlers from 600, service
// routines from 700, cyclic handlers from 800, alarm handlers from 900, a hundred each; further
// ones get numbers that nobody else has. Their table address begins with a letter for the kind: E,
// 1, C, A, followed by the handler's own number.
class ContextTable {
  public:
    // The name that the context gets when it is added. The first name of a key holds.
    void Declare(const ContextKey& key, const std::string& name) { declared_.emplace(key, name); }
    // The number of the context, new when the key was not known.
    // appears must not go back.
    std::uint32_t Add(const ContextKey& key, std::uint32_t appears = 0);
    const Context& Get(std::uint32_t context) const { return contexts_[context]; }
    std::uint32_t Count() const { return contexts_.size(); }
    // How many have appeared with so many events.
    std::uint32_t CountWith(std::uint32_t events) const;
    // Name, "Idle" or "Unknown".
    std::string DisplayName(std::uint32_t context) const;

  private:
    struct Hash {
        std::size_t operator()(const ContextKey& key) const {
            return std::hash<std::uint64_t>()(key.id * 8 + static_cast<std::uint64_t>(key.kind));
        }
    };
    std::int32_t FreeNumber(std::int32_t type, std::uint64_t wanted);

    StableVector<Context> contexts_;
    std::unordered_map<ContextKey, std::uint32_t, Hash> numbers_;
    std::unordered_map<ContextKey, std::string, Hash> declared_;
    std::unordered_set<std::uint64_t> taken_;  // type and number
};

}  // namespace kvx::service
