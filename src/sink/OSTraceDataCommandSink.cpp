#include "sink/OSTraceDataCommandSink.h"

#include <algorithm>

#include "framework/UpdateHints.h"
#include "host/CommandIds.h"
#include "host/NamedColors.h"
#include "platform/base/Guarded.h"
#include "platform/base/Resources.h"
#include "platform/base/ScopeGuard.h"
#include "sink/OSAnalyzeInstanceCtrl.h"
#include "sink/OSTraceInstanceCtrl.h"
#include "traceview/TraceView.h"

namespace ids = kvx::ids;
using kvx::Bstr;
using kvx::Guarded;
using kvx::host::Service;

namespace {

constexpr char kTraceBaseName[] = "{WK_00000001_OSTRACE}";
constexpr char kAnalyzeBaseName[] = "{WK_00000001_OSANALYZE}";
constexpr char kHostToolbar[] = "{WK_TB00000023_RTOS}";

constexpr char kFontName[] = "KVX_OSTRACE_FONT_NAME";
constexpr char kFontSize[] = "KVX_OSTRACE_FONT_SIZE";
constexpr char kBackground[] = "KVX_OSTRACE_BKCOLOUR";
constexpr char kForeground[] = "KVX_OSTRACE_FGCOLOUR";

// A service whose flag -1 forbids opening; one that is not there forbids nothing.
bool IsOpenBlocked(IQHost* host, const GUID& id) {
    auto* const service = Service<IQOpenBlocker>(host, id);
    std::int16_t flag = 0;
    return service && Succeeded(service->IsOpenBlocked(&flag)) && flag == -1;
}

bool IsPointSize(std::int32_t points) {
    constexpr std::int32_t kLargest = 200;
    return points > 0 && points <= kLargest;
}

}  // namespace

CKvxOSTraceDataCommandSink::CKvxOSTraceDataCommandSink(IQHost* host, IDockingManager* docking)
    : CUiDebugCommandSink(host, docking),
      traceKind_{
          kTraceBaseName, kTraceBaseName, ids::kStringOSTrace, "TraceViews", "OSTraceWnd", {}, {}},
      analyzeKind_{kAnalyzeBaseName,
                   kAnalyzeBaseName,
                   ids::kStringOSAnalyze,
                   "AnalyzeViews",
                   "OSAnalyzeWnd",
                   {},
                   {}} {
    auto* const workspace = static_cast<IQWorkSpaceClient2*>(this);
    host->Advise(kvx::host::kWorkSpaceClient, workspace);
    host->Advise(kvx::host::kWorkSpaceClient2, workspace);
    properties_ = Service<IQPropertyStore>(host, kvx::host::kPropertyStore);
    host->Advise(kvx::host::kFormatViewClient, Client());
    host->AddService(kvx::host::kOSTraceWindow, static_cast<IQEOSTraceWindow*>(this));
    host->AddService(kvx::host::kOSTraceRange, static_cast<kvx::host::IQOSTraceRange*>(this));
    ReadProperties();
}

CKvxOSTraceDataCommandSink::~CKvxOSTraceDataCommandSink() {
    if (menuId_) Docking()->ReleaseIdentifier(menuId_);
    IQHost* const host = Host();
    auto* const workspace = static_cast<IQWorkSpaceClient2*>(this);
    host->Unadvise(kvx::host::kWorkSpaceClient, workspace);
    host->Unadvise(kvx::host::kWorkSpaceClient2, workspace);
    host->Unadvise(kvx::host::kFormatViewClient, Client());
    host->RemoveService(kvx::host::kOSTraceWindow, static_cast<IQEOSTraceWindow*>(this));
    host->RemoveService(kvx::host::kOSTraceRange, static_cast<kvx::host::IQOSTraceRange*>(this));
}

void CKvxOSTraceDataCommandSink::ReadProperties() {
    face_ = kDefaultFace;
    points_ = kDefaultPoints;
    if (properties_) {
        Bstr face;
        const bool read = Succeeded(properties_->GetText(Bstr(kFontName).Get(), face.Receive()));
        const std::int32_t points = ReadNumber(kFontSize, kDefaultPoints);
        if (read && !face.Utf8().empty()) {
            face_ = face.Utf8();
            points_ = IsPointSize(points) ? points : kDefaultPoints;
        }
        text_.background = ReadNumber(kBackground, text_.background);
        text_.foreground = ReadNumber(kForeground, text_.foreground);
    }
}

std::int32_t CKvxOSTraceDataCommandSink::ReadNumber(const char* key, std::int32_t fallback) const {
    std::int32_t number = fallback;
    return Succeeded(properties_->GetNumber(Bstr(key).Get(), &number)) ? number : fallback;
}

const MessageMap& CKvxOSTraceDataCommandSink::GetMessageMap() const {
    using Self = CKvxOSTraceDataCommandSink;
    static constexpr MessageMapEntry kEntries[] = {
        ON_WM_CREATE<&Self::OnCreate>(),
        ON_MESSAGE<kMessageCloseInstance, &Self::OnCloseInstance>(),
        ON_COMMAND<ids::kOpenOSTrace, &Self::OnOpenOSTrace>(),
        ON_UPDATE_COMMAND_UI<ids::kOpenOSTrace, &Self::OnUpdateOpenOSTrace>(),
        ON_COMMAND<ids::kOpenOSAnalyze, &Self::OnOpenOSAnalyze>(),
        ON_UPDATE_COMMAND_UI<ids::kOpenOSAnalyze, &Self::OnUpdateOpenOSAnalyze>(),
    };
    static const MessageMap kMap{&CUiDebugCommandSink::GetMessageMap(), kEntries};
    return kMap;
}

int CKvxOSTraceDataCommandSink::OnCreate(const CREATESTRUCT* create) {
    if (CUiDebugCommandSink::OnCreate(create) == -1) return -1;
    IDockingManager* const docking = Docking();
    if (!docking) return 0;
    menuId_ = docking->AllocateIdentifier();
    docking->AttachMenu(nullptr, ids::kMenuHostOSTrace, menuId_, kvx::host::kComponent);
    docking->AttachMenu(nullptr, ids::kMenuHostOSAnalyze, menuId_, kvx::host::kComponent);
    docking->BindWindow(menuId_, this);
    docking->BindModule(menuId_, AfxGetResourceHandle());
    const CString title = LoadString(ids::kStringRtos);
    docking->AddHostToolbar(kHostToolbar, title, ids::kToolbarHostOSTrace, menuId_);
    docking->AddHostToolbar(kHostToolbar, title, ids::kToolbarHostOSAnalyze, menuId_);
    return 0;
}

LRESULT CKvxOSTraceDataCommandSink::OnCloseInstance(WPARAM window, LPARAM argument) {
    return CloseInstance(reinterpret_cast<HWND>(window), argument);
}

HWND CKvxOSTraceDataCommandSink::FindDocking(const WindowKind& kind, const CString& name) const {
    return Docking()->FindDockingWindow(name, LoadString(kind.titleString), kDockFindFlags,
                                        kDockBottom);
}

bool CKvxOSTraceDataCommandSink::HasWindow(const WindowKind& kind) {
    return std::ranges::any_of(kind.controls, [](const auto* each) { return each->IsWindow(); });
}

// A host may destroy a docking window without asking. Not to be called while a window goes.
void CKvxOSTraceDataCommandSink::ForgetLostWindows() {
    const auto lost = [](const CWnd* control) { return !control->IsWindow(); };
    modified_ |= std::erase_if(traceKind_.controls, lost) > 0;
    modified_ |= std::erase_if(analyzeKind_.controls, lost) > 0;
    std::erase_if(nameOfControl_, [&](const auto& each) { return lost(each.first); });
    DropLostInstances();
}

// Shows the window of the kind that exists, or makes one.
void CKvxOSTraceDataCommandSink::Open(WindowKind& kind) {
    if (!Docking()) return;
    ForgetLostWindows();
    for (const CString& name : kind.names) {
        if (const HWND existing = FindDocking(kind, name)) {
            return Docking()->SetWindowState(existing, kDockShow);
        }
    }
    CString given;
    const HWND docking = Docking()->CreateDockingWindow(kind.baseName, LoadString(kind.titleString),
                                                        kDockCreateFlags, kDockBottom, &given);
    if (!docking) return;
    Docking()->SetWindowState(docking, kDockShow);
    FillDocking(kind, docking, given);
}

std::unique_ptr<CKvxInstanceDataCtrl> CKvxOSTraceDataCommandSink::NewControl(
    const WindowKind& kind) {
    if (&kind == &analyzeKind_)
        return std::make_unique<CKvxOSAnalyzeInstanceCtrl>(Host(), Docking(), data_);
    return std::make_unique<CKvxOSTraceInstanceCtrl>(Host(), Docking(), data_);
}

// All or nothing: a docking window whose control cannot be made is hidden again, and nothing of the
// control stays here or at the host.
void CKvxOSTraceDataCommandSink::FillDocking(WindowKind& kind, HWND docking, const CString& name) {
    if (kvx::Guarded(false, [&] { return AddControl(kind, docking, name); })) return;
    Docking()->SetWindowState(docking, kDockHide);
}

bool CKvxOSTraceDataCommandSink::AddControl(WindowKind& kind, HWND docking, const CString& name) {
    std::unique_ptr<CKvxInstanceDataCtrl> owned = NewControl(kind);
    auto* const control = static_cast<CKvxDebugInstanceDataCtrl*>(owned.get());
    kvx::ScopeGuard undo([&] {
        Forget(*control);
        control->RemoveToolbars();
        control->DestroyWindow();
    });
    control->SetOwner(this);
    if (!control->Create(WS_CHILD | WS_VISIBLE, RECT{}, docking, 1)) return false;
    control->SetFont(face_, points_);
    control->SetColours(currentItem_, text_.foreground, text_.background);
    kind.controls.push_back(control);
    nameOfControl_[control] = name;
    kind.names.push_back(name);
    AddInstance(std::move(owned));
    undo.Dismiss();
    modified_ = true;
    return true;
}

void CKvxOSTraceDataCommandSink::Forget(const CKvxInstanceDataCtrl& control) {
    std::erase(traceKind_.controls, &control);
    std::erase(analyzeKind_.controls, &control);
    nameOfControl_.erase(&control);
}

void CKvxOSTraceDataCommandSink::OnOpenOSTrace() {
    Open(traceKind_);
}
void CKvxOSTraceDataCommandSink::OnOpenOSAnalyze() {
    Open(analyzeKind_);
}

bool CKvxOSTraceDataCommandSink::MayOpen(
    const WindowKind& kind, const std::vector<CKvxInstanceDataCtrl*>& candidates) const {
    if (IsRunning()) return false;
    if (!HasWindow(kind)) return true;
    return Docking() && std::ranges::any_of(candidates, [&](const CKvxInstanceDataCtrl* control) {
               const auto name = nameOfControl_.find(control);
               return name != nameOfControl_.end() && FindDocking(kind, name->second);
           });
}

void CKvxOSTraceDataCommandSink::OnUpdateOpenOSTrace(CCmdUI& ui) {
    std::vector<CKvxInstanceDataCtrl*> all;
    for (const auto& instance : Instances()) all.push_back(instance.get());
    if (!MayOpen(traceKind_, all)) return ui.Enable(false);
    const bool blockedByA = IsOpenBlocked(Host(), kvx::host::kOpenBlockerA);
    const bool blockedByB = IsOpenBlocked(Host(), kvx::host::kOpenBlockerB);
    ui.Enable(!blockedByA && !blockedByB);
}

void CKvxOSTraceDataCommandSink::OnUpdateOpenOSAnalyze(CCmdUI& ui) {
    ui.Enable(MayOpen(analyzeKind_, {analyzeKind_.controls.begin(), analyzeKind_.controls.end()}));
}

void CKvxOSTraceDataCommandSink::UpdateWindows(LPARAM hint, std::uintptr_t sender) {
    ForEachWindow([&](CKvxDebugInstanceDataCtrl& control) {
        const bool sentIt = hint == kHintDisplayChanged && control.IsSender(sender);
        if (!sentIt) control.UpdateView(hint);
    });
}

void CKvxOSTraceDataCommandSink::CloseAllInstances() {
    traceKind_.controls.clear();
    analyzeKind_.controls.clear();
    nameOfControl_.clear();
    CUiDebugCommandSink::CloseAllInstances();
}

int CKvxOSTraceDataCommandSink::CloseInstance(HWND window, LPARAM argument) {
    CKvxInstanceDataCtrl* const instance = FindInstance(window);
    if (!instance) return 0;
    if (IsRunning()) {
        if (Docking()) {
            Docking()->SetWindowState(instance->GetParent()->GetSafeHwnd(), kDockShow);
        }
        return 0;
    }
    Forget(*instance);
    modified_ = true;
    return CUiDebugCommandSink::CloseInstance(window, argument);
}

int CKvxOSTraceDataCommandSink::HideInstance(HWND window) {
    return IsRunning() ? 0 : CUiDebugCommandSink::HideInstance(window);
}

HRESULT CKvxOSTraceDataCommandSink::QueryInterface(const GUID& id, void** out) {
    if (!out) return E_POINTER;
    *out = nullptr;
    if (id == IID_IUnknown || id == kvx::host::kWorkSpaceClient ||
        id == kvx::host::kWorkSpaceClient2) {
        *out = static_cast<IQWorkSpaceClient2*>(this);
    }
    if (id == kvx::host::kCommandSink) *out = this;
    return *out ? S_OK : E_NOINTERFACE;
}

HRESULT CKvxOSTraceDataCommandSink::IsOpen(std::uint16_t* flag) {
    if (!flag) return E_POINTER;
    *flag = HasWindow(traceKind_) ? 0xFFFF : 0;
    return S_OK;
}

COSTraceView* CKvxOSTraceDataCommandSink::TraceView() {
    if (traceKind_.controls.empty()) return nullptr;
    auto* const control = static_cast<CKvxOSTraceInstanceCtrl*>(traceKind_.controls.front());
    return control->Frame().TraceView();
}

template <class Change>
HRESULT CKvxOSTraceDataCommandSink::ChangeDisplay(Change change) {
    return Guarded([&] {
        COSTraceView* const view = TraceView();
        if (!view) return E_FAIL;
        const HRESULT result = change(*view->Display());
        view->ShowDisplay();
        return result;
    });
}

HRESULT CKvxOSTraceDataCommandSink::SetDisplayRange(double start, double end) {
    return ChangeDisplay(
        [&](TraceDisplay& display) { return display.SetDisplayRange(start, end); });
}

HRESULT CKvxOSTraceDataCommandSink::GetPosition(kvx::host::OSTracePosition* position) {
    if (!position) return E_POINTER;
    return Guarded([&] {
        COSTraceView* const view = TraceView();
        return view ? view->Display()->GetPosition(*position) : E_FAIL;
    });
}

HRESULT CKvxOSTraceDataCommandSink::SetPosition(const kvx::host::OSTracePosition* position) {
    if (!position) return E_POINTER;
    return ChangeDisplay([&](TraceDisplay& display) { return display.SetPosition(*position); });
}

HRESULT CKvxOSTraceDataCommandSink::GetName(BSTR* name) {
    if (!name) return E_POINTER;
    return Guarded([&] {
        *name = kvx::ToBstr(LoadString(ids::kStringFormatName));
        return S_OK;
    });
}

HRESULT CKvxOSTraceDataCommandSink::GetFont(BSTR* face, std::int32_t* points) {
    if (!face || !points) return E_POINTER;
    return Guarded([&] {
        *face = kvx::ToBstr(face_);
        *points = points_;
        return S_OK;
    });
}

HRESULT CKvxOSTraceDataCommandSink::SetFont(BSTR face, std::int32_t points) {
    if (!face || !*face || !IsPointSize(points)) return E_INVALIDARG;
    return Guarded([&] {
        face_ = kvx::ToUtf8(face);
        points_ = points;
        ForEachWindow([&](CKvxDebugInstanceDataCtrl& control) { control.SetFont(face_, points_); });
        if (!properties_) return S_OK;
        properties_->SetText(Bstr(kFontName).Get(), face);
        properties_->SetNumber(Bstr(kFontSize).Get(), points_);
        return S_OK;
    });
}

HRESULT CKvxOSTraceDataCommandSink::SetColours(BSTR item, std::int32_t foreground,
                                               std::int32_t background) {
    return Guarded([&] {
        CUiDebugCommandSink::SetColours(item, foreground, background);
        ForEachWindow([&](CKvxDebugInstanceDataCtrl& control) {
            control.SetColours(currentItem_, foreground, background);
        });
        if (!properties_) return S_OK;
        properties_->SetNumber(Bstr(kBackground).Get(), text_.background);
        properties_->SetNumber(Bstr(kForeground).Get(), text_.foreground);
        return S_OK;
    });
}
