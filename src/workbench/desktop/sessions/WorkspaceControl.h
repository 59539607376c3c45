#pragma once
// The workspace: its file, whether it has changed, and what components keep in it. While none is
// opened from a file, the settings hold one without a trace, which the next run finds again.

#include <functional>

#include "hosting/HostObject.h"
#include "workbench/desktop/sessions/WorkspaceFile.h"

namespace kvx::desktop {

// The part of a workspace that the host itself knows, and what the host does for it.
class IWorkspaceHost {
  public:
    // All but the texts.
    virtual Workspace Describe() = 0;
    // See DockingWindows::Arrangement.
    virtual QString Arrangement() const = 0;

  protected:
    ~IWorkspaceHost() = default;
};

class WorkspaceControl {
  public:
    // All must outlive the object.
    WorkspaceControl(hosting::HostObject& host, TextsStore& store, IWorkspaceHost& workbench)
        : host_(host), store_(store), workbench_(workbench) {}

    // Empty while none is opened from a file.
    const QString& Path() const { return path_; }
    // Something that the file does not hold yet. Never without a file: nothing is lost then.
    bool IsModified() const;

    // Components bring back the windows and settings that the workspace holds; with an empty path
    // and no texts, those of the settings. No window of theirs is open.
    void Enter(const QString& path, std::optional<WorkspaceTexts> texts);
    // What the host brought back by itself is there now: nothing has changed from here on.
    void MarkSaved();
    // Writes it, to that file from now on. A text that says what failed, or an empty one.
    QString Save(const QString& path);
    // Without a file: lets the settings take what components keep.
    void KeepInSettings();

  private:
    void TellSaving();

    hosting::HostObject& host_;
    TextsStore& store_;
    IWorkspaceHost& workbench_;
    QString path_;
    Workspace saved_;
    QString savedArrangement_;
    bool isSavingDue_ = false;  // components believe that they are saved, and are not
};

}  // namespace kvx::desktop
