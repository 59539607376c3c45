#pragma once
// The place in the status line that tells what a recording lost; a click explains it.

#include <QToolButton>
#include <string>
#include <vector>

#include "workbench/service/Loss.h"

namespace kvx::desktop {

class LossIndicator final : public QToolButton {
  public:
    LossIndicator();

    // Hidden while there is nothing to tell. warnings: sentences about the recording as a whole.
    void Tell(const service::LossCounters& losses, const std::vector<std::string>& warnings);

  private:
    // All of it, with counts and what they mean.
    QString Explanation() const;

    service::LossCounters losses_;
    std::vector<std::string> warnings_;
};

}  // namespace kvx::desktop
