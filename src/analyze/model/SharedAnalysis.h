#pragma once
// An analysis of what start and end marker enclose, shared by all windows that show it together
// with the order in which they show its rows.
//
// Build takes the range down; the rows are made when somebody reads them.

#include <chrono>
#include <optional>

#include "analyze/model/Analysis.h"
#include "analyze/model/AnalysisRange.h"
#include "analyze/model/RowOrder.h"
#include "analyze/model/SortState.h"
#include "platform/base/Mutex.h"
#include "trace/TraceSource.h"

class COSMarker;
class COSTrace;
class CContextMng;

namespace kvx {

class SharedAnalysis : public Analysis {
  public:
    // The other shared objects of the component; borrowed, set once by their owner.
    struct Shared {
        COSMarker* marker = nullptr;
        CContextMng* contexts = nullptr;
        COSTrace* engine = nullptr;
        CMutex* lock = nullptr;
    };
    // Borrows the source.
    explicit SharedAnalysis(ITraceSource& source) : source_(source) {}
    void SetShared(const Shared& shared) { shared_ = shared; }

    // For the range of the markers, with the markers' word on rows and sort states.
    void Build();
    // No rows any more; the sort states stay.
    void Clear();
    // again 1 repeats the last sort by the column, else its direction turns round.
    void Sort(int column, int again);

    int RowCount() const override;
    // Puts the rows into order for at most so long; true when they are. The two operations that
    // follow do what is left, however long it takes.
    bool SortFor(std::chrono::milliseconds time) const;
    // The row that is shown in place k.
    int Row(int k) const;
    // The place in which the row is shown.
    int PlaceOf(int row) const;
    // -1: none.
    int SortColumn() const { return sort_.Column(); }
    int ColumnState(int column) const { return sort_.State(column); }

    // Sends the indicator to the event that the cell speaks of, of several to the next one. column
    // may be behind the last: the place beside the row.
    virtual void GoTo(int row, int column, IViewSender* view) = 0;
    // Whether the indicator stands where the cell speaks of.
    virtual bool IsCellIndicated(int /*row*/, int /*column*/) const { return false; }
    // The row that speaks as a whole of where the indicator stands; windows keep it in sight.
    virtual bool FollowsIndicator() const { return false; }
    virtual std::optional<int> IndicatedRow() const { return std::nullopt; }
    // Of a column of bars: how long the row's bar is, 1 for the whole column.
    struct ShareBar {
        double share;
        bool hatched;
    };
    virtual std::optional<ShareBar> BarOf(int /*row*/) const { return std::nullopt; }

    std::uint64_t Revision() const override { return builds_; }

  protected:
    // Makes the rows anew; service null: there is none. Called under the lock.
    virtual void MakeRows(IQOSTraceService* service, const AnalysisRange& range) = 0;
    virtual void DropRows() = 0;
    virtual int MadeRows() const = 0;
    // Makes the rows if that is due: every operation that reads them begins with it.
    void Make() const;

    ITraceSource& source_;
    Shared shared_;

    // Whether rows are other ones with every build, whatever the markers say.
    virtual bool HasNewRows() const { return false; }
    // Whether a sort of before is repeated for the range.
    virtual bool RepeatsSort(const AnalysisRange& /*range*/) const { return true; }

  private:
    // Lets the order know the rows that are there.
    void BeginOrder() const;
    const std::vector<std::uint32_t>& Order() const;

    mutable std::optional<AnalysisRange> due_;  // rows for this range are to be made
    std::uint64_t builds_ = 0;
    mutable RowOrder order_;
    mutable bool isOrderDue_ = true;              // rows are in their own order again ...
    mutable bool repeatsSort_ = false;            // ... before a sort that is repeated
    mutable std::vector<std::uint32_t> placeOf_;  // empty: not asked for yet
    SortState sort_;
};

}  // namespace kvx
