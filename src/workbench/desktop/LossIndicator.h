#pragma once
// The place in the status line that tells what a recording lost; a click explains it.

#include <QToolButton>

#include "workbench/service/Loss.h"

namespace kvx::desktop {

class LossIndicator final : public QToolButton {
  public:
    LossIndicator();

    // Hidden while there is neither a loss nor a note.
    void SetLosses(const service::LossCounters& losses);

    // The losses and notes that occurred, each with its count and what it means.
    static QString Explain(const service::LossCounters& losses);

  private:
    service::LossCounters losses_;
};

}  // namespace kvx::desktop
