#include "viewer/OpenProgress.h"

#include "platform/base/SystemInfo.h"

namespace kvx::viewer {
namespace {

constexpr DWORD kNoticeable = 400;  // milliseconds
constexpr int kRange = 1000;

}  // namespace

OpenProgress::OpenProgress(CWnd& parent) : parent_(parent), begin_(GetTickCount()) {}

OpenProgress::~OpenProgress() {
    if (dialog_) dialog_->DestroyWindow();
}

bool OpenProgress::Progress(std::uint64_t done, std::uint64_t total) {
    if (!dialog_) {
        if (GetTickCount() - begin_ < kNoticeable) return true;
        dialog_ = std::make_unique<CStopDlgCore>(&parent_, "Reading");
        if (!dialog_->Create()) return true;
    }
    const double share = total > 0 ? static_cast<double>(done) / static_cast<double>(total) : 0;
    dialog_->SetProgress(kRange, static_cast<int>(share * kRange));
    dialog_->UpdateProgress();
    return dialog_->Check_QXTraceStop() == 0;
}

}  // namespace kvx::viewer
