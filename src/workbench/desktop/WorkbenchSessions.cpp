// The Workbench: workspaces, and the connection to a target.

#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <utility>

#include "workbench/desktop/QtText.h"
#include "workbench/desktop/Workbench.h"
#include "workbench/desktop/window/ReadingDialog.h"

namespace kvx::desktop {
namespace {

constexpr char kLayout[] = "Window/state";
constexpr char kRange[] = "Target/range";
constexpr int kDefaultBuffer = 100'000;
constexpr qsizetype kDamageTold = 10;

QString Told(QStringList damage) {
    const qsizetype more = damage.size() - kDamageTold;
    if (more > 0) damage = damage.mid(0, kDamageTold) << QStringLiteral("(%1 more)").arg(more);
    return damage.join('\n');
}

}  // namespace

void Workbench::ConnectTarget() {
    if (target_ || !component_.IsConnected()) return;
    DropRecording();
    docking_.Windows().BringBack();
    const int records = settings_.Get(kBufferSetting).toInt();
    target_ = std::make_unique<TargetSession>(
        host_, services_, *trace_,
        static_cast<std::size_t>(records > 0 ? records : kDefaultBuffer));
    target_->SetRangeCondition(settings_.Get(kRange).toString() == "free" ? kRangeFree
                                                                          : kRangeFull);
    target_->onChanged = [this] { targetMenu_.Show(target_.get()); };
    target_->onRecordingChanged = [this] { RecordingChanged(); };
    target_->onFailure = [this](const QString& why) {
        window_.ShowError("Cannot Show Recording", why);
    };
    OpenTraceWindow();
    BringTimingBack();
    targetMenu_.Show(target_.get());
    RecordingChanged();
}

void Workbench::DisconnectTarget() {
    if (!target_) return;
    settings_.Set(kRange, target_->RangeCondition() == kRangeFree ? "free" : "full");
    target_->onRecordingChanged = nullptr;
    target_.reset();
    targetMenu_.Show(nullptr);
    RecordingChanged();
}

std::optional<WorkspaceTrace> Workbench::OpenTrace() const {
    if (!traceFiles_.IsEmpty()) return WorkspaceTrace{traceFiles_, trace_->ShownProcessor()};
    if (trace_->GetRecording() && demonstration_) return WorkspaceTrace{};
    return std::nullopt;
}

host::IQOSTraceRange* Workbench::Range() {
    return host::Service<host::IQOSTraceRange>(&host_, host::kOSTraceRange);
}

std::optional<host::OSTracePosition> Workbench::Position() {
    host::IQOSTraceRange* const range = Range();
    host::OSTracePosition position;
    if (!range || Failed(range->GetPosition(&position))) return std::nullopt;
    return position;
}

std::optional<timing::Span> Workbench::Marked() {
    const auto position = Position();
    if (!position || position->startMarker >= position->endMarker) return std::nullopt;
    return timing::Span{static_cast<std::int64_t>(position->startMarker),
                        static_cast<std::int64_t>(position->endMarker)};
}

// After a command, or a window that the user closed.
void Workbench::FollowWindows() {
    const auto position = Position();
    if (!position && positionBefore_) closedAt_ = positionBefore_;
    positionBefore_.reset();
    if (!position || !closedAt_) return;
    const host::OSTracePosition before = *std::exchange(closedAt_, std::nullopt);
    Range()->SetPosition(&before);
}

// The trace is shown anew where it stood: components read the lines then.
void Workbench::ShowAllLines() {
    const auto position = Position();
    service::LineArrangement lines = trace_->Lines();
    for (service::ArrangedLine& line : lines) line.shown = true;
    trace_->ArrangeLines(std::move(lines));
    host_.Broadcast(host::kEventTraceReady);
    if (position && Range()) Range()->SetPosition(&*position);
}

desktop::Workspace Workbench::Describe() {
    desktop::Workspace workspace{OpenTrace(), {}, {}, docking_.Windows().Layout(), {}};
    if (!workspace.trace) return workspace;
    workspace.lines = trace_->Lines();
    workspace.position = Position();
    return workspace;
}

bool Workbench::OpenWorkspace(const QString& path) {
    if (!MayLeaveWorkspace()) return false;
    Result<WorkspaceRead> read = ReadWorkspace(path);
    if (!read) {
        window_.ShowError("Cannot Open Workspace", FromUtf8(read.GetError().message));
        return false;
    }
    QStringList damage = read->damage;
    const QString absolute = QFileInfo(path).absoluteFilePath();
    EnterWorkspace(absolute, read->workspace, damage);
    window_.Recent().Add(absolute);
    window_.ShowRecording(trace_.get());
    ShowState();
    if (damage.isEmpty()) return true;
    window_.ShowError("Workspace Is Damaged",
                      "The workspace is open, but for this:\n\n" + Told(damage));
    return true;
}

void Workbench::EnterWorkspace(const QString& path, const desktop::Workspace& workspace,
                               QStringList& damage) {
    DropRecording();
    docking_.CloseAll();
    workspace_.Enter(path, workspace.texts);
    DockingWindows& windows = docking_.Windows();
    if (workspace.trace && component_.IsConnected()) ShowWorkspaceTrace(workspace, damage);
    if (!windows.All().empty()) timing_.Place(*windows.All().front());
    if (!windows.RestoreLayout(workspace.layout)) {
        if (!workspace.layout.isEmpty()) damage << "Where the windows stand is not known.";
        for (DockingWindow* window : windows.All()) windows.SetState(*window, kDockShow);
    }
    targetMenu_.Show(nullptr);  // its toolbar is no part of a layout
    if (!trace_->GetRecording()) {
        windows.PutAway();
        timing_.PutAway();
    } else if (windows.All().empty()) {
        OpenTraceWindow();
    }
    windows.ActivateSeen();
    workspace_.MarkSaved();
}

// False: it cannot be read.
bool Workbench::ShowWorkspaceTrace(const desktop::Workspace& workspace, QStringList& damage) {
    const WorkspaceTrace& wanted = *workspace.trace;
    OpenedTrace trace =
        wanted.files.IsEmpty()
            ? ReadDemonstration()
            : Read(wanted.files, *StartReading(wanted.files, ReadingOptions(settings_)));
    if (!trace) {
        damage << (trace.GetError().cancelled ? "The trace was not opened."
                                              : FromUtf8(trace.GetError().message));
        return false;
    }
    ShowArranged(std::move(*trace), workspace, damage);
    return true;
}

void Workbench::ShowArranged(std::unique_ptr<service::TraceService> trace,
                             const desktop::Workspace& workspace, QStringList& damage) {
    const WorkspaceTrace& wanted = *workspace.trace;
    if (!trace->ShowProcessor(wanted.processor)) {
        damage << QStringLiteral("The trace has no processor %1.").arg(wanted.processor);
    }
    trace->ArrangeLines(workspace.lines);
    DropRecording();
    ShowInWindows(std::move(trace));
    if (!wanted.files.IsEmpty()) TraceIsIn(wanted.files);
    host::IQOSTraceRange* const range = workspace.position ? Range() : nullptr;
    if (range && range->SetPosition(&*workspace.position) == E_INVALIDARG) {
        damage << "The times that were shown are not in the trace.";
    }
}

// A log that was written anew is read anew; what it does not hold any more is no damage.
void Workbench::Reload() {
    if (traceFiles_.IsEmpty() || target_) return;
    QStringList damage;
    if (!ShowWorkspaceTrace(Describe(), damage)) {
        window_.ShowError("Cannot Open Trace", Told(damage));
    }
}

bool Workbench::SaveWorkspace(const QString& path) {
    const QString failure = workspace_.Save(QFileInfo(path).absoluteFilePath());
    if (failure.isEmpty()) {
        window_.Recent().Add(path);
        window_.ShowRecording(trace_.get());
    } else {
        window_.ShowError("Cannot Save Workspace", failure);
    }
    ShowState();
    return failure.isEmpty();
}

void Workbench::CloseWorkspace() {
    if (workspace_.Path().isEmpty() || !MayLeaveWorkspace()) return;
    DropRecording();
    docking_.CloseAll();
    EnterUsersWorkspace();
    window_.ShowRecording(trace_.get());
    ShowState();
}

// Its windows wait for a trace.
void Workbench::EnterUsersWorkspace() {
    workspace_.Enter({}, std::nullopt);
    docking_.Windows().RestoreLayout(settings_.Get(kLayout).toByteArray());
    targetMenu_.Show(target_.get());
    docking_.Windows().PutAway();
    timing_.PutAway();
}

bool Workbench::MayLeaveWorkspace() {
    if (workspace_.Path().isEmpty()) {
        workspace_.KeepInSettings();
        settings_.Set(kLayout, docking_.Windows().Layout());
        return true;
    }
    if (!workspace_.IsModified()) return true;
    const QString name = QFileInfo(workspace_.Path()).fileName();
    const auto answer = QMessageBox::question(
        &window_, "Save Workspace", QStringLiteral("Save the changes to %1?").arg(name),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    if (answer == QMessageBox::Save) return SaveWorkspace(workspace_.Path());
    return answer == QMessageBox::Discard;
}

}  // namespace kvx::desktop
