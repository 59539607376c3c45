#include "workbench/desktop/sessions/WorkspaceControl.h"

#include "host/Identifiers.h"
#include "host/WorkSpaceClient.h"

namespace kvx::desktop {
namespace {

// The one workspace that is open; any number but 0, which means the user's own settings.
constexpr std::uintptr_t kOpenWorkspace = 1;

std::vector<IQWorkSpaceClient2*> ClientsOf(const hosting::HostObject& host) {
    return host.Clients<IQWorkSpaceClient2>(host::kWorkSpaceClient2);
}

// Work that a user would miss: not where the display stands in the trace, but the range that is
// marked.
bool IsSameWork(const Workspace& a, const Workspace& b) {
    const auto range = [](const Workspace& workspace) {
        const auto position = workspace.position.value_or(host::OSTracePosition());
        return std::pair(position.startMarker, position.endMarker);
    };
    return a.trace == b.trace && a.lines == b.lines && range(a) == range(b);
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
    return workbench_.Arrangement() != savedArrangement_ ||
           !IsSameWork(workbench_.Describe(), saved_);
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
    saved_ = workbench_.Describe();
    savedArrangement_ = workbench_.Arrangement();
}

QString WorkspaceControl::Save(const QString& path) {
    const std::optional<WorkspaceTexts> before = store_.Texts();
    // Only what is there now: a window that was closed leaves no texts behind.
    store_.SetTexts(WorkspaceTexts());
    TellSaving();
    Workspace workspace = workbench_.Describe();
    workspace.texts = *store_.Texts();
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
