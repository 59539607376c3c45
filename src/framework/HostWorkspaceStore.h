#pragma once
// The workspace store over the host's service: texts of one workspace, or of the user.

#include "host/Services.h"
#include "host/WorkspaceStore.h"

class CWorkspaceStore : public IWorkspaceStore {
  public:
    // The user's own settings, outside any workspace.
    explicit CWorkspaceStore(IQHost* host);
    // Texts of a workspace; the key's text is borrowed.
    CWorkspaceStore(IQHost* host, const WorkspaceKey& key);

    // Nothing is written, and the fallback read, without the service.
    void WriteText(const CString& key, const CString& text) override;
    CString ReadText(const CString& key, const CString& fallback) override;

  private:
    IQWorkspaceStoreService* service_;
    WorkspaceKey where_;
};
