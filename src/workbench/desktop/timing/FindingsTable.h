#pragma once
// Violations of rules and findings as one table.

#include "workbench/desktop/timing/TimingRun.h"

namespace kvx::desktop {

extern const AnalysisForm kFindingsForm;

class FindingsTable final : public Analysis {
  public:
    explicit FindingsTable(std::shared_ptr<const TimingFacts> facts);

    const timing::Finding& FindingOf(int row) const;
    const AnalysisForm& Form() const override { return kFindingsForm; }
    int RowCount() const override;
    CString Cell(int row, int column) const override;
    std::int64_t SortNumber(int row, int column) const override;
    Members Values(int row) const override;
    std::uint64_t Revision() const override { return 0; }

  private:
    std::shared_ptr<const TimingFacts> facts_;
};

}  // namespace kvx::desktop
