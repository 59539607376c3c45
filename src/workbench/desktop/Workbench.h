#pragma once
// The host as a whole: its services, the component, the main window and the recording that is open.

#include <QTemporaryDir>
#include <QTimer>
#include <memory>

#include "hosting/ComponentModule.h"
#include "workbench/desktop/BackgroundRead.h"
#include "workbench/desktop/docking/MenuKeys.h"
#include "workbench/desktop/docking/PaintWatch.h"
#include "workbench/desktop/docking/WorkbenchDocking.h"
#include "workbench/desktop/services/ServiceDialogs.h"
#include "workbench/desktop/services/WorkbenchServices.h"
#include "workbench/desktop/sessions/TargetMenu.h"
#include "workbench/desktop/sessions/WorkspaceControl.h"
#include "workbench/desktop/timing/TimingDocks.h"
#include "workbench/desktop/window/HelpBook.h"
#include "workbench/desktop/window/MainWindow.h"

namespace kvx::desktop {

class Workbench final : private IWorkspaceHost {
  public:
    // settings must outlive the workbench.
    explicit Workbench(Settings& settings);
    // Closes the recording and takes the component down.
    ~Workbench();
    Workbench(const Workbench&) = delete;
    Workbench& operator=(const Workbench&) = delete;

    // Loads the component from the directory and connects it. A text that says what failed, or an
    // empty one; the window works without it, but shows no recording.
    QString Start(const QString& directory, const char* component = "KvxOSTrace");

    // Reads the file or folder, or the workspace, and shows it in place of what is open. When it
    // cannot be read, a message says so and what is open stays.
    bool Open(const TraceFiles& files);
    // The same, when reading it was started before.
    bool Open(const TraceFiles& files, std::unique_ptr<BackgroundRead> reading);
    // Shows a recording that was read already, in a service of its own; false when the component is
    // not there.
    bool Show(std::unique_ptr<service::TraceService> trace);
    // Shows the built-in demonstration.
    bool OpenDemonstration();
    // Closes it; its windows leave the screen until the next one is shown.
    void CloseRecording();
    void ShowProcessor(std::uint32_t processor);
    // Reads the file of the recording anew; display, markers and lines stay where they fit.
    void Reload();
    // Copies a recording that is nowhere else yet: the demonstration, or what a target recorded.
    bool SaveRecording(const QString& path);

    // Connecting closes the recording that is open, and opening one disconnects.
    void ConnectTarget();
    // Null while not connected.
    TargetSession* Target() { return target_.get(); }

    // Shows another workspace in place of the one that is open, once the user has been asked about
    // unsaved changes. What is damaged in it is left out, and one message says what.
    bool OpenWorkspace(const QString& path);
    bool SaveWorkspace(const QString& path);
    void CloseWorkspace();
    const WorkspaceControl& Workspace() const { return workspace_; }

    MainWindow& Window() { return window_; }
    WorkbenchDocking& Docking() { return docking_; }
    hosting::HostObject& Host() { return host_; }
    TimingDocks& Timing() { return timing_; }
    // Without a recording while none is open. Another object with every recording.
    service::TraceService& Trace() { return *trace_; }

    // Opens the OS Trace window, or brings it to the front.
    void OpenTraceWindow();

  private:
    // IWorkspaceHost
    desktop::Workspace Describe() override;
    QString Arrangement() const override { return docking_.Windows().Arrangement(); }

    using OpenedTrace = Result<std::unique_ptr<service::TraceService>>;

    // Recordings.
    // Reads the whole of it.
    OpenedTrace Read(const TraceFiles& files, BackgroundRead& reading);
    static OpenedTrace InService(OpenedRecording recording);
    // Reading that goes on while the beginning is shown.
    void FollowReading();
    void ShowWhole(OpenedTrace trace);
    OpenedTrace ReadDemonstration();
    bool ShowOrTell(OpenedTrace trace);
    // The docks of the Workbench, below the first window that is open.
    void BringTimingBack();
    void ShowInWindows(std::unique_ptr<service::TraceService> trace);
    void Install(std::unique_ptr<service::TraceService> trace);
    void DropRecording();
    void TraceIsIn(const TraceFiles& files);
    void RecordingChanged();

    // Workspaces and the target.
    void DisconnectTarget();
    void EnterWorkspace(const QString& path, const desktop::Workspace& workspace,
                        QStringList& damage);
    void EnterUsersWorkspace();
    std::optional<WorkspaceTrace> OpenTrace() const;
    bool ShowWorkspaceTrace(const desktop::Workspace& workspace, QStringList& damage);
    // Shows it as the workspace says.
    void ShowArranged(std::unique_ptr<service::TraceService> trace,
                      const desktop::Workspace& workspace, QStringList& damage);
    host::IQOSTraceRange* Range();
    // Nothing while no OS Trace window shows a trace.
    std::optional<host::OSTracePosition> Position();
    // What lies between the markers; nothing while they do not stand one behind the other.
    std::optional<timing::Span> Marked();
    void FollowWindows();
    void ShowAllLines();
    void ShowStretch(const Stretch& stretch);
    void ShowDisplay(double start, double end);
    void FollowDisplay();
    void Export();
    void LoadRules(const QString& path);
    void SaveRules(const QString& path);
    bool MayLeaveWorkspace();

    // Menus and state.
    void ConnectMenus();
    void AskBufferSize();
    void ShowState();
    void FollowDecoding();
    QString RecordingName() const;
    void ShowFormat();
    void ShowHelp(const QString& key);
    void ShowAbout();

    static constexpr char kBufferSetting[] = "Target/buffer";

    Settings& settings_;
    MenuKeys menuKeys_;
    hosting::HostObject host_;
    AppearanceSwitch appearance_;
    MainWindow window_;
    TargetMenu targetMenu_;
    WorkbenchServices services_;
    WorkbenchDocking docking_;
    TimingDocks timing_;
    PaintWatch paints_;
    ServiceDialogs dialogs_;
    std::unique_ptr<service::TraceService> trace_;     // never null
    std::unique_ptr<QTemporaryDir> demonstration_;     // that is shown
    std::unique_ptr<QTemporaryDir> newDemonstration_;  // that is read and will be shown
    std::unique_ptr<TargetSession> target_;
    bool showsFindings_ = false;  // once they are there
    TraceFiles traceFiles_;       // absolute; empty: in no file that stays
    hosting::ComponentModule component_;
    WorkspaceControl workspace_;
    HelpBook help_;
    QTimer whileDecoding_;                     // losses are found then
    std::unique_ptr<BackgroundRead> reading_;  // of the recording whose beginning is shown
    std::optional<host::OSTracePosition> firstPosition_;  // where that was shown first
    QTimer whileReading_;
    // Where the OS Trace window stood when its user closed it; it opens there again.
    std::optional<host::OSTracePosition> positionBefore_;
    std::optional<host::OSTracePosition> closedAt_;
};

}  // namespace kvx::desktop
