#pragma once
// What the platform keeps of one window: its surface and what of it is invalid, its
// scroll bars, styles and font; and the way from the toolkit's events to the window's handlers.

#include <memory>

#include "platform/Backend.h"
#include "platform/windows/ScrollBarState.h"
#include "platform/windows/Wnd.h"

class CView;

namespace kvx {

class WindowState final : public IWindowSink {
  public:
    WindowState(CWnd& owner, DWORD firstStyle, DWORD firstExStyle)
        : style(firstStyle), exStyle(firstExStyle), owner_(&owner) {}

    // The object that the toolkit window belongs to changes.
    void SetOwner(CWnd& owner) { owner_ = &owner; }

    // Null when the window was not made here.
    static WindowState* Of(const CWnd* window);

    // Runs the window's handlers. An exception becomes a line on standard error and the result 0,
    // or -1 of WM_CREATE: a window whose creation fails does not come into being.
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    std::shared_ptr<const Surface> Picture() override;
    DROPEFFECT OnDrag(const COleDataObject& data, DWORD keyState, POINT client,
                      bool entered) override;
    void OnDragLeave() override;
    DROPEFFECT OnDrop(const COleDataObject& data, DROPEFFECT effect, POINT client) override;
    void OnWindowGone() override;

    // The window is made; sizes that change before that are not told.
    void BeginLife() { living_ = true; }
    // WM_DESTROY, once.
    void NotifyDestroy();

    // The surface in the size of the client area and on its grid; on another grid than before it is
    // empty, and everything is invalid.
    std::shared_ptr<Surface> CurrentSurface();
    void Invalidate(const RECT& rect, bool erase);
    void Validate(const RECT* rect);
    bool IsPainting() const { return painting_; }
    // WM_PAINT now if anything is invalid.
    void PaintInvalid();
    struct InvalidPart {
        RECT rect;
        bool erase = false;
    };
    // What is invalid; it is valid afterwards.
    InvalidPart TakeInvalid();

    ScrollBarState& Bar(int bar) { return bars_[bar == SB_VERT]; }
    void ShowBar(int bar);
    void SetFrame();
    void SetDropView(CView* view);
    void AcceptFiles(bool accept);
    CView* DropView() const { return dropView_; }

    DWORD style;
    DWORD exStyle;
    CFont* font = nullptr;

  private:
    // The window or one around it has dealt with the message.
    bool IsTakenBefore(UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT Dispatch(CWnd& window, UINT message, WPARAM wParam, LPARAM lParam);
    HWND Handle() const { return owner_->m_hWnd; }
    bool TakesFiles(const COleDataObject& data) const {
        return acceptFiles_ && !data.Files().empty();
    }

    CWnd* owner_;
    std::shared_ptr<Surface> surface_ = std::make_shared<Surface>();
    RECT invalid_;
    bool erase_ = false;
    bool painting_ = false;
    bool taken_ = false;  // the handler of WM_PAINT took the invalid part
    bool living_ = false;
    bool destroyed_ = false;
    ScrollBarState bars_[2];
    CView* dropView_ = nullptr;
    bool acceptFiles_ = false;
    bool viewTakesDrag_ = false;
};

// Before something modal opens: the window that has the mouse is told to give it up.
void EndCapture();

// Edges that the styles ask for.
WindowFrame FrameOf(DWORD style, DWORD exStyle);

}  // namespace kvx
