#include "workbench/desktop/WorkspaceControl.h"

#include "host/Identifiers.h"
#include "host/WorkSpaceClient.h"

namespace kvx::desktop {
namespace {

// The one workspace that is open; any number but 0, which means the user's own settings.
constexpr std::uintptr_t kOpenWorkspace = 1;

std::vector<IQWorkSpaceClient2*> ClientsOf(const HostObject& host) {
    return host.Clients<IQWorkSpaceClient2>(host::kWorkSpaceClient2);
}

}  // namespace

bool WorkspaceControl::IsModified() const {
    if (path_.isEmpty()) return false;
    if (isSavingDue_) return true;
    for (IQWorkSpaceClient2* client : ClientsOf(host_)) {
        std::int32_t modified = 0;
        client->QueryModified(kOpenWorkspace, 0, 0, &modified);
        if (modified != 0) return true;
    }
    return workbench_.OpenTrace() != savedTrace_ || workbench_.Arrangement() != savedArrangement_;
}

void WorkspaceControl::Enter(const QString& path, std::optional<WorkspaceTexts> texts) {
    path_ = path;
    isSavingDue_ = false;
    store_.SetTexts(std::move(texts));
    for (IQWorkSpaceClient2* client : ClientsOf(host_)) {
        client->WorkspaceOpened(kOpenWorkspace, 0, nullptr, 0);
    }
}

void WorkspaceControl::MarkSaved() {
    savedTrace_ = workbench_.OpenTrace();
    savedArrangement_ = workbench_.Arrangement();
}

QString WorkspaceControl::Save(const QString& path) {
    const std::optional<WorkspaceTexts> before = store_.Texts();
    // Only what is there now: a window that was closed leaves no texts behind.
    store_.SetTexts(WorkspaceTexts());
    TellSaving();
    const Workspace workspace{workbench_.OpenTrace(), workbench_.Layout(), *store_.Texts()};
    const QString failure = WriteWorkspace(path, workspace);
    isSavingDue_ = !failure.isEmpty();
    if (isSavingDue_) {
        store_.SetTexts(before);
        return failure;
    }
    path_ = path;
    MarkSaved();
    return {};
}

void WorkspaceControl::KeepInSettings() {
    if (path_.isEmpty()) TellSaving();
}

void WorkspaceControl::TellSaving() {
    for (IQWorkSpaceClient2* client : ClientsOf(host_)) {
        client->WorkspaceSaving(kOpenWorkspace, 0, 0);
    }
}

}  // namespace kvx::desktop
