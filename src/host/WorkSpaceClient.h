#pragma once
// Workspace notifications of the host, 47 in slot order. Those without a name of their own carry
// nothing that the component uses.

#include "host/Host.h"

class IQWorkSpaceClient2 : public IQUnknown {
  public:
    virtual HRESULT KVX_CALL WorkspaceEvent01() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent02() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent03() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent04() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent05() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent06() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent07() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent08() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent09() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent10() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent11() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent12(std::uintptr_t a, std::int32_t* answer) = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent13() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent14() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent15() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent16() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent17() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent18() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent19() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent20() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent21() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent22() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent23() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent24() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent25() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent26() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent27() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent28() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent29() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent30() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent31() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent32() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent33() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent34() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent35() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent36() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent37() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent38() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent39() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent40() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent41() = 0;
    // Workspace opened. workspace is the host's text for it.
    virtual HRESULT KVX_CALL WorkspaceOpened(std::uintptr_t a, std::uintptr_t b, BSTR workspace,
                                             std::uintptr_t d) = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent43() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent44() = 0;
    virtual HRESULT KVX_CALL WorkspaceEvent45() = 0;
    virtual HRESULT KVX_CALL WorkspaceSaving(std::uintptr_t a, std::uintptr_t b,
                                             std::uintptr_t d) = 0;
    // *modified: 1 when something is to be saved.
    virtual HRESULT KVX_CALL QueryModified(std::uintptr_t a, std::uintptr_t b, std::uintptr_t c,
                                           std::int32_t* modified) = 0;

  protected:
    ~IQWorkSpaceClient2() = default;
};
