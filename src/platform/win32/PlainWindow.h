#pragma once
// A window that paints itself: its client area shows the surface, its edges carry frame and scroll
// bars, and the system's messages become ours here and nowhere else.

#include "platform/win32/DropTarget.h"
#include "platform/win32/OwnWindow.h"

namespace kvx::win32 {

class PlainWindow final : public OwnWindow {
  public:
    PlainWindow(const WindowRequest& request, IWindowSink* sink);

    // Null when the window was not made here.
    static std::shared_ptr<PlainWindow> Of(win::HWND window);
    // Null when the system refuses.
    static win::HWND Make(const WindowRequest& request, IWindowSink* sink);
    // For the life of the back-end.
    static void RegisterWindowClass();
    static void UnregisterWindowClass();
    // Whether any window is in the middle of being shown.
    static bool IsAnyPainting();
    // While the layer above moves the capture, it tells the windows itself.
    static void MoveCapture(win::HWND window);

    void Detach() override;
    void SetFrame(const WindowFrame& frame);
    void SetScrollBar(int bar, const ScrollBarLook& look);
    int ScrollTrackPosition(int bar) const;
    SIZE BarSize() const;  // what the scroll bars take of the client area; logical pixels
    void AcceptDrops(bool accept);
    // WM_SIZE when the client area's size is another than last time.
    void SyncSize();

    void RunModal();
    void EndModal();
    // The other windows can be used again.
    void Unblock();

  protected:
    win::LRESULT OnSystemMessage(UINT message, win::WPARAM wParam, win::LPARAM lParam) override;

  private:
    std::optional<win::LRESULT> OnInput(UINT message, win::WPARAM wParam, win::LPARAM lParam);
    std::optional<win::LRESULT> OnKey(UINT message, win::WPARAM wParam, win::LPARAM lParam);
    std::optional<win::LRESULT> OnMouse(UINT message, win::WPARAM wParam, win::LPARAM lParam);
    win::LRESULT OnCommand(win::WPARAM wParam, win::LPARAM lParam);
    win::LRESULT OnCalcSize(win::WPARAM wParam, win::LPARAM lParam);
    bool SendKey(UINT message, UINT key, win::LPARAM flags);
    void SendCharacter(wchar_t unit, win::LPARAM flags);
    void SendNotches(int& rest, UINT message, win::WPARAM wParam, POINT screen);
    void SendScroll(int bar, win::WPARAM wParam);
    void OnActivate(bool active);
    void OnMinMax(win::MINMAXINFO* info);
    void OnPaint();
    void OnFramePaint() const;
    void OnMoved();
    POINT ToLogical(POINT device) const;
    void MakeScrollBar(int bar);
    void LayOut();
    void Block();

    win::HWND bars_[2] = {nullptr, nullptr};
    bool barShown_[2] = {false, false};
    SIZE lastClient_;
    bool living_ = false;  // made; sizes are told from now on
    std::shared_ptr<const Surface> shown_;
    int wheelRest_[2] = {0, 0};  // of a notch, by high-resolution wheels
    wchar_t highSurrogate_ = 0;
    bool mouseInside_ = false;
    win::HWND focus_ = nullptr;  // where the keyboard was when the window became inactive
    bool modal_ = false;
    std::vector<win::HWND> blocked_;  // by this window while it is modal
    std::unique_ptr<DropTarget> drops_;
};

}  // namespace kvx::win32
