#pragma once
// Asks which of the system calls that occur the history is to be restricted to.

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>

#include "workbench/service/Dialogs.h"

namespace kvx::desktop {

class PickUpDialog final : public QDialog {
  public:
    PickUpDialog(const std::vector<service::NameCount>& calls, QWidget* parent);

    // Names of the ticked calls, in the order of the list.
    service::PickUp Chosen() const;

  private:
    void Fill(const std::vector<service::NameCount>& calls);
    void ShowMatching(const QString& text);
    void TickVisible(bool tick);
    void CountTicked();

    QLineEdit* filter_;
    QTreeWidget* list_;
    QPushButton* accept_ = nullptr;
};

}  // namespace kvx::desktop
