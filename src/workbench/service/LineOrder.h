#pragma once
// In which line each context is shown, and whether it is shown.

#include <cstdint>
#include <vector>

#include "workbench/service/ContextTable.h"

namespace kvx::service {

// By default handlers come first, by number, then tasks by number, then the idle state, and the
// unidentified context last.
class LineOrder {
  public:
    // Takes in contexts that are new, each where the default order puts it.
    void Update(const ContextTable& contexts);
    void Reset(const ContextTable& contexts);
    // False: no such line. to is held within the lines.
    bool Move(std::int32_t from, std::int32_t to);
    bool SetShown(std::uint32_t line, bool shown);

    std::uint32_t Count() const { return static_cast<std::uint32_t>(contexts_.size()); }
    std::uint32_t ContextAt(std::uint32_t line) const { return contexts_[line]; }
    std::uint32_t LineOf(std::uint32_t context) const { return lines_[context]; }
    bool IsShown(std::uint32_t line) const { return shown_[contexts_[line]]; }
    const std::uint32_t* LinesOfContexts() const { return lines_.data(); }

  private:
    void Sort(const ContextTable& contexts);
    void Renumber();

    std::vector<std::uint32_t> contexts_;  // by line
    std::vector<std::uint32_t> lines_;     // by context
    std::vector<bool> shown_;              // by context
    bool moved_ = false;                   // the user has changed the order
};

}  // namespace kvx::service
