#include "platform/dialogs/Dialog.h"

#include <algorithm>

#include "platform/Backend.h"
#include "platform/base/Keys.h"
#include "platform/base/SystemInfo.h"
#include "platform/base/WinApp.h"
#include "platform/controls/Button.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/Edit.h"
#include "platform/controls/ListBox.h"
#include "platform/controls/ProgressCtrl.h"
#include "platform/controls/Static.h"
#include "platform/drawing/TextCache.h"
#include "platform/windows/WindowState.h"

const CRuntimeClass CDialog::kClass = MakeDynamicClass<CDialog>("CDialog", &CWnd::kClass);

namespace {

std::unique_ptr<CWnd> MakeControl(ControlClass kind) {
    switch (kind) {
        case ControlClass::Button:
            return std::make_unique<CButton>();
        case ControlClass::Edit:
            return std::make_unique<CEdit>();
        case ControlClass::Static:
            return std::make_unique<CStatic>();
        case ControlClass::ListBox:
            return std::make_unique<CCheckListBox>();
        case ControlClass::ComboBox:
            return std::make_unique<CComboBox>();
        case ControlClass::ProgressBar:
            return std::make_unique<CProgressCtrl>();
    }
    return nullptr;
}

// Four horizontal and eight vertical units make this many pixels: the average character of the
// font, rounded up so that no text is clipped, and its height.
SIZE BaseUnits(const LOGFONT& font) {
    constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    constexpr int kLetters = static_cast<int>(kAlphabet.size());
    const int width = kvx::TextExtentOf(font, kAlphabet).cx;
    return {(width + kLetters - 1) / kLetters, kvx::MetricsOf(font).tmHeight};
}

constexpr int Scale(int units, int pixels, int per) {
    return (units * pixels + per / 2) / per;
}

// Centred over the owner, or on the screen, inside the work area.
RECT PlaceOver(const CWnd* owner, SIZE size) {
    const CWnd* const top = owner ? owner->GetTopLevelParent() : nullptr;
    const RECT around = top && top->IsWindowVisible() ? top->GetWindowRect() : GetWorkArea({0, 0});
    const RECT work = GetWorkArea(around.TopLeft());
    const int left = around.left + (around.Width() - size.cx) / 2;
    const int top_ = around.top + (around.Height() - size.cy) / 2;
    const int x = std::max(std::min(left, work.right - size.cx), work.left);
    const int y = std::max(std::min(top_, work.bottom - size.cy), work.top);
    return {x, y, x + size.cx, y + size.cy};
}

}  // namespace

void DDX_Control(CDataExchange* exchange, UINT id, CWnd& control) {
    if (!control.IsWindow()) control.SubclassDlgItem(id, exchange->m_pDlgWnd);
}

CDialog::CDialog(UINT templateId, CWnd* parent) : templateId_(templateId), parent_(parent) {}

CDialog::~CDialog() {
    DestroyWindow();
}

const MessageMap& CDialog::GetMessageMap() const {
    static constexpr MessageMapEntry kEntries[] = {
        ON_COMMAND<IDOK, &CDialog::OnOK>(),
        ON_COMMAND<IDCANCEL, &CDialog::OnCancel>(),
    };
    static const MessageMap kMap{&CWnd::GetMessageMap(), kEntries};
    return kMap;
}

int CDialog::BackgroundColour() const {
    return COLOR_3DFACE;
}

bool CDialog::Create(UINT templateId, CWnd* parent) {
    const DialogResource* const resource = FindDialog(templateId);
    return resource && Create(*resource, parent);
}

bool CDialog::Create(const DialogResource& resource, CWnd* parent) {
    ended_ = false;
    result_ = -1;
    LOGFONT font;
    font.lfFaceName = resource.face;
    font.lfHeight = -((resource.points * 96 + 36) / 72);
    font_.CreateFontIndirect(font);
    baseUnits_ = BaseUnits(font);
    RECT client{0, 0, resource.width, resource.height};
    MapDialogRect(&client);
    const bool child = (resource.style & WS_CHILD) != 0;
    const RECT rect = child ? client : PlaceOver(parent, client.Size());
    if (!CreateEx(0, resource.title, resource.style & ~WS_VISIBLE, rect,
                  parent ? parent->GetSafeHwnd() : nullptr, 0))
        return false;
    if (!CreateControls(resource)) {
        DestroyWindow();
        return false;
    }
    const HWND handle = m_hWnd;
    const bool placeFocus = OnInitDialog();
    if (!::IsWindow(handle)) return false;
    if (placeFocus) PlaceFocus();
    if (!ended_ && (resource.style & WS_VISIBLE)) ShowWindow(SW_SHOW);
    return true;
}

bool CDialog::CreateControls(const DialogResource& resource) {
    controls_.clear();
    defaultId_ = IDOK;
    for (std::uint32_t i = 0; i < resource.count; ++i) {
        const ControlResource& item = resource.controls[i];
        auto control = MakeControl(item.kind);
        RECT rect{item.x, item.y, item.x + item.width, item.y + item.height};
        MapDialogRect(&rect);
        const DWORD style = item.style | WS_CHILD | WS_VISIBLE;
        if (!control || !control->CreateEx(item.exStyle, item.text ? item.text : "", style, rect,
                                           m_hWnd, item.id))
            return false;
        control->SetFont(&font_);
        if (item.kind == ControlClass::Button && (style & BS_TYPEMASK) == BS_DEFPUSHBUTTON)
            SetDefID(item.id);
        controls_.push_back(std::move(control));
    }
    return true;
}

void CDialog::MapDialogRect(RECT* rect) const {
    rect->left = Scale(rect->left, baseUnits_.cx, 4);
    rect->right = Scale(rect->right, baseUnits_.cx, 4);
    rect->top = Scale(rect->top, baseUnits_.cy, 8);
    rect->bottom = Scale(rect->bottom, baseUnits_.cy, 8);
}

bool CDialog::OnInitDialog() {
    UpdateData(false);
    return true;
}

bool CDialog::UpdateData(bool save) {
    CDataExchange exchange{this, save};
    DoDataExchange(&exchange);
    return true;
}

// The first control that Tab reaches.
void CDialog::PlaceFocus() {
    for (const HWND child : kvx::Backend().Windows().Children(m_hWnd)) {
        CWnd* const control = FromHandle(child);
        const DWORD style = control ? control->GetStyle() : 0;
        if (!(style & WS_TABSTOP) || !(style & WS_VISIBLE) || (style & WS_DISABLED)) continue;
        control->SetFocus();
        return;
    }
}

void CDialog::SetDefID(UINT id) {
    const auto mark = [this](bool on) {
        const CWnd* const button = GetDlgItem(defaultId_);
        if (button) kvx::Backend().Controls().SetDefault(button->GetSafeHwnd(), on);
    };
    mark(false);
    defaultId_ = id;
    mark(true);
}

int CDialog::DoModal() {
    kvx::EndCapture();
    CWnd* const parent = parent_ ? parent_ : AfxGetMainWnd();
    modal_ = true;
    if (!Create(templateId_, parent)) {
        modal_ = false;
        return -1;
    }
    if (!ended_) kvx::Backend().Dialogs().RunModal(m_hWnd);
    modal_ = false;
    DestroyWindow();
    controls_.clear();
    return result_;
}

void CDialog::EndDialog(int result) {
    result_ = result;
    ended_ = true;
    if (!m_hWnd) return;
    ShowWindow(SW_HIDE);
    if (modal_) kvx::Backend().Dialogs().EndModal(m_hWnd);
}

void CDialog::OnOK() {
    UpdateData(true);
    EndDialog(IDOK);
}

void CDialog::OnCancel() {
    EndDialog(IDCANCEL);
}

// Enter: the push button that has the focus, else the default one.
void CDialog::PressDefault() {
    const CWnd* const focus = GetFocus();
    const auto* const pushed = dynamic_cast<const CButton*>(focus);
    if (pushed && IsChild(focus) && (pushed->GetStyle() & BS_TYPEMASK) <= BS_DEFPUSHBUTTON)
        return kvx::Backend().Controls().Click(focus->GetSafeHwnd());
    CWnd* const button = GetDlgItem(defaultId_);
    if (!button)
        SendMessage(WM_COMMAND, MakeCommand(IDOK));
    else if (button->IsWindowEnabled())
        kvx::Backend().Controls().Click(button->GetSafeHwnd());
}

LRESULT CDialog::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_KEYDOWN && wParam == VK_RETURN) {
        PressDefault();
        return 0;
    }
    if (message == WM_CLOSE || (message == WM_KEYDOWN && wParam == VK_ESCAPE)) {
        const CWnd* const cancel = GetDlgItem(IDCANCEL);
        if (!cancel || cancel->IsWindowEnabled()) SendMessage(WM_COMMAND, MakeCommand(IDCANCEL));
        return 0;
    }
    return CWnd::DefWindowProc(message, wParam, lParam);
}
