#pragma once
// The system calls between start and end marker, as indexes into the service's history.

#include <cstdint>
#include <optional>
#include <vector>

#include "analyze/model/CallOrder.h"
#include "analyze/model/SortState.h"
#include "host/OSTraceService.h"
#include "trace/TraceSource.h"

class COSMarker;

// Entries are consecutive history indexes, so the list is their first index and their count. Rows
// are put into order when somebody reads them.
class COSSysCallList {
  public:
    static constexpr int kColumns = 5;
    enum Column { No, Name, Parameter, ReturnParameter, Time };

    // Borrows the source.
    explicit COSSysCallList(kvx::ITraceSource& source) : source_(source) {}
    virtual ~COSSysCallList() = default;
    // Borrowed, set once by its owner.
    void SetShared(COSMarker* marker) { marker_ = marker; }

    // Without a service the list stays as it is.
    void Build();
    void Sort(int column, int again);
    // Entries and rows; the sort states stay.
    void Clear();

    int EntryCount() const { return static_cast<int>(count_); }
    // History index of the n-th entry; nothing when n is out of range.
    std::optional<std::uint32_t> Entry(int n) const;

    // Puts the rows into order for at most so long; true when they are. Reading a row does what is
    // left, however long it takes.
    bool SortFor(std::chrono::milliseconds time) const;

    // One row an entry.
    int RowCount() const { return EntryCount(); }
    std::uint32_t RowHistoryIndex(int k) const;
    // The row that shows the history index; -1 when none does.
    int FindRow(std::uint32_t history) const;

    int SortColumn() const { return sort_.Column(); }
    int ColumnState(int column) const { return sort_.State(column); }

  private:
    void BeginRows();
    const std::vector<std::uint32_t>& Rows() const;
    bool FindRange(IQOSTraceService& service, std::uint32_t historyCount, std::uint32_t* last);

    kvx::ITraceSource& source_;
    std::uint32_t first_ = 0;
    std::uint32_t count_ = 0;
    mutable kvx::CallOrder rows_;               // entry of each row
    mutable std::vector<std::uint32_t> rowOf_;  // row of each entry; empty: not asked for yet
    kvx::SortState<kColumns> sort_;
    COSMarker* marker_ = nullptr;
};
