#include "component/WorkingDay.h"

#include "host/FormatViewClient.h"
#include "host/OSTraceRange.h"
#include "host/WorkSpaceClient.h"
#include "support/DrawnWindow.h"

namespace kvx::test {
namespace {

constexpr std::uint32_t kOpenOSTrace = 32770;
constexpr std::uint32_t kOpenOSAnalyze = 32773;

class Items : public IQFormatItemList {
  public:
    HRESULT KVX_CALL Append(BSTR) override { return S_OK; }
};

void OpenWindows(TestHost& host) {
    host.docking.Command(kOpenOSTrace);
    host.docking.Command(kOpenOSAnalyze);
}

void LookAtWindows(TestHost& host) {
    for (const auto& window : host.docking.windows) {
        DrawingOf(window->GetSafeHwnd());
    }
}

// Every command that a menu or a toolbar offers, and a key of each window.
void UseEveryCommand(TestHost& host) {
    std::set<std::uint32_t> commands;
    std::set<HWND> windows;
    for (const auto& [identifier, registration] : host.docking.registrations) {
        commands.insert(registration.menuCommands.begin(), registration.menuCommands.end());
        commands.insert(registration.toolbarCommands.begin(), registration.toolbarCommands.end());
        windows.insert(registration.docking);
    }
    for (const std::uint32_t command : commands) host.docking.Command(command);
    for (const HWND window : windows) host.docking.Press(window, 'S');
}

void AskTargets(TestHost& host) {
    for (const auto& window : host.docking.windows) {
        Bstr key;
        IQCommandTarget* const target = host.docking.TargetIn(window->GetSafeHwnd());
        if (target) target->GetHelpKey(key.Receive());
    }
}

void RunTheTarget(TestHost& host) {
    host.runState.running = true;
    UseEveryCommand(host);
    for (const auto& window : host.docking.windows) {
        IQCommandTarget* const target = host.docking.TargetIn(window->GetSafeHwnd());
        if (target) target->OnCloseRequest();
    }
    host.runState.running = false;
    host.Send(host::kEventTraceReady);
}

void ChangeFormat(TestHost& host) {
    if (!host.advised.contains(host::kFormatViewClient)) return;
    auto* const format = host.Client<IQFormatViewClient2>(host::kFormatViewClient);
    Items items;
    format->GetItemNames(&items);
    format->SetFont(Bstr("Liberation Mono").Get(), 9);
    format->SetColours(Bstr("Text").Get(), 3, 16);
    format->SetSelectedTextColours(0, 10);
}

void KeepWorkspace(TestHost& host) {
    if (!host.advised.contains(host::kWorkSpaceClient2)) return;
    auto* const client = host.Client<IQWorkSpaceClient2>(host::kWorkSpaceClient2);
    std::int32_t modified = 0;
    client->WorkspaceSaving(1, 2, 4);
    client->QueryModified(1, 2, 3, &modified);
    client->WorkspaceOpened(1, 2, Bstr("demo").Get(), 4);
}

void UseInterfaces(TestHost& host, const Session& session) {
    auto* const stepping =
        session.Module().Query<IQSteppingClient>(Session::kKey, host::kSteppingClient);
    for (const std::int32_t reason : {1, 7}) {
        stepping->StepBegin(2, reason);
        stepping->StepDone();
        stepping->StepEnd();
    }
    session.Module().Query<IQErrorReporter>(Session::kKey, host::kErrorReporter)->ReportError(1, 2);
    session.Component().Reserved3();
    session.Component().Reserved4();
    if (!host.offered.contains(host::kOSTraceRange)) return;
    host.Client<host::IQOSTraceRange>(host::kOSTraceRange)->SetDisplayRange(100, 900);
}

}  // namespace

std::vector<std::string> LiveThroughADay(TestHost& host) {
    ModuleBoxes boxes;
    {
        const Session session(host);
        OpenWindows(host);
        host.Send(host::kEventTargetConnected);
        host.Send(host::kEventTraceReady);
        LookAtWindows(host);
        UseEveryCommand(host);
        OpenWindows(host);
        ChangeFormat(host);
        RunTheTarget(host);
        UseInterfaces(host, session);
        AskTargets(host);
        LookAtWindows(host);
        KeepWorkspace(host);
        for (const GUID& event : {host::kEventTraceCleared, host::kEventTargetDisconnected,
                                  host::kEventDebuggerDisconnected, host::kEventDebuggerConnected,
                                  host::kEventTargetConnected, host::kEventTraceReady}) {
            host.Send(event);
            LookAtWindows(host);
        }
        while (host.docking.Docking()) host.docking.Close(host.docking.Docking());
        OpenWindows(host);
    }
    boxes.TakeDialogs();
    return boxes.Take();
}

}  // namespace kvx::test
