#pragma once
// How recordings are read that do not tell it themselves: kept for the user, and used by every
// recording that is opened.

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>

#include "workbench/desktop/Settings.h"
#include "workbench/formats/OpenRecording.h"

namespace kvx::desktop {

// As the user has set them.
formats::OpenOptions ReadingOptions(const Settings& settings);

class ReadingDialog final : public QDialog {
  public:
    // settings must outlive the dialog; they change when it is accepted.
    ReadingDialog(Settings& settings, QWidget* parent);
    void accept() override;

  private:
    void ChooseFolder();

    Settings& settings_;
    QLineEdit* frequency_;
    QComboBox* calls_;
    QLineEdit* descriptions_;
};

}  // namespace kvx::desktop
