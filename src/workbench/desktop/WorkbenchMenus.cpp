// The Workbench: what its menus ask for, and what it shows of its state.

#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <algorithm>

#include "host/FormatViewClient.h"
#include "workbench/desktop/QtText.h"
#include "workbench/desktop/Workbench.h"
#include "workbench/desktop/exports/ExportDialog.h"
#include "workbench/desktop/services/FormatDialog.h"
#include "workbench/desktop/window/ReadingDialog.h"

namespace kvx::desktop {
namespace {

constexpr int kSmallestBuffer = 100;
constexpr int kLargestBuffer = 10'000'000;

}  // namespace

void Workbench::ConnectMenus() {
    window_.onOpen = [this](const TraceFiles& files) { Open(files); };
    window_.onReload = [this] { Reload(); };
    window_.onReading = [this] {
        if (ReadingDialog(settings_, &window_).exec() == QDialog::Accepted) Reload();
    };
    window_.onClose = [this] { CloseRecording(); };
    window_.onSaveRecording = [this](const QString& path) { SaveRecording(path); };
    window_.onOpenWorkspace = [this](const QString& path) { OpenWorkspace(path); };
    window_.onSaveWorkspace = [this](const QString& path) {
        SaveWorkspace(path.isEmpty() ? workspace_.Path() : path);
    };
    window_.onCloseWorkspace = [this] { CloseWorkspace(); };
    window_.onQuit = [this] { return MayLeaveWorkspace(); };
    window_.onProcessor = [this](std::uint32_t processor) { ShowProcessor(processor); };
    window_.onExport = [this] { Export(); };
    window_.onSaveRules = [this](const QString& path) { SaveRules(path); };
    window_.onLoadRules = [this](const QString& path) { LoadRules(path); };
    window_.onFormat = [this] { ShowFormat(); };
    window_.onShowAllLines = [this] { ShowAllLines(); };
    window_.isAnyLineHidden = [this] {
        const service::LineArrangement lines = trace_->Lines();
        return !std::ranges::all_of(lines, &service::ArrangedLine::shown);
    };
    window_.onHelp = [this](bool ofWindow) { ShowHelp(ofWindow ? docking_.HelpKey() : QString()); };
    window_.onDemonstration = [this] { OpenDemonstration(); };
    window_.onSimulation = [this] { ConnectTarget(); };
    window_.onAbout = [this] { ShowAbout(); };
    targetMenu_.onConnect = [this] { ConnectTarget(); };
    targetMenu_.onDisconnect = [this] { CloseRecording(); };
    targetMenu_.onGo = [this] { target_->Go(); };
    targetMenu_.onStop = [this] { target_->Stop(); };
    targetMenu_.onReset = [this] { target_->Reset(); };
    targetMenu_.onBufferSize = [this] { AskBufferSize(); };
}

void Workbench::AskBufferSize() {
    bool ok = false;
    const int size = QInputDialog::getInt(
        &window_, "Recording Buffer",
        "Records that the target's buffer holds:", static_cast<int>(target_->Buffer().Capacity()),
        kSmallestBuffer, kLargestBuffer, 1000, &ok);
    if (!ok || !target_) return;
    settings_.Set(kBufferSetting, size);
    target_->SetBufferSize(static_cast<std::size_t>(size));
}

void Workbench::ShowState() {
    window_.ShowLosses(*trace_);
    const QString recording = RecordingName();
    services_.Project().SetOpen(recording.toStdString(), window_.LastFolder().toStdString());
    window_.ShowTitle(recording, QFileInfo(workspace_.Path()).fileName(), workspace_.IsModified());
}

QString Workbench::RecordingName() const {
    if (target_) return "Simulated target";
    if (!trace_->GetRecording()) return {};
    if (traceFiles_.IsEmpty() && demonstration_) return "Demonstration";
    if (!traceFiles_.IsEmpty()) return traceFiles_.Name();
    return QFileInfo(QFile::decodeName(trace_->GetRecording()->Path().c_str())).fileName();
}

void Workbench::Export() {
    const auto decoded = trace_->ShareDecoded();
    if (!decoded) return;
    const auto marked = Marked();
    ExportDialog dialog(
        *decoded, marked ? std::optional(std::pair(marked->start, marked->end)) : std::nullopt,
        &window_);
    if (dialog.exec() != QDialog::Accepted) return;
    const QString ending = FromUtf8(dialog.Form().extension);
    const QString path = QFileDialog::getSaveFileName(
        &window_, "Export",
        window_.LastFolder() + "/" + QFileInfo(RecordingName()).completeBaseName() + "." + ending,
        "*." + ending);
    if (path.isEmpty()) return;
    const QString failure = WriteExport(decoded, dialog.Form(), dialog.Request(), path, &window_);
    if (!failure.isEmpty()) window_.ShowError("Cannot Export", failure);
}

void Workbench::ShowFormat() {
    auto clients = host_.Clients<IQFormatViewClient2>(host::kFormatViewClient);
    if (clients.empty()) return;
    FormatDialog(std::move(clients), settings_, &window_).exec();
}

void Workbench::ShowHelp(const QString& key) {
    if (help_.Open(key)) return;
    window_.ShowError("Cannot Open Help",
                      "The help pages are not there: " + HelpBook::Folder() + ".");
}

void Workbench::ShowAbout() {
    QString text = QStringLiteral(
                       "<h3>KVX Workbench %1</h3><p>Shows what a real-time kernel did: "
                       "recorded traces of its tasks, handlers and system calls.</p>")
                       .arg(KVX_VERSION);
    if (const auto version = component_.Version()) {
        text += QStringLiteral("<p>Component: %1, version %2.%3</p>")
                    .arg(FromUtf8(component_.Name()).toHtmlEscaped())
                    .arg(version->first)
                    .arg(version->second);
    }
    QMessageBox::about(&window_, "About KVX Workbench", text);
}

}  // namespace kvx::desktop
