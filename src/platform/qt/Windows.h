#pragma once
// Windows of the toolkit.

#include <QPointer>
#include <vector>

#include "platform/Backend.h"

class QWidget;

namespace kvx::qt {

class QtWindows final : public IWindows {
  public:
    ~QtWindows() override;

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
    void Delete(QWidget* widget);
    static void ActivateOwner(const QWidget* widget);
    void KeepFocus(QWidget* disabled);
    void RestoreFocus(const QWidget* enabled);
    // Destroyed while an event was at work: hidden and forgotten, deleted when the loop comes by.
    std::vector<QPointer<QWidget>> doomed_;
    // Where the focus was when a window was disabled: it comes back with the window.
    struct LostFocus {
        QPointer<QWidget> disabled;
        QPointer<QWidget> focus;
    };
    std::vector<LostFocus> lostFocus_;
    QPointer<QWidget> capture_;  // the toolkit knows only of visible windows that have the mouse
};

}  // namespace kvx::qt
