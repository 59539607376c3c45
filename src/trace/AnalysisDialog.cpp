#include "trace/AnalysisDialog.h"

#include <algorithm>

#include "host/CommandIds.h"
#include "platform/base/Resources.h"
#include "trace/TimeCount.h"

namespace kvx {

namespace {
constexpr int kWhole = 100;
}

AnalysisDialog::AnalysisDialog(IViewSender* view, double from, double to)
    : base_(static_cast<double>(ToCount(from))), span_(static_cast<double>(ToCount(to - from))) {
    if (view) progress_ = view->CreateProgress(LoadString(ids::kStringAnalyzing));
    if (!progress_) return;
    progress_->SetProgress(kWhole, 0);
    if (!progress_->Create()) progress_.reset();
}

void AnalysisDialog::Show(std::int64_t time) {
    if (!progress_ || span_ == 0.0) return;
    const double part = (static_cast<double>(time) - base_) / span_;
    const int percentage = static_cast<int>(std::clamp(part * 100.0, -100.0, 1000.0));
    if (percentage == percentage_) return;
    percentage_ = percentage;
    progress_->SetProgress(kWhole, percentage);
    progress_->UpdateProgress();
}

void AnalysisDialog::Close() {
    if (!progress_) return;
    progress_->DestroyWindow();
    progress_.reset();
}

}  // namespace kvx
