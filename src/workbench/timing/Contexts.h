#pragma once
// The contexts of all processors together: a task that occurs on several is one.

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "workbench/service/DecodedRecording.h"

namespace kvx::timing {

using ContextId = std::uint32_t;
inline constexpr ContextId kNobody = 0xFFFFFFFFu;

struct ContextInfo {
    service::ContextKey key;
    std::string name;  // as it is shown
    std::int32_t number = 0;
    bool IsIdle() const { return key.kind == service::ContextKind::Task && key.id == 0; }
    bool IsTask() const { return key.kind == service::ContextKind::Task && key.id != 0; }
    bool IsHandler() const {
        return key.kind != service::ContextKind::Task && key.kind != service::ContextKind::Unknown;
    }
    // "task", "interrupt", "cyclic" and so on; "idle" and "unknown".
    std::string_view TypeName() const;
};

class Contexts {
  public:
    explicit Contexts(const service::DecodedRecording& decoded);

    std::uint32_t Count() const { return static_cast<std::uint32_t>(infos_.size()); }
    const ContextInfo& Get(ContextId id) const { return infos_[id]; }
    // The context that a timeline knows under this number.
    ContextId Of(std::uint32_t timeline, std::uint32_t context) const {
        return ids_[timeline][context];
    }
    // kNobody: the recording has no such task.
    ContextId TaskOf(std::uint64_t id) const;
    // Empty for nobody. Of several with one name, with its number.
    std::string NameOf(ContextId id) const;
    // Tasks and handlers of that name, or, where there is none, tasks of that number.
    std::vector<ContextId> Find(std::string_view nameOrNumber) const;

  private:
    std::vector<ContextInfo> infos_;
    std::vector<std::vector<ContextId>> ids_;  // by timeline
    std::unordered_map<std::uint64_t, ContextId> tasks_;
    std::unordered_map<std::string, int> names_;  // how many have it
};

}  // namespace kvx::timing
