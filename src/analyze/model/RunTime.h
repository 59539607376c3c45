#pragma once
// Run-time analysis: how much of the processor each context occupied between start and end marker.
// Times are counts of the trace clock.

#include <vector>

#include "analyze/model/ExtremeEvents.h"
#include "analyze/model/SharedAnalysis.h"

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

    // A run of length d, remembered at the event.
    void Add(double d, std::uint32_t event);
    // Average and share, after the last run; range is the length of the measured range.
    void Conclude(double range);
    void GoToNextMax(IViewSender* view) { maxEvents.GoToNext(*marker, view); }
    void GoToNextMin(IViewSender* view) { minEvents.GoToNext(*marker, view); }
    int IndicatorOnMax() const { return maxEvents.HasIndicator(*marker); }
    int IndicatorOnMin() const { return minEvents.HasIndicator(*marker); }
};

// A row a context, in the order of the context table.
class CRunTimeAnalysis final : public kvx::SharedAnalysis {
  public:
    enum Column { Vec, Table, Id, Name, Num, Max, Min, Avg, Total, Ratio, Bar };
    static constexpr int kColumns = Bar + 1;
    static const kvx::AnalysisForm kForm;

    using SharedAnalysis::SharedAnalysis;

    // Null when the context has no record. Valid until the next Build or Clear.
    CRunTime* Find(std::uint32_t context);
    const CRunTime* Find(std::uint32_t context) const;
    const std::vector<CRunTime>& Records() const;

    const kvx::AnalysisForm& Form() const override { return kForm; }
    CString Cell(int row, int column) const override;
    CString SortText(int row, int column) const override;
    std::int64_t SortNumber(int row, int column) const override;
    kvx::Members Values(int row) const override;
    std::optional<std::uint32_t> EventOf(int row, int column) const override;
    void GoTo(int row, int column, IViewSender* view) override;
    bool IsCellIndicated(int row, int column) const override;
    std::optional<ShareBar> BarOf(int row) const override;

  private:
    void MakeRows(IQOSTraceService* service, const kvx::AnalysisRange& range) override;
    void DropRows() override;
    int MadeRows() const override { return rows_; }
    // In a range without length nothing is measured that rows could be ordered by.
    bool RepeatsSort(const kvx::AnalysisRange& range) const override {
        return range.start != range.end;
    }
    template <class Events>
    void CreditRange(const Events& events, const kvx::AnalysisRange& range);
    CRunTime NewRecord(std::uint32_t context) const;
    CRunTime& FindOrAdd(std::uint32_t context);
    // Among the records that are made.
    const CRunTime* FindMade(std::uint32_t context) const;
    const CRunTime* RecordOf(int row) const { return Find(static_cast<std::uint32_t>(row)); }
    CString ContextCell(int line, int column) const;

    std::vector<CRunTime> records_;  // by line, then those of lines that the table does not hold
    int rows_ = 0;
};
