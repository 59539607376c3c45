#pragma once
// The questions of the trace service, asked with windows.

#include <QPointer>
#include <QWidget>

#include "workbench/desktop/Settings.h"
#include "workbench/service/Dialogs.h"

namespace kvx::desktop {

class ServiceDialogs final : public service::IServiceDialogs {
  public:
    // The texts searched for are kept in the settings, which must outlive the dialogs.
    ServiceDialogs(Settings& settings, QWidget* parent) : settings_(settings), parent_(parent) {}

    bool AskSearchCondition(service::SearchCondition& condition) override;
    service::SearchCondition LastCondition() const override { return condition_; }
    bool AskPickUp(const std::vector<service::NameCount>& calls, service::PickUp& chosen) override;

  private:
    Settings& settings_;
    service::SearchCondition condition_;  // outlives the recordings
    QPointer<QWidget> parent_;
};

}  // namespace kvx::desktop
