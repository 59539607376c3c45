#pragma once
// The selected lines of the chart, by the keys of their contexts, so that a selection outlives a
// change of the line order.

#include <vector>

#include "trace/ContextMng.h"

struct OSTrace_SelectContext {
    int type = 0;    // handler, task, unknown
    int number = 0;  // vector number or task ID; 0 for the unknown context
};

class LineSelection {
  public:
    bool IsEmpty() const { return keys_.empty(); }
    bool Contains(const ContextKey& key) const;
    // Adds the key, or takes it away when it is there.
    void Toggle(const ContextKey& key);
    void Clear() { keys_.clear(); }
    // Lines of the selected contexts in order of selection; a key without a line gives none.
    std::vector<std::uint32_t> Lines(const CContextMng& contexts) const;

  private:
    std::vector<OSTrace_SelectContext> keys_;  // no duplicates
};
