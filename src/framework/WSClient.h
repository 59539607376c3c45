#pragma once
// Workspace client that answers every notification and does nothing.

#include "host/NoRefCount.h"
#include "host/WorkSpaceClient.h"

class CWSClient2 : public kvx::host::NoRefCount<IQWorkSpaceClient2> {
  public:
    HRESULT KVX_CALL WorkspaceEvent01() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent02() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent03() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent04() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent05() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent06() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent07() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent08() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent09() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent10() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent11() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent12(std::uintptr_t, std::int32_t* answer) override {
        if (!answer) return E_POINTER;
        *answer = 0;
        return S_OK;
    }
    HRESULT KVX_CALL WorkspaceEvent13() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent14() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent15() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent16() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent17() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent18() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent19() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent20() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent21() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent22() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent23() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent24() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent25() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent26() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent27() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent28() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent29() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent30() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent31() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent32() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent33() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent34() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent35() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent36() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent37() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent38() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent39() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent40() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent41() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceOpened(std::uintptr_t, std::uintptr_t, BSTR,
                                     std::uintptr_t) override {
        return S_OK;
    }
    HRESULT KVX_CALL WorkspaceEvent43() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent44() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceEvent45() override { return S_OK; }
    HRESULT KVX_CALL WorkspaceSaving(std::uintptr_t, std::uintptr_t, std::uintptr_t) override {
        return S_OK;
    }
    HRESULT KVX_CALL QueryModified(std::uintptr_t, std::uintptr_t, std::uintptr_t,
                                   std::int32_t* modified) override {
        if (!modified) return E_POINTER;
        *modified = 0;
        return S_OK;
    }
};
