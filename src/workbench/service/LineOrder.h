#pragma once
// In which line each context is shown, and whether it is shown.

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "workbench/service/ContextTable.h"

namespace kvx::service {

// One context's line: which context, and whether it is shown.
struct ArrangedLine {
    std::int32_t type = 0;
    std::int32_t number = 0;
    bool shown = true;
    friend bool operator==(const ArrangedLine&, const ArrangedLine&) = default;
};
// From the top; empty: the default order, everything shown.
using LineArrangement = std::vector<ArrangedLine>;

// By default handlers come first, by number, then tasks by number, then the idle state, and the
// unidentified context last.
class LineOrder {
  public:
    // Takes in contexts that are new, up to so many, each where the default order puts it.
    void Update(const ContextTable& contexts, std::uint32_t count);
    void Reset(const ContextTable& contexts);
    // False: no such line. to is held within the lines.
    bool Move(std::int32_t from, std::int32_t to);
    bool SetShown(std::uint32_t line, bool shown);
    // As the user has arranged the lines, and going back to that. Contexts of the arrangement that
    // are not there yet find their line when they come; others stand where the default order puts
    // them.
    LineArrangement Arrangement(const ContextTable& contexts) const;
    void Arrange(const ContextTable& contexts, LineArrangement arrangement);

    std::uint32_t Count() const { return static_cast<std::uint32_t>(contexts_.size()); }
    std::uint32_t ContextAt(std::uint32_t line) const { return contexts_[line]; }
    std::uint32_t LineOf(std::uint32_t context) const { return lines_[context]; }
    bool IsShown(std::uint32_t line) const { return shown_[contexts_[line]]; }
    const std::uint32_t* LinesOfContexts() const { return lines_.data(); }

  private:
    void Insert(const ContextTable& contexts, std::vector<std::uint32_t> added);
    void Sort(const ContextTable& contexts);
    static std::uint64_t WantedKey(std::int32_t type, std::int32_t number);
    const ArrangedLine* Wanted(const Context& context) const;
    void Renumber();

    std::vector<std::uint32_t> contexts_;  // by line
    std::vector<std::uint32_t> lines_;     // by context
    std::vector<bool> shown_;              // by context
    bool moved_ = false;                   // the user has changed the order
    LineArrangement wanted_;               // from outside; the default order where it is empty
    std::unordered_map<std::uint64_t, std::size_t> wantedAt_;  // by type and number
};

}  // namespace kvx::service
