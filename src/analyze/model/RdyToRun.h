#pragma once
// Ready-to-run analysis: how long each task waited in the ready state for the processor.
// Times are counts of the trace clock.

#include <vector>

#include "analyze/model/ExtremeEvents.h"
#include "analyze/model/SharedAnalysis.h"

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
    double readyUntil = 0.0;  // end of the state that says so; 0.0: open, or no state says so
    // Whether it is known what losing the processor means, and whether losing the processor makes
    // the task ready in the last one.
    bool stateKnown = false;
    bool canBeReady = false;
    bool byLoss = false;  // ready because it lost the processor, and no state says so
    COSMarker* marker = nullptr;

    // A wait of length d, remembered at the event.
    void Add(double d, std::uint32_t event);
    void GoToNextMax(IViewSender* view) { maxEvents.GoToNext(*marker, view); }
    void GoToNextMin(IViewSender* view) { minEvents.GoToNext(*marker, view); }
    int IndicatorOnMax() const { return maxEvents.HasIndicator(*marker); }
    int IndicatorOnMin() const { return minEvents.HasIndicator(*marker); }
};

// A row a task, in the order of the context table.
class CRdyToRunAnalysis final : public kvx::SharedAnalysis {
  public:
    enum Column { Id, Name, Num, Max, Min, Avg };
    static constexpr int kColumns = Avg + 1;
    static const kvx::AnalysisForm kForm;

    using SharedAnalysis::SharedAnalysis;

    // Null when the context has no record. Valid until the next Build or Clear.
    CRdyToRun* Find(std::uint32_t context);
    // The n-th record; null when n is out of range.
    CRdyToRun* Record(int n);
    const CRdyToRun* Record(int n) const;
    int RecordCount() const { return RowCount(); }

    const kvx::AnalysisForm& Form() const override { return kForm; }
    CString Cell(int row, int column) const override;
    std::int64_t SortNumber(int row, int column) const override;
    kvx::Members Values(int row) const override;
    std::optional<std::uint32_t> EventOf(int row, int column) const override;
    void GoTo(int row, int column, IViewSender* view) override;
    bool IsCellIndicated(int row, int column) const override;

  private:
    void MakeRows(IQOSTraceService* service, const kvx::AnalysisRange& range) override;
    void DropRows() override;
    int MadeRows() const override { return static_cast<int>(records_.size()); }
    void AddTasks();
    // Among the records that are made.
    CRdyToRun* FindMade(std::uint32_t context) {
        const std::int32_t n = context < recordOfLine_.size() ? recordOfLine_[context] : -1;
        return n < 0 ? nullptr : &records_[static_cast<std::size_t>(n)];
    }
    template <class Events>
    void CreditRange(const Events& events, const kvx::AnalysisRange& range);
    bool AnyUnknown() const;
    void EndKnowledge();
    bool IsUnknown(std::uint32_t line) const;
    template <class LookBack>
    void Leave(CRdyToRun& record, double t, LookBack& before);
    template <class LookBack>
    void Credit(CRdyToRun& record, std::uint32_t dispatch, double t, LookBack& before);

    std::vector<CRdyToRun> records_;
    bool gap_ = false;                        // one was come across in the range
    std::vector<std::int32_t> recordOfLine_;  // -1: the line has no record
};
