#include "workbench/desktop/Workbench.h"

#include <QFile>
#include <QFileInfo>
#include <QMessageBox>

#include "host/CommandIds.h"
#include "workbench/desktop/QtText.h"
#include "workbench/simulation/Generate.h"

namespace kvx::desktop {
namespace {

constexpr int kRefreshMilliseconds = 500;

}  // namespace

Workbench::Workbench(Settings& settings)
    : appearance_(AppearanceOf(settings.Get("Window/appearance").toString())),
      window_(settings, appearance_),
      services_(host_, settings, ModuleDirectory()),
      docking_(window_, settings, window_.HelpMenu()),
      dialogs_(settings, &window_),
      component_(host_) {
    host_.AddService(host::kDockingHost, static_cast<IQDockingHost*>(&docking_));
    Install(std::make_unique<service::TraceService>());
    window_.onOpen = [this](const QString& path) { Open(path); };
    window_.onClose = [this] { CloseRecording(); };
    window_.onProcessor = [this](std::uint32_t processor) { ShowProcessor(processor); };
    window_.onDemonstration = [this] { OpenDemonstration(); };
    window_.onAbout = [this] { ShowAbout(); };
    docking_.onCommandDone = [this] { AfterCommand(); };
    docking_.Windows().onChanged = [this] {
        window_.ShowStartPage(!docking_.Windows().IsAnyShown());
    };
    // Losses are found while the recording is decoded.
    QObject::connect(&refresh_, &QTimer::timeout, [this] { window_.ShowLosses(*trace_); });
    refresh_.start(kRefreshMilliseconds);
}

Workbench::~Workbench() {
    refresh_.stop();
    DropRecording();
    component_.Disconnect();
}

QString Workbench::Start(const QString& directory, const char* component) {
    const QString failure = component_.Load(directory, component);
    return failure.isEmpty() ? component_.Connect() : failure;
}

bool Workbench::Open(const QString& path) {
    return Open(path, StartReading(QFile::encodeName(path).toStdString()));
}

bool Workbench::Open(const QString& path, std::unique_ptr<BackgroundRead> reading) {
    if (!Show(path, *reading)) return false;
    window_.Recent().Add(path);
    window_.ShowRecording(trace_.get());
    return true;
}

bool Workbench::OpenDemonstration() {
    auto folder = std::make_unique<QTemporaryDir>();
    const QString path = folder->filePath("demonstration.log");
    const std::string file = QFile::encodeName(path).toStdString();
    const std::string failure = simulation::WriteDemonstration(file);
    if (!failure.empty()) {
        window_.ShowError("Cannot Write Demonstration", FromUtf8(failure));
        return false;
    }
    if (!Show(path, *StartReading(file))) return false;
    demonstration_ = std::move(folder);
    return true;
}

bool Workbench::Show(const QString& path, BackgroundRead& reading) {
    OpenedRecording recording = reading.Finish(QFileInfo(path).fileName(), &window_);
    if (!recording) {
        if (recording.GetError().cancelled) return false;
        window_.ShowError("Cannot Open Trace", FromUtf8(recording.GetError().message));
        return false;
    }
    auto trace = std::make_unique<service::TraceService>();
    trace->SetRecording(std::move(*recording));
    return Show(std::move(trace));
}

bool Workbench::Show(std::unique_ptr<service::TraceService> trace) {
    if (!component_.IsConnected()) {
        window_.ShowError("Cannot Show Trace", "The component that shows traces is not there.");
        return false;
    }
    DropRecording();
    for (const auto& window : std::exchange(putAway_, {})) {
        if (window) docking_.Windows().SetState(*window, kDockShow);
    }
    OpenTraceWindow();
    Install(std::move(trace));
    host_.Broadcast(host::kEventTargetConnected);
    host_.Broadcast(host::kEventTraceReady);
    docking_.UpdateCommands();
    window_.ShowRecording(trace_.get());
    return true;
}

// Components ask for the service anew with every operation.
void Workbench::Install(std::unique_ptr<service::TraceService> trace) {
    trace->SetDialogs(&dialogs_);
    host_.AddService(host::kOSTraceService, static_cast<IQOSTraceService*>(trace.get()));
    host_.AddService(host::kOSTraceAvailability, static_cast<IQOSTraceAvailability*>(trace.get()));
    trace_ = std::move(trace);
}

void Workbench::CloseRecording() {
    if (!trace_->GetRecording()) return;
    DropRecording();
    window_.ShowRecording(nullptr);
    for (DockingWindow* window : docking_.Windows().All()) {
        if (window->isHidden()) continue;
        docking_.Windows().SetState(*window, kDockHide);
        putAway_.emplace_back(window);
    }
}

void Workbench::DropRecording() {
    if (!trace_->GetRecording()) return;
    host_.Broadcast(host::kEventTraceCleared);
    host_.Broadcast(host::kEventTargetDisconnected);
    Install(std::make_unique<service::TraceService>());
    docking_.UpdateCommands();
}

void Workbench::ShowProcessor(std::uint32_t processor) {
    if (processor == trace_->ShownProcessor()) return;
    host_.Broadcast(host::kEventTraceCleared);
    trace_->ShowProcessor(processor);
    host_.Broadcast(host::kEventTraceReady);
    docking_.UpdateCommands();
    window_.ShowRecording(trace_.get());
}

void Workbench::OpenTraceWindow() {
    docking_.GiveCommand(ids::kOpenOSTrace);
}

bool Workbench::IsTraceWindowOpen() {
    auto* window = host::Service<IQEOSTraceWindow>(&host_, host::kOSTraceWindow);
    std::uint16_t open = 0;
    return window && Succeeded(window->IsOpen(&open)) && open != 0;
}

// A window that was opened after the trace became ready has not heard of it.
void Workbench::AfterCommand() {
    const bool open = IsTraceWindowOpen();
    const bool opened = open && !traceWindowWasOpen_;
    traceWindowWasOpen_ = open;
    if (!opened || !trace_->GetRecording()) return;
    host_.Broadcast(host::kEventTraceReady);
    docking_.UpdateCommands();
}

void Workbench::ShowAbout() {
    QString text = QStringLiteral(
                       "<h3>KVX Workbench %1</h3><p>Shows what a real-time kernel did: "
                       "recorded traces of its tasks, handlers and system calls.</p>")
                       .arg(KVX_VERSION);
    if (const auto version = component_.Version()) {
        text += QStringLiteral("<p>Component: %1, version %2.%3</p>")
                    .arg(component_.Name().toHtmlEscaped())
                    .arg(version->first)
                    .arg(version->second);
    }
    QMessageBox::about(&window_, "About KVX Workbench", text);
}

}  // namespace kvx::desktop
