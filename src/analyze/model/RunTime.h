#pragma once
// Run-time analysis: how much of the processor each context occupied between start and end marker.
// Times are counts of the trace clock.

#include <vector>

#include "analyze/model/ExtremeEvents.h"
#include "analyze/model/SortState.h"

class CContextMng;

// One context.
struct CRunTime {
    std::uint32_t context = 0;  // line
    std::int32_t Num = 0;
    double Max = 0.0;
    kvx::ExtremeEvents maxEvents;
    double Min = 0.0;  // 0.0: no minimum yet
    kvx::ExtremeEvents minEvents;
    double Avg = 0.0;
    double Total = 0.0;
    double Ratio = 0.0;  // 1 is the whole range
    COSMarker* marker = nullptr;

    // A run of length d, remembered at the event; range is the length of the measured range.
    void Add(double d, std::uint32_t event, double range);
    void GoToNextMax(IViewSender* view) { maxEvents.GoToNext(*marker, view); }
    void GoToNextMin(IViewSender* view) { minEvents.GoToNext(*marker, view); }
    int IndicatorOnMax() const { return maxEvents.HasIndicator(*marker); }
    int IndicatorOnMin() const { return minEvents.HasIndicator(*marker); }
};

// One display row. Its sort key lives for the duration of a sort only.
struct SRunTimeSortInfo {
    std::int32_t index = 0;      // the context's line
    std::int32_t direction = 0;  // kvx::kAscending, kvx::kDescending
};

class CRunTimeAnalysis {
  public:
    static constexpr int kColumns = 11;
    enum Column { Vec, Table, Id, Name, Num, Max, Min, Avg, Total, Ratio, Bar };

    // Borrows the source.
    explicit CRunTimeAnalysis(kvx::ITraceSource& source) : source_(source) {}

    // Borrowed, set once by their owner.
    void SetShared(COSMarker* marker, CContextMng* contexts);

    void Build();
    void Sort(int column, int again);
    // Records and rows; the sort states stay.
    void Clear();

    // Null when the context has no record. Valid until the next Build or Clear.
    CRunTime* Find(std::uint32_t context);
    const CRunTime* Find(std::uint32_t context) const;
    CRunTime& FindOrAdd(std::uint32_t context);
    const std::vector<CRunTime>& Records() const { return records_; }

    int RowCount() const { return static_cast<int>(rows_.size()); }
    int Row(int k) const { return rows_[static_cast<std::size_t>(k)].index; }
    int SortColumn() const { return sort_.Column(); }
    int ColumnState(int column) const { return sort_.State(column); }

  private:
    template <class Events>
    void CreditRange(const Events& events);
    CString Key(int line, int column) const;
    CString ValueKey(const CRunTime& record, int column) const;

    kvx::ITraceSource& source_;
    std::vector<CRunTime> records_;  // by line, then those of lines that the table does not hold
    std::vector<SRunTimeSortInfo> rows_;
    kvx::SortState<kColumns> sort_;
    COSMarker* marker_ = nullptr;
    CContextMng* contexts_ = nullptr;
};
