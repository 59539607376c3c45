#include "workbench/desktop/exports/ExportDialog.h"

#include <QDialogButtonBox>
#include <QEventLoop>
#include <QFile>
#include <QFormLayout>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <atomic>
#include <future>

#include "workbench/desktop/QtText.h"
#include "workbench/exports/ExportFile.h"

namespace kvx::desktop {
namespace {

constexpr auto kUnnoticed = std::chrono::milliseconds(250);
constexpr int kPollMilliseconds = 20;
constexpr int kPerMille = 1000;

}  // namespace

ExportDialog::ExportDialog(const service::DecodedRecording& decoded,
                           std::optional<std::pair<std::int64_t, std::int64_t>> marked,
                           QWidget* parent)
    : QDialog(parent),
      decoded_(decoded),
      marked_(marked),
      form_(new QComboBox),
      whole_(new QRadioButton("The &whole recording")),
      range_(new QRadioButton),
      arrows_(new QCheckBox("&Arrows from who makes a task ready to its run (slow viewers)")) {
    setWindowTitle("Export");
    for (const exports::Exporter* const form : exports::Exporters())
        form_->addItem(FromUtf8(form->name) + ": " + FromUtf8(form->description));
    const auto& clock = decoded_.GetRecording().Clock();
    range_->setEnabled(marked_.has_value());
    range_->setText("Between the &markers" +
                    (marked_ ? ": " + FromUtf8(clock.Format(marked_->first)) + " to " +
                                   FromUtf8(clock.Format(marked_->second))
                             : QString()));
    (marked_ ? range_ : whole_)->setChecked(true);
    auto* ranges = new QVBoxLayout;
    ranges->addWidget(range_);
    ranges->addWidget(whole_);
    auto* fields = new QFormLayout(this);
    fields->addRow("&Form", form_);
    fields->addRow("Range", ranges);
    fields->addRow(arrows_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setText("Export…");
    fields->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(form_, &QComboBox::currentIndexChanged, this,
            [this] { arrows_->setEnabled(&Form() == &exports::kPerfetto); });
    arrows_->setEnabled(&Form() == &exports::kPerfetto);
}

const exports::Exporter& ExportDialog::Form() const {
    return *exports::Exporters()[static_cast<std::size_t>(form_->currentIndex())];
}

exports::ExportRequest ExportDialog::Request() const {
    exports::ExportRequest request = exports::WholeOf(decoded_);
    request.arrows = arrows_->isEnabled() && arrows_->isChecked();
    if (range_->isChecked()) std::tie(request.start, request.end) = *marked_;
    return request;
}

QString WriteExport(std::shared_ptr<const service::DecodedRecording> decoded,
                    const exports::Exporter& form, exports::ExportRequest request,
                    const QString& path, QWidget* parent) {
    std::atomic<int> perMille = 0;
    std::atomic<bool> cancelled = false;
    request.progress = [&](double share) {
        perMille = static_cast<int>(share * kPerMille);
        return !cancelled;
    };
    auto written = std::async(std::launch::async, [&]() -> std::optional<Error> {
        decoded->WaitForAll();
        try {
            return exports::WriteFiles(form, request, QFile::encodeName(path).toStdString());
        } catch (const std::exception& failure) {
            return Error{failure.what()};
        }
    });
    if (written.wait_for(kUnnoticed) != std::future_status::ready) {
        QProgressDialog dialog("Writing…", "Cancel", 0, kPerMille, parent);
        dialog.setWindowModality(Qt::WindowModal);
        dialog.setAutoReset(false);
        QObject::connect(&dialog, &QProgressDialog::canceled, [&] { cancelled = true; });
        QEventLoop loop;
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, [&] {
            if (written.wait_for(std::chrono::seconds(0)) == std::future_status::ready)
                return loop.quit();
            if (!dialog.wasCanceled()) dialog.setValue(perMille);
        });
        poll.start(kPollMilliseconds);
        dialog.show();
        loop.exec();
    }
    const auto failure = written.get();
    return failure && !cancelled ? FromUtf8(failure->message) : QString();
}

}  // namespace kvx::desktop
