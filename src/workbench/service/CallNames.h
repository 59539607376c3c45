#pragma once
// The system calls that occur, numbered in order of first use, as their kernel knows them. One
// thread interns them, others may read those below a count that they have seen.

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "workbench/service/Kernel.h"
#include "workbench/service/StableVector.h"

namespace kvx::service {

class CallNames {
  public:
    struct Entry {
        std::string name;
        CallInfo info;
    };

    // kernel is borrowed.
    explicit CallNames(const Kernel& kernel) : kernel_(kernel) {}

    // The number of name, new when it was not known.
    std::uint32_t Intern(std::string_view name);
    const Entry& Get(std::uint32_t call) const { return entries_[call]; }
    std::uint32_t Count() const { return entries_.size(); }
    // Whether a return under that name can belong to the call.
    bool IsReturnOf(std::uint32_t call, std::string_view name) const {
        return kernel_.SameCall(entries_[call].name, name);
    }

  private:
    const Kernel& kernel_;
    StableVector<Entry> entries_;  // the map's keys point into it
    std::unordered_map<std::string_view, std::uint32_t> numbers_;
};

}  // namespace kvx::service
