#include "viewer/ViewerDocking.h"

#include <algorithm>

#include "host/CommandIds.h"

namespace kvx::viewer {
namespace {

constexpr std::size_t kMostPanes = 2;

// Whether a popup of the menu has the command.
bool HasCommand(const MenuNode& node, std::uint32_t command) {
    for (std::uint32_t i = 0; i < node.childCount; ++i) {
        if (node.children[i].command == command || HasCommand(node.children[i], command))
            return true;
    }
    return false;
}

}  // namespace

Pane* ViewerDocking::Find(HWND docking) const {
    const auto found = std::ranges::find_if(
        panes_, [&](const auto& pane) { return pane->GetSafeHwnd() == docking; });
    return docking && found != panes_.end() ? found->get() : nullptr;
}

Pane* ViewerDocking::FindByName(const CString& name) const {
    const auto found =
        std::ranges::find_if(panes_, [&](const auto& pane) { return pane->Name() == name; });
    return found == panes_.end() ? nullptr : found->get();
}

CString ViewerDocking::FreeName(const CString& base) const {
    CString name = base;
    for (int number = 2; FindByName(name); ++number) name = base + std::to_string(number);
    return name;
}

CString ViewerDocking::KeyText(const Command& command) const {
    for (const auto& pane : panes_) {
        CString text = KeyTextOf(pane->keys, command);
        if (!text.empty()) return text;
    }
    return {};
}

void ViewerDocking::Run(const Command& command) {
    command.target->OnCommand(command.id);
    UpdateToolbars();
    onCommandDone();
}

bool ViewerDocking::GiveCommand(std::uint32_t command) {
    const auto found = inMenuBar_.find(command);
    if (found == inMenuBar_.end()) return false;
    Run(found->second);
    return true;
}

void ViewerDocking::Close(Pane& pane) {
    pane.DestroyWindow();
    const auto found =
        std::ranges::find_if(panes_, [&](const auto& each) { return each.get() == &pane; });
    closed_.push_back(std::move(*found));
    panes_.erase(found);
    onPanesChanged();
}

void ViewerDocking::RequestClose(Pane& pane) {
    if (!pane.target) return Close(pane);
    const CString title = pane.Title();
    if (pane.target->OnCloseRequest() == S_OK) return Close(pane);
    onCloseRefused(title);
}

void ViewerDocking::Follow(const CWnd* focus) {
    const auto holds = [&](const auto& pane) {
        return focus && (focus == pane.get() || pane->IsChild(focus));
    };
    if (std::ranges::none_of(panes_, holds)) return;
    for (const auto& pane : panes_) pane->SetActive(holds(pane));
}

void ViewerDocking::UpdateToolbars() {
    toolbar_.Update();
    for (const auto& pane : panes_) pane->Toolbar().Update();
}

HRESULT ViewerDocking::GetMainWindow(HWND* window) {
    if (!window) return E_POINTER;
    *window = main_.GetSafeHwnd();
    return S_OK;
}

HRESULT ViewerDocking::AllocateIdentifier(std::uint32_t* identifier) {
    if (!identifier) return E_POINTER;
    *identifier = nextIdentifier_++;
    return S_OK;
}

HRESULT ViewerDocking::ReleaseIdentifier(std::uint32_t identifier) {
    return RemoveRegistrations(identifier);
}

HRESULT ViewerDocking::CreateDockingWindow(BSTR baseName, BSTR title, std::uint32_t, std::uint32_t,
                                           HWND* window, BSTR* given) {
    if (!baseName || !window || !given) return E_POINTER;
    if (panes_.size() == kMostPanes) return E_FAIL;
    return Guarded([&]() -> HRESULT {
        closed_.clear();
        auto made = std::make_unique<Pane>(FreeName(ToUtf8(baseName)), ToUtf8(title));
        Pane& pane = *made;
        pane.onClose = [this, &pane] { RequestClose(pane); };
        pane.onCommand = [this](const Command& command) { Run(command); };
        pane.Toolbar().onCommand = pane.onCommand;
        pane.Toolbar().onPrompt = [this](const CString& text) { onStatusText(text); };
        if (!pane.CreateIn(main_, nextPane_++)) return E_FAIL;
        panes_.push_back(std::move(made));
        *window = pane.GetSafeHwnd();
        *given = ToBstr(pane.Name());
        return S_OK;
    });
}

HRESULT ViewerDocking::FindDockingWindow(BSTR name, BSTR title, std::uint32_t, std::uint32_t,
                                         HWND* window) {
    if (!name || !window) return E_POINTER;
    return Guarded([&] {
        const Pane* const pane = FindByName(ToUtf8(name));
        if (!pane || pane->Title() != ToUtf8(title)) return E_FAIL;
        *window = pane->GetSafeHwnd();
        return S_OK;
    });
}

// One that is hidden and that nobody fills is what is left of a window that could not be made.
HRESULT ViewerDocking::SetWindowState(HWND docking, std::int32_t state) {
    Pane* const pane = Find(docking);
    if (!pane) return E_INVALIDARG;
    return Guarded([&] {
        if (state & kDockToggleAllowed)
            onStatusText("The windows of this viewer always stand side by side.");
        if (state != kDockHide && state != kDockShow) return S_OK;
        if (state == kDockHide && !pane->target) {
            Close(*pane);
            return S_OK;
        }
        pane->SetHidden(state == kDockHide);
        onPanesChanged();
        if (state == kDockShow) pane->FocusControl();
        return S_OK;
    });
}

HRESULT ViewerDocking::GetWindowState(HWND docking, std::int32_t* state) {
    const Pane* const pane = Find(docking);
    if (!pane) return E_INVALIDARG;
    if (!state) return E_POINTER;
    *state = pane->IsHidden() ? kDockHide : kDockShow;
    return S_OK;
}

HRESULT ViewerDocking::RegisterWindow(HWND docking, HWND control, std::uint32_t identifier,
                                      const GUID&, IQCommandTarget* target) {
    Pane* const pane = Find(docking);
    if (!pane || !control) return E_INVALIDARG;
    return Guarded([&] {
        filled_[identifier] = pane;
        pane->target = target;
        pane->SetControl(control);
        return S_OK;
    });
}

HRESULT ViewerDocking::AddMenu(std::uint32_t identifier, HWND docking, const MenuNode* root,
                               IQCommandTarget* target) {
    if (!root || !target) return E_POINTER;
    if (docking && !Find(docking)) return E_INVALIDARG;
    return Guarded([&] {
        menus_.Merge(*root, target, identifier);
        for (const std::uint32_t command : {ids::kOpenOSTrace, ids::kOpenOSAnalyze}) {
            if (!docking && HasCommand(*root, command)) inMenuBar_[command] = {target, command};
        }
        onMenusChanged();
        return S_OK;
    });
}

HRESULT ViewerDocking::AddToolbar(std::uint32_t identifier, HWND docking, BSTR, BSTR,
                                  const ToolbarButton* buttons, std::uint32_t count,
                                  IQCommandTarget* target) {
    if (!buttons || !target) return E_POINTER;
    Pane* const pane = Find(docking);
    if (docking && !pane) return E_INVALIDARG;
    return Guarded([&] {
        (pane ? pane->Toolbar() : toolbar_).AddButtons(buttons, count, target, identifier);
        return S_OK;
    });
}

HRESULT ViewerDocking::AddAccelerators(std::uint32_t identifier, HWND docking,
                                       const Accelerator* keys, std::uint32_t count,
                                       IQCommandTarget* target) {
    if (!keys || !target) return E_POINTER;
    Pane* const pane = Find(docking);
    if (!pane) return E_INVALIDARG;
    return Guarded([&] {
        for (std::uint32_t i = 0; i < count; ++i)
            pane->keys.push_back({keys[i], target, identifier});
        return S_OK;
    });
}

HRESULT ViewerDocking::RemoveRegistrations(std::uint32_t identifier) {
    return Guarded([&] {
        menus_.Remove(identifier);
        toolbar_.Remove(identifier);
        for (const auto& pane : panes_) {
            pane->Toolbar().Remove(identifier);
            std::erase_if(pane->keys,
                          [&](const auto& key) { return key.identifier == identifier; });
        }
        const auto found = filled_.find(identifier);
        if (found != filled_.end()) {
            found->second->target = nullptr;
            found->second->SetControl(nullptr);
            filled_.erase(found);
        }
        onMenusChanged();
        return S_OK;
    });
}

HRESULT ViewerDocking::IsToolbarShown(HWND docking, std::int32_t* shown) {
    if (!shown) return E_POINTER;
    const Pane* const pane = Find(docking);
    if (!pane) return E_FAIL;
    *shown = pane->IsToolbarShown() ? 1 : 0;
    return S_OK;
}

HRESULT ViewerDocking::ShowToolbar(HWND docking, std::int32_t show) {
    Pane* const pane = Find(docking);
    if (!pane) return E_FAIL;
    return Guarded([&] {
        pane->ShowToolbar(show != 0);
        return S_OK;
    });
}

HRESULT ViewerDocking::CustomizeToolbar(HWND) {
    return Guarded([&] {
        onStatusText("The toolbars of this viewer cannot be changed.");
        return E_NOTIMPL;
    });
}

HRESULT ViewerDocking::SetStatusText(BSTR text) {
    return Guarded([&] {
        onStatusText(ToUtf8(text));
        return S_OK;
    });
}

}  // namespace kvx::viewer
