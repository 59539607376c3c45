#include "sink/OSTraceInstanceCtrl.h"

#include "framework/NamedColors.h"
#include "host/CommandIds.h"
#include "platform/Resources.h"
#include "traceview/TraceView.h"

namespace ids = kvx::ids;

namespace {

constexpr char kSettingsPrefix[] = "OSTraceView";
constexpr UINT kSecondaryGroup = 1906;
constexpr UINT kOptionalCommands[] = {ids::kValue, ids::kColor, ids::kDefaultOrder};

}  // namespace

CKvxOSTraceInstanceCtrl::CKvxOSTraceInstanceCtrl(IQHost* host, IDockingManager* docking,
                                                 COSTraceData& data)
    : CKvxDebugInstanceDataCtrl(host, docking),
      data_(data),
      textColour_(kColorSystem),
      backgroundColour_(kColorSystem) {}

const MessageMap& CKvxOSTraceInstanceCtrl::GetMessageMap() const {
    using Self = CKvxOSTraceInstanceCtrl;
    static constexpr MessageMapEntry kEntries[] = {
        ON_WM_CREATE<&Self::OnCreate>(),
        ON_WM_SIZE<&Self::OnSize>(),
    };
    static const MessageMap kMap{&CKvxDebugInstanceDataCtrl::GetMessageMap(), kEntries};
    return kMap;
}

bool CKvxOSTraceInstanceCtrl::IsSender(std::uintptr_t datum) const {
    const IViewSender* const view = frame_.TraceView();
    return view && reinterpret_cast<std::uintptr_t>(view) == datum;
}

UINT CKvxOSTraceInstanceCtrl::GetOpenCommand() const { return ids::kOpenOSTrace; }

int CKvxOSTraceInstanceCtrl::OnCreate(const CREATESTRUCT* create) {
    const int result = CKvxDebugInstanceDataCtrl::OnCreate(create);
    if (result == -1) return -1;
    RegisterWithDocking();
    if (!frame_.Create(WS_CHILD | WS_VISIBLE | WS_BORDER, RECT{}, this, kFirstPane)) return -1;
    ApplyFont();
    if (COSTraceView* view = frame_.TraceView()) view->Connect(data_, *this);
    RefreshData();
    return result;
}

void CKvxOSTraceInstanceCtrl::RegisterWithDocking() {
    IDockingManager* const docking = Docking();
    if (!docking) return;
    const HWND window = DockingWindow();
    const GUID& owner = kvx::host::kComponent;
    docking->RegisterWindow(window, this, MenuId(), owner);
    docking->AttachMenu(window, ids::kMenuOSTrace, MenuId(), owner);
    docking->BindWindow(MenuId(), this);
    docking->BindModule(MenuId(), AfxGetResourceHandle());
    docking->RegisterGroup(kSecondaryGroup, SecondaryId(), kvx::host::kSecondToolbarOwner);
    docking->CreateToolbar(window, ids::kToolbarOSTrace, MenuId(), owner, kOptionalCommands);
}

void CKvxOSTraceInstanceCtrl::OnSize(UINT, int cx, int cy) {
    Default();
    if (frame_.IsWindow()) frame_.MoveWindow(0, 0, cx, cy);
}

// The commands of the window are the view's.
bool CKvxOSTraceInstanceCtrl::OnCmdMsg(UINT id, UINT code, CCmdUI* ui) {
    COSTraceView* const view = frame_.TraceView();
    if (view && view->OnCmdMsg(id, code, ui)) return true;
    return CKvxDebugInstanceDataCtrl::OnCmdMsg(id, code, ui);
}

void CKvxOSTraceInstanceCtrl::SetColours(const CString& item, int text, int background) {
    textColour_ = text;
    backgroundColour_ = background;
    frame_.ForwardViewColors(item, ResolveColor(text, false), ResolveColor(background, true));
}

void CKvxOSTraceInstanceCtrl::SaveSettings(IWorkspaceStore& store, const CString&) {
    SetSettingsModified(false);
    frame_.SaveSettings(store, kSettingsPrefix);
}

void CKvxOSTraceInstanceCtrl::LoadSettings(IWorkspaceStore& store, const CString&) {
    SetSettingsModified(false);
    frame_.LoadSettings(store, kSettingsPrefix);
}
