#pragma once
// Texts that components keep with a workspace. Texts under the empty workspace key are the user's
// own and go into the settings; no workspace is ever open here, so a key that names one fails.

#include "host/Identifiers.h"
#include "host/Services.h"
#include "workbench/desktop/Interface.h"
#include "workbench/desktop/Settings.h"

namespace kvx::desktop {

class WorkspaceStore final : public Implementation<IQWorkspaceStoreService, host::kWorkspaceStore> {
  public:
    // The settings must outlive the store.
    explicit WorkspaceStore(Settings& settings) : settings_(settings) {}

    HRESULT KVX_CALL WriteText(const WorkspaceKey* where, BSTR key, BSTR text) override;
    HRESULT KVX_CALL ReadText(const WorkspaceKey* where, BSTR key, BSTR* text) override;

  private:
    Settings& settings_;
};

}  // namespace kvx::desktop
