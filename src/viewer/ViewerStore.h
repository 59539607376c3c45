#pragma once
// What the viewer keeps for its user, in a profile file: the component's texts and properties.

#include "host/Identifiers.h"
#include "host/Services.h"
#include "hosting/Interface.h"

namespace kvx::viewer {

// Of the user whose program runs; its folder is made. Empty: there is none.
CString UsersProfile();

class ViewerTexts final
    : public hosting::Implementation<IQWorkspaceStoreService, host::kWorkspaceStore> {
  public:
    // file empty: nothing is kept.
    explicit ViewerTexts(CString file) : file_(std::move(file)) {}
    // The viewer has one workspace, which is the user's own.
    HRESULT KVX_CALL WriteText(const WorkspaceKey* where, BSTR key, BSTR text) override;
    HRESULT KVX_CALL ReadText(const WorkspaceKey* where, BSTR key, BSTR* text) override;

  private:
    const CString file_;
};

class ViewerProperties final
    : public hosting::Implementation<IQPropertyStore, host::kPropertyStore> {
  public:
    explicit ViewerProperties(CString file) : file_(std::move(file)) {}
    HRESULT KVX_CALL SetNumber(BSTR key, std::int32_t value) override;
    HRESULT KVX_CALL SetText(BSTR key, BSTR text) override;
    HRESULT KVX_CALL GetNumber(BSTR key, std::int32_t* value) override;
    HRESULT KVX_CALL GetText(BSTR key, BSTR* text) override;

  private:
    const CString file_;
};

}  // namespace kvx::viewer
