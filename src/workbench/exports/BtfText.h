#pragma once
// Names and lines of a BTF file.

#include <cstdint>
#include <map>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "workbench/service/Timeline.h"

namespace kvx::exports {

// Gives every task and handler one name, whatever processors know it, without what separates
// columns and lines.
class BtfNames {
  public:
    const std::string& Of(const service::Timeline& timeline, std::uint32_t context);

  private:
    // Processors may have handlers of one number and different names.
    std::map<std::pair<service::ContextKey, std::string>, std::string> names_;
    std::set<std::string> taken_;
};

// Text of a column.
std::string BtfColumn(std::string_view text);

}  // namespace kvx::exports
