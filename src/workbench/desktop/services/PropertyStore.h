#pragma once
// Host properties in the user's settings.

#include "host/Identifiers.h"
#include "host/Services.h"
#include "hosting/Interface.h"
#include "workbench/desktop/Settings.h"

namespace kvx::desktop {

class PropertyStore final : public hosting::Implementation<IQPropertyStore, host::kPropertyStore> {
  public:
    // The settings must outlive the store.
    explicit PropertyStore(Settings& settings) : settings_(settings) {}

    HRESULT KVX_CALL SetNumber(BSTR key, std::int32_t value) override;
    HRESULT KVX_CALL SetText(BSTR key, BSTR text) override;
    // E_FAIL when no number (no text) is stored under the key.
    HRESULT KVX_CALL GetNumber(BSTR key, std::int32_t* value) override;
    HRESULT KVX_CALL GetText(BSTR key, BSTR* text) override;

  private:
    Settings& settings_;
};

}  // namespace kvx::desktop
