#include "platform_qt/module/TestModule.h"

#include <utility>

#include "platform/Backend.h"
#include "platform/base/WinApp.h"
#include "platform/windows/View.h"

namespace {

std::uint64_t g_received = 0;
bool g_installed = false;

class ModuleWindow : public CWnd {
  public:
    LRESULT OnUser(WPARAM wParam, LPARAM lParam) {
        g_received += wParam;
        return static_cast<LRESULT>(wParam) * lParam;
    }
    void OnPaint() {
        CPaintDC dc(this);
        dc.FillSolidRect(GetClientRect(), RGB(0, 0, 255));
        dc.TextOut(0, 0, "module");
    }

  protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageMapEntry kEntries[] = {
            ON_MESSAGE<WM_USER, &ModuleWindow::OnUser>(),
            ON_WM_PAINT<&ModuleWindow::OnPaint>(),
        };
        static const MessageMap kMap{&CWnd::GetMessageMap(), kEntries};
        return kMap;
    }
    void PostNcDestroy() override { delete this; }
};

HWND Create(HWND parent, UINT id) {
    if (!g_installed) g_installed = kvx::InstallBackend();
    auto* const window = new ModuleWindow;
    return window->Create(WS_CHILD | WS_VISIBLE, {10, 10, 60, 40}, parent, id) ? window->m_hWnd
                                                                               : nullptr;
}

void Destroy(HWND window) {
    if (CWnd* own = CWnd::FromHandlePermanent(window)) own->DestroyWindow();
}

LRESULT Ask(HWND window) {
    CWnd* const other = CWnd::FromHandle(window);
    return other ? other->SendMessage(WM_USER, 5, 6) : -1;
}

std::uint64_t Received() {
    return g_received;
}

HWND MainWindow() {
    CWnd* const main = AfxGetMainWnd();
    return main ? main->GetSafeHwnd() : nullptr;
}

void Remove() {
    if (std::exchange(g_installed, false)) kvx::RemoveBackend();
}

UINT Registered() {
    return RegisterWindowMessage("WM_WINMGR");
}

}  // namespace

extern "C" KVX_EXPORT const TestModuleApi* GetTestModule() {
    static constexpr TestModuleApi kApi{Create,   Destroy,    CWnd::FromHandle, Ask,
                                        Received, MainWindow, Registered,       Remove};
    return &kApi;
}
