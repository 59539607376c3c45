#pragma once
// The questions of the trace service, asked with the dialogs of the resource library.

#include "platform/windows/Wnd.h"
#include "workbench/service/Dialogs.h"

namespace kvx::viewer {

class ViewerDialogs final : public service::IServiceDialogs {
  public:
    explicit ViewerDialogs(CWnd& parent) : parent_(parent) {}

    bool AskSearchCondition(service::SearchCondition& condition) override;
    service::SearchCondition LastCondition() const override { return condition_; }
    bool AskPickUp(const std::vector<service::NameCount>& calls, service::PickUp& chosen) override;

  private:
    CWnd& parent_;
    service::SearchCondition condition_;  // outlives the recordings
    std::vector<CString> history_;        // newest first
};

}  // namespace kvx::viewer
