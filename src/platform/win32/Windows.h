#pragma once
// Windows of the system.

#include <vector>

#include "platform/win32/System.h"

namespace kvx::win32 {

class Win32Windows final : public IWindows {
  public:
    HWND Create(const WindowRequest& request, IWindowSink* sink) override;
    void Destroy(HWND window) override;
    bool Exists(HWND window) const override;
    LRESULT Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
    void Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;

    HWND Parent(HWND window) const override;
    std::vector<HWND> Children(HWND window) const override;
    HWND Child(HWND window, UINT id) const override;
    UINT Id(HWND window) const override;
    HWND TopLevel(HWND window) const override;

    void SetText(HWND window, const CString& text) override;
    CString Text(HWND window) const override;
    void SetFont(HWND window, const LOGFONT& font) override;
    void SetFrame(HWND window, const WindowFrame& frame) override;

    void Show(HWND window, bool show, bool activate) override;
    bool IsVisible(HWND window) const override;
    bool IsShown(HWND window) const override;
    void Enable(HWND window, bool enable) override;
    bool IsEnabled(HWND window) const override;
    void SetFocus(HWND window) override;
    HWND Focus() const override;
    void SetCapture(HWND window) override;
    void ReleaseCapture() override;
    HWND Capture() const override;
    void Raise(HWND window) override;

    void Move(HWND window, const RECT& rect) override;
    RECT Bounds(HWND window) const override;
    RECT ScreenBounds(HWND window) const override;
    SIZE ClientSize(HWND window) const override;
    POINT ClientOrigin(HWND window) const override;
    PixelGrid Grid(HWND window) const override;

    void Present(HWND window, const RECT& client, bool atOnce) override;
    void SetScrollBar(HWND window, int bar, const ScrollBarLook& look) override;
    int ScrollTrackPosition(HWND window, int bar) const override;
    void AcceptDrops(HWND window, bool accept) override;

    void DispatchWaiting(HWND window) override;
    int Run() override;
    void Quit() override;

    HWND MainWindow() const override;
    void SetMainWindow(HWND window) override;

  private:
    static void ActivateOwner(win::HWND window);
    void KeepFocus(win::HWND disabled);
    void RestoreFocus(win::HWND enabled);
    // Where the focus was when a window was disabled: it comes back with the window.
    struct LostFocus {
        win::HWND disabled;
        win::HWND focus;
    };
    std::vector<LostFocus> lostFocus_;
    win::HWND mainWindow_ = nullptr;
};

}  // namespace kvx::win32
