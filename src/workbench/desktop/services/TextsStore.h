#pragma once
// Texts that components keep with the workspace. Those under the empty workspace key are the user's
// own and go into the settings; the others belong to the workspace that is open. While none is
// opened from a file, the settings keep its texts too, so that the next run finds them.

#include <map>
#include <optional>

#include "host/Identifiers.h"
#include "host/Services.h"
#include "hosting/Interface.h"
#include "workbench/desktop/Settings.h"

namespace kvx::desktop {

// By key.
using WorkspaceTexts = std::map<QString, QString>;

class TextsStore final
    : public hosting::Implementation<IQWorkspaceStoreService, host::kWorkspaceStore> {
  public:
    // The settings must outlive the store.
    explicit TextsStore(Settings& settings) : settings_(settings) {}

    // The workspace is one of its own from now on, with these texts; or, without, the settings'.
    void SetTexts(std::optional<WorkspaceTexts> texts) { texts_ = std::move(texts); }
    const std::optional<WorkspaceTexts>& Texts() const { return texts_; }

    HRESULT KVX_CALL WriteText(const WorkspaceKey* where, BSTR key, BSTR text) override;
    HRESULT KVX_CALL ReadText(const WorkspaceKey* where, BSTR key, BSTR* text) override;

  private:
    Settings& settings_;
    std::optional<WorkspaceTexts> texts_;
};

}  // namespace kvx::desktop
