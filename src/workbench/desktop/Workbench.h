#pragma once
// The host as a whole: its services, the component, the main window and the recording that is open.

#include <QTemporaryDir>
#include <QTimer>
#include <memory>

#include "workbench/desktop/BackgroundRead.h"
#include "workbench/desktop/ComponentModule.h"
#include "workbench/desktop/DockingHost.h"
#include "workbench/desktop/HostServices.h"
#include "workbench/desktop/MainWindow.h"
#include "workbench/desktop/ServiceDialogs.h"

namespace kvx::desktop {

class Workbench {
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

    // Reads the file or folder and shows it in place of what is open. When it cannot be read, a
    // message says so and what is open stays.
    bool Open(const QString& path);
    // The same, when reading it was started before.
    bool Open(const QString& path, std::unique_ptr<BackgroundRead> reading);
    // Shows a recording that was read already, in a service of its own; false when the component is
    // not there.
    bool Show(std::unique_ptr<service::TraceService> trace);
    // Shows the built-in demonstration.
    bool OpenDemonstration();
    // Closes it; its windows leave the screen until the next one is shown.
    void CloseRecording();
    void ShowProcessor(std::uint32_t processor);

    MainWindow& Window() { return window_; }
    DockingHost& Docking() { return docking_; }
    HostObject& Host() { return host_; }
    // Without a recording while none is open. Another object with every recording.
    service::TraceService& Trace() { return *trace_; }

    // Opens the OS Trace window, or brings it to the front.
    void OpenTraceWindow();

  private:
    bool Show(const QString& path, BackgroundRead& reading);
    void Install(std::unique_ptr<service::TraceService> trace);
    void DropRecording();
    bool IsTraceWindowOpen();
    void AfterCommand();
    void ShowAbout();

    HostObject host_;
    AppearanceSwitch appearance_;
    MainWindow window_;
    HostServices services_;
    DockingHost docking_;
    ServiceDialogs dialogs_;
    std::unique_ptr<service::TraceService> trace_;  // never null
    std::unique_ptr<QTemporaryDir> demonstration_;
    ComponentModule component_;
    QTimer refresh_;
    std::vector<QPointer<DockingWindow>> putAway_;
    bool traceWindowWasOpen_ = false;
};

}  // namespace kvx::desktop
