#pragma once
// Writes the recording that is shown, or the range between the markers, in the form of other tools.

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QRadioButton>
#include <memory>
#include <optional>
#include <utility>

#include "workbench/exports/Exporter.h"

namespace kvx::desktop {

class ExportDialog final : public QDialog {
  public:
    // marked: counts between the markers; none: they stand nowhere.
    ExportDialog(const service::DecodedRecording& decoded,
                 std::optional<std::pair<std::int64_t, std::int64_t>> marked, QWidget* parent);

    // What the user has chosen.
    const exports::Exporter& Form() const;
    exports::ExportRequest Request() const;

  private:
    const service::DecodedRecording& decoded_;
    const std::optional<std::pair<std::int64_t, std::int64_t>> marked_;
    QComboBox* form_;
    QRadioButton* whole_;
    QRadioButton* range_;
    QCheckBox* arrows_;
};

// Writes on a thread of its own; when that takes noticeable time a dialog over the parent shows how
// far it is and lets the user cancel. Answers what went wrong; empty: written, or cancelled.
QString WriteExport(std::shared_ptr<const service::DecodedRecording> decoded,
                    const exports::Exporter& form, exports::ExportRequest request,
                    const QString& path, QWidget* parent);

}  // namespace kvx::desktop
