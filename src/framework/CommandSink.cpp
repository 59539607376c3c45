#include "framework/CommandSink.h"

#include <algorithm>

#include "host/Identifiers.h"
#include "host/NamedColors.h"
#include "platform/base/Guarded.h"

using kvx::Bstr;
using kvx::Guarded;

namespace {

constexpr char kItemText[] = "Text";
constexpr char kItemSelectedText[] = "Selected Text";

}  // namespace

CUiCommandSink::CUiCommandSink(IQHost* host, IDockingManager* docking)
    : host_(host),
      services_(FetchServices(
          host, {kvx::host::kFrameworkB, kvx::host::kFrameworkA, kvx::host::kProjectInformation,
                 kvx::host::kPropertyStore, kvx::host::kWorkspaceStore, kvx::host::kFrameworkC})),
      docking_(docking) {}

void CUiCommandSink::AddInstance(std::unique_ptr<CKvxInstanceDataCtrl>&& instance) {
    instances_.push_back(std::move(instance));
}

CKvxInstanceDataCtrl* CUiCommandSink::FindInstance(HWND window) const {
    const auto found = std::ranges::find_if(
        instances_, [&](const auto& instance) { return instance->GetSafeHwnd() == window; });
    return found == instances_.end() ? nullptr : found->get();
}

void CUiCommandSink::CloseAllInstances() {
    for (const auto& instance : instances_) {
        instance->RemoveToolbars();
        instance->DestroyWindow();
    }
    instances_.clear();
}

void CUiCommandSink::RefreshAllInstances() {
    for (const auto& instance : instances_) instance->RefreshData();
}

int CUiCommandSink::CloseInstance(HWND window, LPARAM) {
    CKvxInstanceDataCtrl* const instance = FindInstance(window);
    if (!instance) return 0;
    instance->RemoveToolbars();
    instance->DestroyWindow();
    std::erase_if(instances_, [&](const auto& each) { return each.get() == instance; });
    return 1;
}

void CUiCommandSink::DropLostInstances() {
    std::erase_if(instances_, [](const auto& instance) {
        if (instance->IsWindow()) return false;
        instance->RemoveToolbars();
        return true;
    });
}

int CUiCommandSink::HideInstance(HWND window) {
    CWnd* const instance = FindInstance(window);
    if (!instance || !docking_) return 0;
    docking_->SetWindowState(instance->GetParent()->GetSafeHwnd(), kDockHide);
    return 1;
}

void CUiCommandSink::OnDebuggerConnected() {
    for (const auto& instance : instances_) instance->OnDebuggerConnected();
}

void CUiCommandSink::OnDebuggerDisconnected() {
    for (const auto& instance : instances_) instance->OnDebuggerDisconnected();
}

CKvxFormatViewCtrl::CKvxFormatViewCtrl(IQHost* host, IDockingManager* docking)
    : CUiCommandSink(host, docking),
      text_{kColorSystem, kColorSystem},
      selectedText_{kColorHighlight, kColorHighlight},
      currentItem_(kItemText),
      items_{kItemText} {}

HRESULT CKvxFormatViewCtrl::GetItemNames(IQFormatItemList* items) {
    if (!items) return E_POINTER;
    return Guarded([&] {
        for (const CString& item : items_) items->Append(Bstr(item).Get());
        return S_OK;
    });
}

HRESULT CKvxFormatViewCtrl::SetColours(BSTR item, std::int32_t foreground,
                                       std::int32_t background) {
    return Guarded([&] {
        currentItem_ = kvx::ToUtf8(item);
        if (currentItem_ == kItemText) text_ = {foreground, background};
        if (currentItem_ == kItemSelectedText) selectedText_ = {foreground, background};
        return S_OK;
    });
}

HRESULT CKvxFormatViewCtrl::SetTextColours(std::int32_t foreground, std::int32_t background) {
    return Client()->SetColours(Bstr(kItemText).Get(), foreground, background);
}

HRESULT CKvxFormatViewCtrl::SetSelectedTextColours(std::int32_t foreground,
                                                   std::int32_t background) {
    return Client()->SetColours(Bstr(kItemSelectedText).Get(), foreground, background);
}
