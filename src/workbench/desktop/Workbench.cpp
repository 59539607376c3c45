#include "workbench/desktop/Workbench.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStatusBar>
#include <algorithm>
#include <utility>

#include "host/CommandIds.h"
#include "hosting/ModuleFolder.h"
#include "workbench/desktop/CopyFile.h"
#include "workbench/desktop/QtText.h"
#include "workbench/desktop/window/ReadingDialog.h"
#include "workbench/service/DecodedRecording.h"
#include "workbench/simulation/Generate.h"

namespace kvx::desktop {
namespace {

// Milliseconds.
constexpr int kWhileDecoding = 300;
constexpr int kWhileReading = 100;

}  // namespace

Workbench::Workbench(Settings& settings)
    : settings_(settings),
      appearance_(AppearanceOf(settings.Get("Window/appearance").toString())),
      window_(settings, appearance_),
      targetMenu_(window_, window_.HelpMenu()),
      services_(host_, settings, hosting::ModuleFolder()),
      docking_(window_, settings, window_.HelpMenu()),
      timing_(window_, window_.ViewMenu()),
      dialogs_(settings, &window_),
      component_(host_),
      workspace_(host_, services_.Workspace(), *this),
      help_(&window_) {
    host_.AddService(host::kDockingHost, static_cast<IQDockingHost*>(&docking_));
    Install(std::make_unique<service::TraceService>());
    ConnectMenus();
    // Trace Stop and Trace Restart are commands.
    docking_.onCommandDone = [this] {
        if (target_) target_->FollowRecording();
        FollowWindows();
    };
    docking_.onClosing = [this] { positionBefore_ = Position(); };
    docking_.onCloseRefused = [this](const QString& title) {
        window_.ShowError("Window Stays Open",
                          target_ && target_->IsRunning()
                              ? title + " cannot be closed while the target runs. Stop it first."
                              : title + " cannot be closed now.");
    };
    docking_.onCommandsUpdated = [this] { ShowState(); };
    host_.onEvent = [this] { docking_.UpdateCommandsSoon(); };
    docking_.Windows().onChanged = [this] {
        window_.ShowStartPage(!docking_.Windows().IsAnyShown());
    };
    timing_.onGoTo = [this](const Stretch& stretch) { ShowStretch(stretch); };
    timing_.Strip().onShow = [this](double start, double end) { ShowDisplay(start, end); };
    paints_.onPaint = [this] { FollowDisplay(); };
    timing_.onRulesFault = [this](const QString& why) {
        window_.ShowError("Cannot Use Rules", why);
    };
    timing_.marked = [this] {
        const auto range = Marked();
        if (!range)
            window_.ShowError("Nothing Is Marked",
                              "Put the start marker before the end marker in the chart first.");
        return range;
    };
    timing_.onFilled = [this] {
        if (std::exchange(showsFindings_, false)) timing_.ShowFindings();
    };
    QObject::connect(&whileDecoding_, &QTimer::timeout, [this] { FollowDecoding(); });
    QObject::connect(&whileReading_, &QTimer::timeout, [this] { FollowReading(); });
    targetMenu_.Show(nullptr);
    ShowState();
}

Workbench::~Workbench() {
    DropRecording();
    component_.Disconnect();
    host_.onEvent = nullptr;
    docking_.onCommandsUpdated = nullptr;
}

QString Workbench::Start(const QString& directory, const char* component) {
    CString failure = component_.Load(directory.toStdString(), component);
    if (failure.empty()) failure = component_.Connect();
    if (failure.empty()) EnterUsersWorkspace();
    return FromUtf8(failure);
}

bool Workbench::Open(const TraceFiles& files) {
    if (IsWorkspaceName(files.First())) return OpenWorkspace(files.First());
    return Open(files, StartReading(files, ReadingOptions(settings_)));
}

bool Workbench::Open(const TraceFiles& files, std::unique_ptr<BackgroundRead> reading) {
    if (!ShowOrTell(InService(reading->FirstLook(files.Name(), &window_)))) return false;
    TraceIsIn(files);
    if (!reading->IsReading()) return true;
    reading_ = std::move(reading);
    firstPosition_ = Position();
    whileReading_.start(kWhileReading);
    FollowReading();
    return true;
}

void Workbench::FollowReading() {
    if (reading_->IsReady()) return ShowWhole(Read(traceFiles_, *std::exchange(reading_, nullptr)));
    window_.statusBar()->showMessage(
        QStringLiteral("This is the beginning. The rest is being read: %L1 events so far.")
            .arg(reading_->Done()));
}

// In place of its beginning: where the user has looked at that, the display stays.
void Workbench::ShowWhole(OpenedTrace trace) {
    whileReading_.stop();
    window_.statusBar()->clearMessage();
    if (!trace) {
        window_.ShowError("Cannot Read On", "The beginning is shown; the rest cannot be read.\n\n" +
                                                FromUtf8(trace.GetError().message));
        return;
    }
    desktop::Workspace now = Describe();
    if (now.position == firstPosition_) now.position.reset();
    QStringList damage;
    ShowArranged(std::move(*trace), now, damage);
}

// It has something to find.
bool Workbench::OpenDemonstration() {
    if (!ShowOrTell(ReadDemonstration())) return false;
    showsFindings_ = true;
    return true;
}

Workbench::OpenedTrace Workbench::Read(const TraceFiles& files, BackgroundRead& reading) {
    return InService(reading.Finish(files.Name(), &window_));
}

Workbench::OpenedTrace Workbench::InService(OpenedRecording recording) {
    if (!recording) return recording.GetError();
    auto trace = std::make_unique<service::TraceService>();
    trace->SetRecording(std::move(*recording));
    return trace;
}

Workbench::OpenedTrace Workbench::ReadDemonstration() {
    auto folder = std::make_unique<QTemporaryDir>();
    const QString path = folder->filePath("demonstration.log");
    const std::string file = QFile::encodeName(path).toStdString();
    const std::string failure = simulation::WriteDemonstration(file);
    if (!failure.empty()) return Error{failure};
    OpenedTrace trace = Read(path, *StartReading(path));
    if (trace) newDemonstration_ = std::move(folder);
    return trace;
}

bool Workbench::ShowOrTell(OpenedTrace trace) {
    if (trace) return Show(std::move(*trace));
    if (!trace.GetError().cancelled) {
        window_.ShowError("Cannot Open Trace", FromUtf8(trace.GetError().message));
    }
    return false;
}

bool Workbench::Show(std::unique_ptr<service::TraceService> trace) {
    if (!component_.IsConnected()) {
        window_.ShowError("Cannot Show Trace", "The component that shows traces is not there.");
        return false;
    }
    DropRecording();
    docking_.Windows().BringBack();
    OpenTraceWindow();
    BringTimingBack();
    ShowInWindows(std::move(trace));
    return true;
}

void Workbench::BringTimingBack() {
    if (docking_.Windows().All().empty()) return;
    timing_.Place(*docking_.Windows().All().front());
    timing_.BringBack();
}

void Workbench::ShowInWindows(std::unique_ptr<service::TraceService> trace) {
    demonstration_ = std::move(newDemonstration_);
    Install(std::move(trace));
    host_.Broadcast(host::kEventTargetConnected);
    host_.Broadcast(host::kEventTraceReady);
    RecordingChanged();
}

// Components ask for the service anew with every operation.
void Workbench::Install(std::unique_ptr<service::TraceService> trace) {
    trace->SetDialogs(&dialogs_);
    host_.AddService(host::kOSTraceService, static_cast<IQOSTraceService*>(trace.get()));
    host_.AddService(host::kOSTraceAvailability, static_cast<IQOSTraceAvailability*>(trace.get()));
    trace_ = std::move(trace);
}

void Workbench::CloseRecording() {
    if (!trace_->GetRecording() && !target_) return;
    DropRecording();
    docking_.Windows().PutAway();
    timing_.PutAway();
}

void Workbench::DropRecording() {
    whileReading_.stop();
    if (std::exchange(reading_, nullptr)) window_.statusBar()->clearMessage();
    if (target_) return DisconnectTarget();
    if (!trace_->GetRecording()) return;
    host_.Broadcast(host::kEventTraceCleared);
    host_.Broadcast(host::kEventTargetDisconnected);
    Install(std::make_unique<service::TraceService>());
    demonstration_.reset();
    RecordingChanged();
}

// It is known by its files from now on.
void Workbench::TraceIsIn(const TraceFiles& files) {
    traceFiles_ = files.Absolute();
    window_.Recent().Add(traceFiles_);
    window_.RememberFolderOf(traceFiles_.First());
    window_.ShowRecording(trace_.get());
    window_.ShowUnsaved(target_ != nullptr);
    ShowState();
}

// Nothing is looked at any more once everything is decoded.
void Workbench::FollowDecoding() {
    const service::DecodedRecording* const decoded = trace_->Decoded();
    if (!decoded || decoded->IsComplete()) whileDecoding_.stop();
    timing_.Strip().Advance();
    ShowState();
}

void Workbench::RecordingChanged() {
    showsFindings_ = false;
    timing_.SetRecording(trace_->ShareDecoded(), trace_->ShownProcessor());
    whileDecoding_.start(kWhileDecoding);
    traceFiles_ = {};
    closedAt_.reset();
    docking_.UpdateCommands();
    window_.ShowRecording(trace_.get());
    window_.ShowUnsaved(trace_->GetRecording() && (demonstration_ || target_));
    ShowState();
}

bool Workbench::SaveRecording(const QString& path) {
    const std::string from = trace_->GetRecording()->Path();
    const std::string to = QFile::encodeName(path).toStdString();
    QString failure;
    for (const auto& [source, copy] :
         {std::pair(from, to),
          std::pair(simulation::ResourcePath(from), simulation::ResourcePath(to))}) {
        if (failure.isEmpty())
            failure = CopyFile(QFile::decodeName(source.c_str()), QFile::decodeName(copy.c_str()));
    }
    if (failure.isEmpty()) {
        TraceIsIn(path);
    } else {
        window_.ShowError("Cannot Save Recording", failure);
    }
    return failure.isEmpty();
}

void Workbench::ShowProcessor(std::uint32_t processor) {
    if (processor == trace_->ShownProcessor()) return;
    host_.Broadcast(host::kEventTraceCleared);
    trace_->ShowProcessor(processor);
    host_.Broadcast(host::kEventTraceReady);
    docking_.UpdateCommands();
    window_.ShowRecording(trace_.get());
    timing_.SetRecording(trace_->ShareDecoded(), processor);
}

// A little of what is around it is shown too. What lies outside the trace is left out.
void Workbench::ShowStretch(const Stretch& stretch) {
    if (!trace_->GetRecording() || !Range()) return;
    if (stretch.processor) ShowProcessor(*stretch.processor);
    std::int64_t first = 0;
    trace_->GetEventTime(0, &first);
    const std::int64_t last = trace_->GetRecording()->LastTime();
    const std::int64_t start = std::clamp(stretch.start, first, last);
    const std::int64_t end = std::clamp(stretch.end, start, last);
    const auto length = static_cast<double>(std::max<std::int64_t>(end - start, 1));
    constexpr double kAround = 0.1;
    host::OSTracePosition position;
    position.displayStart =
        std::max<double>(static_cast<double>(first), static_cast<double>(start) - kAround * length);
    position.displayEnd =
        std::min<double>(static_cast<double>(last), static_cast<double>(end) + kAround * length);
    position.gridTime = length / 5;
    position.startMarker = static_cast<double>(start);
    position.endMarker = static_cast<double>(end);
    position.indicator = static_cast<double>(std::clamp(stretch.at, first, last));
    Range()->SetPosition(&position);
}

void Workbench::ShowDisplay(double start, double end) {
    auto position = Position();
    if (!position) return;
    position->displayStart = start;
    position->displayEnd = end;
    position->gridTime = (end - start) / 5;
    Range()->SetPosition(&*position);
}

// The chart was painted anew.
void Workbench::FollowDisplay() {
    const auto position = Position();
    if (!position) return timing_.Strip().SetDisplay(std::nullopt);
    timing_.Strip().SetDisplay(std::pair(position->displayStart, position->displayEnd));
}

void Workbench::LoadRules(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        window_.ShowError("Cannot Load Rules", path + ": " + file.errorString());
        return;
    }
    window_.RememberFolderOf(path);
    timing_.SetRules(file.readAll().toStdString(), path.toStdString());
}

void Workbench::SaveRules(const QString& path) {
    QSaveFile file(path);
    const QByteArray text = QByteArray::fromStdString(timing_.RulesText());
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit()) return;
    window_.ShowError("Cannot Save Rules", path + ": " + file.errorString());
}

void Workbench::OpenTraceWindow() {
    docking_.GiveCommand(ids::kOpenOSTrace);
}

}  // namespace kvx::desktop
