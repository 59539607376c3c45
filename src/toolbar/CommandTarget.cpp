#include "toolbar/CommandTarget.h"

#include "platform/base/Guarded.h"

using kvx::Guarded;

HRESULT CCommandTarget::OnCommand(std::uint32_t command) {
    return Guarded([&] { return window_ && window_->RouteCommand(command) ? S_OK : E_NOTIMPL; });
}

HRESULT CCommandTarget::OnUpdateCommand(std::uint32_t command, CommandState* state) {
    if (!state) return E_POINTER;
    return Guarded([&] {
        CCmdUI ui(command);
        if (!window_ || !window_->RouteUpdate(command, ui)) return E_NOTIMPL;
        state->enabled = ui.IsEnabled();
        state->checked = ui.Check();
        return S_OK;
    });
}

// A window that closes drops its registrations, and with them this object: nothing of it may be
// used after the call.
HRESULT CCommandTarget::OnCloseRequest() {
    ICommandWindow* const window = window_;
    return Guarded([window] { return !window || window->CloseRequested() ? S_OK : S_FALSE; });
}

HRESULT CCommandTarget::GetHelpKey(BSTR* key) {
    if (!key) return E_POINTER;
    return Guarded([&] {
        if (!window_) return E_FAIL;
        *key = kvx::ToBstr(window_->HelpKey());
        return S_OK;
    });
}
