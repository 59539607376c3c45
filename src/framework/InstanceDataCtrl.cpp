#include "framework/InstanceDataCtrl.h"

#include "host/CommandIds.h"
#include "platform/drawing/TextCache.h"

namespace ids = kvx::ids;

namespace {

int g_instances = 0;

}  // namespace

LOGFONT DefaultWindowFont() {
    LOGFONT font;
    font.lfHeight = 11;
    font.lfWidth = 8;
    font.lfFaceName = kDefaultFace;
    return font;
}

CKvxInstanceDataCtrl::CKvxInstanceDataCtrl(IQHost* host, IDockingManager* docking)
    : host_(host),
      hostFrame_(QueryHostFrame(host)),
      services_(FetchServices(host, {kvx::host::kFrameworkB, kvx::host::kFrameworkA,
                                     kvx::host::kPropertyStore, kvx::host::kFrameworkC})),
      docking_(docking) {
    if (docking_) {
        menuId_ = docking_->AllocateIdentifier();
        secondaryId_ = docking_->AllocateIdentifier();
    }
    ++g_instances;
}

CKvxInstanceDataCtrl::~CKvxInstanceDataCtrl() {
    if (docking_) {
        docking_->ReleaseIdentifier(menuId_);
        docking_->ReleaseIdentifier(secondaryId_);
    }
    --g_instances;
}

int CKvxInstanceDataCtrl::Count() {
    return g_instances;
}

HWND CKvxInstanceDataCtrl::DockingWindow() const {
    const CWnd* parent = GetParent();
    return parent ? parent->GetSafeHwnd() : nullptr;
}

void CKvxInstanceDataCtrl::RemoveToolbars() {
    if (!docking_) return;
    docking_->RemoveRegistrations(menuId_);
    docking_->RemoveRegistrations(secondaryId_);
}

bool CKvxInstanceDataCtrl::CloseRequested() {
    CWnd* const owner = GetOwner();
    const auto window = reinterpret_cast<WPARAM>(GetSafeHwnd());
    return !owner || owner->SendMessage(kMessageCloseInstance, window) == 1;
}

CKvxDebugInstanceDataCtrl::CKvxDebugInstanceDataCtrl(IQHost* host, IDockingManager* docking)
    : CKvxInstanceDataCtrl(host, docking), CDebugInterfaces(host) {}

const MessageMap& CKvxDebugInstanceDataCtrl::GetMessageMap() const {
    using Self = CKvxDebugInstanceDataCtrl;
    static constexpr MessageMapEntry kEntries[] = {
        ON_WM_MEASUREITEM<&Self::OnMeasureItem>(),
        ON_COMMAND<ids::kToolbarDisplay, &Self::OnToolbarDisplay>(),
        ON_UPDATE_COMMAND_UI<ids::kToolbarDisplay, &Self::OnUpdateToolbarDisplay>(),
        ON_COMMAND<ids::kCustomizeToolbar, &Self::OnCustomizeToolbar>(),
        ON_UPDATE_COMMAND_UI<ids::kCustomizeToolbar, &Self::OnUpdateCustomizeToolbar>(),
        ON_COMMAND<ids::kAllowDocking, &Self::OnAllowDocking>(),
        ON_UPDATE_COMMAND_UI<ids::kAllowDocking, &Self::OnUpdateAllowDocking>(),
        ON_COMMAND<ids::kHide, &Self::OnHide>(),
        ON_UPDATE_COMMAND_UI<ids::kHide, &Self::OnUpdateHide>(),
    };
    static const MessageMap kMap{&CKvxInstanceDataCtrl::GetMessageMap(), kEntries};
    return kMap;
}

int CKvxDebugInstanceDataCtrl::OnCreate(const CREATESTRUCT* create) {
    font_.CreateFontIndirect(DefaultWindowFont());
    return CKvxInstanceDataCtrl::OnCreate(create);
}

void CKvxDebugInstanceDataCtrl::OnMeasureItem(int, MEASUREITEMSTRUCT* item) {
    Default();
    item->itemHeight = static_cast<UINT>(kvx::MetricsOf(font_.Description()).tmHeight);
}

void CKvxDebugInstanceDataCtrl::SetFont(const CString& face, int points) {
    font_.DeleteObject();
    font_.CreatePointFont(points * 10, face);
    ApplyFont();
}

void CKvxDebugInstanceDataCtrl::OnToolbarDisplay() {
    if (!Docking()) return;
    Docking()->ShowToolbar(DockingWindow(), !Docking()->IsToolbarShown(DockingWindow()));
}

void CKvxDebugInstanceDataCtrl::OnUpdateToolbarDisplay(CCmdUI& ui) {
    ui.Enable();
    ui.SetCheck(Docking() && Docking()->IsToolbarShown(DockingWindow()));
}

void CKvxDebugInstanceDataCtrl::OnCustomizeToolbar() {
    if (Docking()) Docking()->CustomizeToolbar(DockingWindow());
}

void CKvxDebugInstanceDataCtrl::OnUpdateCustomizeToolbar(CCmdUI& ui) {
    ui.Enable(Docking() && Docking()->IsToolbarShown(DockingWindow()));
}

void CKvxDebugInstanceDataCtrl::OnAllowDocking() {
    if (Docking()) Docking()->SetWindowState(DockingWindow(), kDockToggleAllowed);
}

void CKvxDebugInstanceDataCtrl::OnUpdateAllowDocking(CCmdUI& ui) {
    const int state = Docking() ? Docking()->GetWindowState(DockingWindow()) : 0;
    ui.Enable();
    ui.SetCheck(!((state & kDockFloating) && !(state & kDockMayDock)));
}

void CKvxDebugInstanceDataCtrl::OnHide() {
    if (Docking()) Docking()->SetWindowState(DockingWindow(), kDockHide);
}

void CKvxDebugInstanceDataCtrl::OnUpdateHide(CCmdUI& ui) {
    ui.Enable(!IsRunning());
}
