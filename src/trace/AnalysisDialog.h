#pragma once
// The "Analyzing..." dialog of one run of decoding: progress between two times, and STOP.

#include <cstdint>

#include "trace/Progress.h"

namespace kvx {

class AnalysisDialog {
  public:
    // No dialog for a null view, or when it cannot be created: then nothing is shown and nobody
    // stops. from and to are counts.
    AnalysisDialog(IViewSender* view, double from, double to);
    AnalysisDialog(const AnalysisDialog&) = delete;
    AnalysisDialog& operator=(const AnalysisDialog&) = delete;
    ~AnalysisDialog() { Close(); }

    // The time decoded last; shown when the whole percentage changed.
    void Show(std::int64_t time);
    bool IsStopped() { return progress_ && progress_->Check_QXTraceStop() == 1; }
    void Close();

  private:
    std::unique_ptr<IProgress> progress_;
    double base_;
    double span_;
    int percentage_ = 0;
};

}  // namespace kvx
