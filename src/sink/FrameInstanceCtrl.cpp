#include "sink/FrameInstanceCtrl.h"

#include "framework/SystemColors.h"
#include "platform/base/Resources.h"

CFrameInstanceCtrl::CFrameInstanceCtrl(IQHost* host, IDockingManager* docking,
                                       CStatusFrameWnd& frame, const WindowTraits& traits)
    : CKvxDebugInstanceDataCtrl(host, docking),
      frame_(frame),
      traits_(traits),
      textColour_(kColorSystem),
      backgroundColour_(kColorSystem) {}

const MessageMap& CFrameInstanceCtrl::GetMessageMap() const {
    using Self = CFrameInstanceCtrl;
    static constexpr MessageMapEntry kEntries[] = {
        ON_WM_CREATE<&Self::OnCreate>(),
        ON_WM_SIZE<&Self::OnSize>(),
        ON_MESSAGE<WM_SETFOCUS, &Self::OnSetFocus>(),
    };
    static const MessageMap kMap{&CKvxDebugInstanceDataCtrl::GetMessageMap(), kEntries};
    return kMap;
}

bool CFrameInstanceCtrl::IsSender(std::uintptr_t datum) const {
    const IViewSender* const view = Sender();
    return view && reinterpret_cast<std::uintptr_t>(view) == datum;
}

int CFrameInstanceCtrl::OnCreate(const CREATESTRUCT* create) {
    const int result = CKvxDebugInstanceDataCtrl::OnCreate(create);
    if (result == -1) return -1;
    RegisterWithDocking();
    if (!frame_.Create(WS_CHILD | WS_VISIBLE | WS_BORDER, RECT{}, this, kFirstPane)) return -1;
    ApplyFont();
    ConnectView();
    RefreshData();
    // The docking window may have had the keyboard before there was a view to take it.
    if (GetFocus() == this) frame_.SetFocus();
    return result;
}

LRESULT CFrameInstanceCtrl::OnSetFocus(WPARAM, LPARAM) {
    if (frame_.IsWindow()) frame_.SetFocus();
    return 0;
}

void CFrameInstanceCtrl::RegisterWithDocking() {
    IDockingManager* const docking = Docking();
    if (!docking) return;
    const HWND window = DockingWindow();
    const GUID& owner = kvx::host::kComponent;
    docking->RegisterWindow(window, this, MenuId(), owner);
    docking->AttachMenu(window, traits_.menu, MenuId(), owner);
    docking->BindWindow(MenuId(), this);
    docking->BindModule(MenuId(), AfxGetResourceHandle());
    RegisterGroups(*docking);
    docking->CreateToolbar(window, traits_.toolbar, MenuId(), owner, traits_.optionalCommands);
}

void CFrameInstanceCtrl::OnSize(UINT, int cx, int cy) {
    Default();
    if (frame_.IsWindow()) frame_.MoveWindow(0, 0, cx, cy);
}

bool CFrameInstanceCtrl::OnCmdMsg(UINT id, UINT code, CCmdUI* ui) {
    return frame_.OnCmdMsg(id, code, ui) || CKvxDebugInstanceDataCtrl::OnCmdMsg(id, code, ui);
}

void CFrameInstanceCtrl::SetColours(const CString& item, int text, int background) {
    textColour_ = text;
    backgroundColour_ = background;
    frame_.ForwardViewColors(item, ResolveColor(text, false), ResolveColor(background, true));
}

void CFrameInstanceCtrl::SaveSettings(IWorkspaceStore& store, const CString&) {
    SetSettingsModified(false);
    frame_.SaveSettings(store, traits_.settingsPrefix);
}

void CFrameInstanceCtrl::LoadSettings(IWorkspaceStore& store, const CString&) {
    SetSettingsModified(false);
    frame_.LoadSettings(store, traits_.settingsPrefix);
}
