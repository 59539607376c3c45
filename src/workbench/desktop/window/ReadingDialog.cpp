#include "workbench/desktop/window/ReadingDialog.h"

#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include "workbench/desktop/QtText.h"

namespace kvx::desktop {
namespace {

constexpr char kFrequency[] = "Reading/frequency";
constexpr char kCalls[] = "Reading/calls";
constexpr char kDescriptions[] = "Reading/descriptions";

// What the user calls a numbering.
QString Shown(std::string_view numbering) {
    return numbering == "segger" ? QStringLiteral("SEGGER") : QStringLiteral("Espressif");
}

}  // namespace

formats::OpenOptions ReadingOptions(const Settings& settings) {
    formats::OpenOptions options;
    const auto frequency = settings.Get(kFrequency).toString().toStdString();
    options.frequency = formats::ParseFrequency(frequency).value_or(0);
    const auto calls = settings.Get(kCalls).toString().toStdString();
    for (const auto known : formats::CallNumberings())
        if (known == calls) options.calls = calls;
    options.descriptions = QFile::encodeName(settings.Get(kDescriptions).toString()).toStdString();
    return options;
}

ReadingDialog::ReadingDialog(Settings& settings, QWidget* parent)
    : QDialog(parent),
      settings_(settings),
      frequency_(new QLineEdit(settings.Get(kFrequency).toString())),
      calls_(new QComboBox),
      descriptions_(new QLineEdit(settings.Get(kDescriptions).toString())) {
    setWindowTitle("Reading of Recordings");
    frequency_->setObjectName("frequency");
    calls_->setObjectName("calls");
    descriptions_->setObjectName("descriptions");
    frequency_->setPlaceholderText("not known: times are counts");
    descriptions_->setPlaceholderText("beside the recording");
    descriptions_->setMinimumWidth(280);
    calls_->addItem("What the recording shows", QString());
    for (const auto numbering : formats::CallNumberings())
        calls_->addItem(Shown(numbering), FromUtf8(std::string(numbering)));
    calls_->setCurrentIndex(std::max(0, calls_->findData(settings.Get(kCalls).toString())));

    auto* browse = new QPushButton("&Browse…");
    browse->setAutoDefault(false);
    connect(browse, &QPushButton::clicked, this, [this] { ChooseFolder(); });
    auto* folder = new QHBoxLayout;
    folder->addWidget(descriptions_, 1);
    folder->addWidget(browse);
    auto* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(box, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* form = new QFormLayout(this);
    auto* what = new QLabel("Where a recording does not tell it itself:");
    form->addRow(what);
    form->addRow("Counter &frequency (ThreadX):", frequency_);
    form->addRow("FreeRTOS &call numbers (SystemView):", calls_);
    auto* label = new QLabel("Folder of call &descriptions:");
    label->setBuddy(descriptions_);
    form->addRow(label, folder);
    form->addRow(box);
}

void ReadingDialog::ChooseFolder() {
    const QString folder = QFileDialog::getExistingDirectory(this, "Folder of Call Descriptions",
                                                             descriptions_->text());
    if (!folder.isEmpty()) descriptions_->setText(folder);
}

void ReadingDialog::accept() {
    const QString frequency = frequency_->text().trimmed();
    if (!frequency.isEmpty() && !formats::ParseFrequency(frequency.toStdString())) {
        QMessageBox::warning(this, windowTitle(),
                             QStringLiteral("\"%1\" is not a frequency. Write it as 1MHz or "
                                            "32.768 kHz, or leave it empty.")
                                 .arg(frequency));
        return frequency_->setFocus();
    }
    const QString folder = descriptions_->text().trimmed();
    if (!folder.isEmpty() && !QFileInfo(folder).isDir()) {
        QMessageBox::warning(this, windowTitle(),
                             QStringLiteral("There is no folder \"%1\".").arg(folder));
        return descriptions_->setFocus();
    }
    settings_.Set(kFrequency, frequency);
    settings_.Set(kCalls, calls_->currentData());
    settings_.Set(kDescriptions, folder);
    QDialog::accept();
}

}  // namespace kvx::desktop
