#pragma once
// Receives commands from the host for the window of one identifier.

#include "framework/DockingManager.h"

class CCommandTarget : public IQCommandTarget {
  public:
    virtual ~CCommandTarget() = default;
    void Bind(ICommandWindow* window) { window_ = window; }

    HRESULT KVX_CALL OnCommand(std::uint32_t command) override;
    HRESULT KVX_CALL OnUpdateCommand(std::uint32_t command, CommandState* state) override;
    HRESULT KVX_CALL OnCloseRequest() override;
    HRESULT KVX_CALL GetHelpKey(BSTR* key) override;

  private:
    ICommandWindow* window_ = nullptr;
};
