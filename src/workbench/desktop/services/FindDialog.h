#pragma once
// Asks what system call to search for.

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QRadioButton>

#include "workbench/service/Dialogs.h"

namespace kvx::desktop {

class FindDialog final : public QDialog {
  public:
    // condition: what the controls show first; history: texts searched for before, newest first.
    FindDialog(const service::SearchCondition& condition, const QStringList& history,
               QWidget* parent);

    service::SearchCondition Condition() const;

  private:
    QComboBox* text_;
    QCheckBox* matchCase_;
    QCheckBox* wildCard_;
    QRadioButton* up_;
    QRadioButton* down_;
};

}  // namespace kvx::desktop
