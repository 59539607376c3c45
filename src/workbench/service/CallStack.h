#pragma once
// The system calls that one context has issued and that have not returned.

#include <cstdint>
#include <optional>
#include <vector>

#include "workbench/service/CallNames.h"

namespace kvx::service {

struct Timeline;

struct OpenCall {
    std::uint32_t call = 0;        // number of its name
    std::uint32_t record = 0;      // the one that issued it
    Timeline* timeline = nullptr;  // where it is shown as event; null: nowhere
    std::uint32_t event = 0;
    bool blocked = false;  // the file said that it has to wait
};

class CallStack {
  public:
    // Beyond a depth that no kernel reaches the oldest call is forgotten; true when that happened.
    bool Push(const OpenCall& call);
    OpenCall* Innermost() { return open_.empty() ? nullptr : &open_.back(); }
    // Takes out the call that a return under this name ends; an empty name ends the innermost.
    // Calls above it never returned, but for those that overlap; their number is added to skipped.
    // None: no such call.
    std::optional<OpenCall> Return(std::string_view name, const CallNames& names,
                                   std::uint64_t& skipped);
    // Forgets all; the number of calls that were open.
    std::uint64_t Clear();
    bool WasUsed() const { return used_; }

  private:
    std::vector<OpenCall> open_;
    bool used_ = false;
};

}  // namespace kvx::service
