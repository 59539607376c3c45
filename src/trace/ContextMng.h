#pragma once
// The component's copy of the trace service's contexts, in the service's line order.

#include <vector>

#include "host/OSTraceService.h"
#include "trace/TraceSource.h"

// How a context is recognised across reloads: handlers and tasks by type and number, the
// unidentified one by (3, 0).
struct ContextKey {
    int type = 0;
    int number = 0;
    friend bool operator==(const ContextKey&, const ContextKey&) = default;
};

// The four table cells of a line.
struct ContextTexts {
    CString vector;
    CString table;
    CString id;
    CString name;
};

// Getters take a line that the caller has compared with GetCount.
class CContextMng {
  public:
    // Borrows the source.
    explicit CContextMng(kvx::ITraceSource& source) : source_(source) {}
    CContextMng(const CContextMng&) = delete;
    CContextMng& operator=(const CContextMng&) = delete;
    ~CContextMng() { Clear(); }

    // Reads the whole table anew; 1 on success. Without a service the table stays as it is; a line
    // that cannot be read ends the table before it.
    int Load();
    void Clear();

    int GetCount() const { return static_cast<int>(contexts_.size()); }
    int GetType(int line) const { return At(line).type; }
    int GetNumber(int line) const { return At(line).number; }
    std::uint32_t GetTableAddress(int line) const { return At(line).tableAddress; }
    void GetName(int line, CString& out) const;
    int IsHatched(int line) const { return At(line).hatched; }
    int IsSysCallProcess(int line) const { return At(line).sysCallProcess; }
    int IsShown(int line) const { return At(line).shown; }

    ContextKey GetKey(int line) const;
    // The name as it is shown: "Idle" for the task numbered 0, "Unknown" for the unidentified.
    CString GetShownName(int line) const;
    ContextTexts GetTexts(int line) const;

  private:
    const _tagSContextData& At(int line) const { return contexts_[static_cast<std::size_t>(line)]; }

    kvx::ITraceSource& source_;
    std::vector<_tagSContextData> contexts_;  // names are owned
};
