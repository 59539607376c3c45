#pragma once
// Ready-to-run analysis: how long each task waited in the ready state for the processor.
// Times are counts of the trace clock.

#include <vector>

#include "analyze/model/ExtremeEvents.h"
#include "analyze/model/SortState.h"

class CContextMng;

// One task.
struct CRdyToRun {
    std::uint32_t context = 0;  // line
    std::int32_t Num = 0;       // dispatches to the task
    std::int32_t measured = 0;  // those whose ready moment is known
    double Max = 0.0;
    kvx::ExtremeEvents maxEvents;
    double Min = 0.0;  // 0.0: no minimum yet
    kvx::ExtremeEvents minEvents;
    double Total = 0.0;
    double Avg = 0.0;
    double readySince = 0.0;  // 0.0: not set or not ready
    // Whether a state was come across in the range, and whether losing the processor makes the task
    // ready in the last one.
    bool stateKnown = false;
    bool canBeReady = false;
    COSMarker* marker = nullptr;

    // A wait of length d, remembered at the event.
    void Add(double d, std::uint32_t event);
    void GoToNextMax(IViewSender* view) { maxEvents.GoToNext(*marker, view); }
    void GoToNextMin(IViewSender* view) { minEvents.GoToNext(*marker, view); }
    int IndicatorOnMax() const { return maxEvents.HasIndicator(*marker); }
    int IndicatorOnMin() const { return minEvents.HasIndicator(*marker); }
};

// One display row. Its sort key lives for the duration of a sort only.
struct SRdySortInfo {
    std::int32_t index = 0;      // position of the record in the list
    std::int32_t direction = 0;  // kvx::kAscending, kvx::kDescending
};

class CRdyToRunAnalysis {
  public:
    static constexpr int kColumns = 6;
    enum Column { Id, Name, Num, Max, Min, Avg };

    // Borrows the source.
    explicit CRdyToRunAnalysis(kvx::ITraceSource& source) : source_(source) {}

    // Borrowed, set once by their owner.
    void SetShared(COSMarker* marker, CContextMng* contexts);

    void Build();
    void Sort(int column, int again);
    // Records and rows; the sort states stay.
    void Clear();

    // Null when the context has no record. Valid until the next Build or Clear.
    CRdyToRun* Find(std::uint32_t context);
    // The n-th record; null when n is out of range.
    CRdyToRun* Record(int n);
    const CRdyToRun* Record(int n) const;
    int RecordCount() const { return static_cast<int>(records_.size()); }

    int RowCount() const { return static_cast<int>(rows_.size()); }
    int Row(int k) const { return rows_[static_cast<std::size_t>(k)].index; }
    int SortColumn() const { return sort_.Column(); }
    int ColumnState(int column) const { return sort_.State(column); }

  private:
    void AddTasks();
    template <class Events>
    void CreditRange(const Events& events);
    template <class LookBack>
    void Leave(CRdyToRun& record, double t, LookBack& before);
    template <class LookBack>
    void Credit(CRdyToRun& record, std::uint32_t dispatch, double t, LookBack& before);
    CString Key(const CRdyToRun& record, int column) const;

    kvx::ITraceSource& source_;
    std::vector<CRdyToRun> records_;
    std::vector<std::int32_t> recordOfLine_;  // -1: the line has no record
    std::vector<SRdySortInfo> rows_;
    kvx::SortState<kColumns> sort_;
    COSMarker* marker_ = nullptr;
    CContextMng* contexts_ = nullptr;
};
