#pragma once
// The system calls between start and end marker, as indexes into the service's history.

#include <cstdint>
#include <optional>

#include "analyze/model/SharedAnalysis.h"
#include "host/OSTraceService.h"

// Entries are consecutive history indexes, so the list is their first index and their count. A row
// an entry.
class COSSysCallList final : public kvx::SharedAnalysis {
  public:
    enum Column { No, Name, Parameter, ReturnParameter, Time };
    static constexpr int kColumns = Time + 1;
    static const kvx::AnalysisForm kForm;

    using SharedAnalysis::SharedAnalysis;

    int EntryCount() const { return RowCount(); }
    // History index of the n-th entry; nothing when n is out of range.
    std::optional<std::uint32_t> Entry(int n) const;
    // The history index that is shown in place k.
    std::uint32_t RowHistoryIndex(int k) const { return HistoryOf(Row(k)); }
    // The place that shows the history index; -1 when none does.
    int FindRow(std::uint32_t history) const;

    const kvx::AnalysisForm& Form() const override { return kForm; }
    bool IsReadable() const override { return source_.Service() != nullptr; }
    CString Cell(int row, int column) const override;
    std::int64_t SortNumber(int row, int column) const override;
    kvx::Members Values(int row) const override;
    std::optional<std::uint32_t> EventOf(int row, int column) const override;
    void GoTo(int row, int column, IViewSender* view) override;
    bool FollowsIndicator() const override { return true; }
    std::optional<int> IndicatedRow() const override;
    std::uint32_t FirstId() const override { return first_; }
    // Another number of calls in the history is another history: one that is restricted, or one
    // that goes on, in which calls may have returned by now.
    std::uint64_t Revision() const override;

  private:
    void MakeRows(IQOSTraceService* service, const kvx::AnalysisRange& range) override;
    void DropRows() override { first_ = count_ = 0; }
    int MadeRows() const override { return static_cast<int>(count_); }
    bool HasNewRows() const override { return true; }
    bool FindRange(IQOSTraceService& service, const kvx::AnalysisRange& range,
                   std::uint32_t historyCount, std::uint32_t* last);
    std::uint32_t HistoryOf(int row) const { return first_ + static_cast<std::uint32_t>(row); }

    std::uint32_t first_ = 0;
    std::uint32_t count_ = 0;
};
