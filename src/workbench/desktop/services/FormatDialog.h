#pragma once
// Font and text colours of components' windows, as each component takes part in it.

#include <QComboBox>
#include <QDialog>
#include <QFontComboBox>
#include <QLabel>
#include <QSpinBox>

#include "host/FormatViewClient.h"
#include "workbench/desktop/Settings.h"

namespace kvx::desktop {

class FormatDialog final : public QDialog {
  public:
    // Never empty; the clients and the settings must outlive the dialog. Settings keep the colours
    // that were chosen last, for clients do not tell theirs.
    FormatDialog(std::vector<IQFormatViewClient2*> clients, Settings& settings, QWidget* parent);

  private:
    IQFormatViewClient2& Client() const;
    QString ColorSetting(const char* which) const;
    void ShowClient();
    void ShowItem();
    void ShowSample();
    void Apply();

    std::vector<IQFormatViewClient2*> clients_;
    Settings& settings_;
    QComboBox* client_;
    QComboBox* item_;
    QFontComboBox* face_;
    QSpinBox* points_;
    QComboBox* foreground_;
    QComboBox* background_;
    QLabel* sample_;
    std::pair<QString, int> shownFont_;
};

}  // namespace kvx::desktop
