#pragma once
// The tasks and handlers of a trace: how its kernel numbers and names them.

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "workbench/kernels/EventKernel.h"
#include "workbench/service/Recording.h"

namespace kvx::formats {

class ContextNames {
  public:
    // kernel is borrowed.
    explicit ContextNames(const kernels::EventKernel& kernel) : kernel_(kernel) {}

    // The number of what an event calls by that id: the id itself, or, for a kernel that names by
    // address, its place in order of appearance among those of its kind, from 1.
    std::uint64_t NumberOf(service::ContextKind kind, std::uint64_t id);
    void Learn(const service::ContextKey& numbered, std::string_view told);
    // The task is what runs when nothing else does.
    void LearnIdle(std::uint64_t task);
    // By which the decoder knows it: task 0 is the idle state.
    service::ContextKey KeyOf(const service::ContextKey& numbered) const;
    std::vector<service::DeclaredContext> Declared() const;

  private:
    struct Named {
        std::uint64_t id = 0;  // of the event
        std::string told;
        bool isIdle = false;
    };
    struct Hash {
        std::size_t operator()(const service::ContextKey& key) const {
            return std::hash<std::uint64_t>()(key.id * 8 + static_cast<std::uint64_t>(key.kind));
        }
    };

    // Of those learnt of lately: most events speak of few contexts. The map's nodes do not move.
    struct Recent {
        service::ContextKey key;
        Named* named = nullptr;
    };
    // A copy has nodes of its own, and learnt of none yet.
    struct Latest : std::array<Recent, 256> {
        Latest() = default;
        Latest(const Latest&) : std::array<Recent, 256>{} {}
        Latest(Latest&&) = default;
    };

    const kernels::EventKernel& kernel_;
    Latest recent_;
    std::unordered_map<service::ContextKey, Named, Hash> contexts_;         // by kind and number
    std::unordered_map<service::ContextKey, std::uint64_t, Hash> numbers_;  // by kind and address
    std::map<service::ContextKind, std::uint64_t> counts_;
};

}  // namespace kvx::formats
