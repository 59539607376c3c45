#pragma once
// Windows. A CWnd is attached to one toolkit window (its handle); windows that were made elsewhere
// are wrapped for a while by FromHandle and can be moved, shown, enabled, asked and sent messages.

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

#include "platform/base/MessageMap.h"
#include "platform/base/Object.h"
#include "platform/base/Styles.h"
#include "platform/drawing/ClientDC.h"
#include "platform/windows/ScrollInfo.h"

class CMenu;

inline constexpr int SW_HIDE = 0;
inline constexpr int SW_SHOWNORMAL = 1;
inline constexpr int SW_SHOWNOACTIVATE = 4;
inline constexpr int SW_SHOW = 5;

inline constexpr UINT SWP_NOSIZE = 0x0001;
inline constexpr UINT SWP_NOMOVE = 0x0002;
inline constexpr UINT SWP_NOZORDER = 0x0004;
inline constexpr UINT SWP_NOACTIVATE = 0x0010;
inline constexpr UINT SWP_SHOWWINDOW = 0x0040;
inline constexpr UINT SWP_HIDEWINDOW = 0x0080;

inline constexpr UINT RDW_INVALIDATE = 0x0001;
inline constexpr UINT RDW_ERASE = 0x0004;
inline constexpr UINT RDW_ALLCHILDREN = 0x0080;
inline constexpr UINT RDW_UPDATENOW = 0x0100;

namespace kvx {
class Surface;
class WindowState;
enum class WindowKind;
}  // namespace kvx

class CWnd : public CObject {
  public:
    static const CRuntimeClass kClass;
    const CRuntimeClass* GetRuntimeClass() const override { return &kClass; }

    CWnd();
    // Destroys the toolkit window if it is still there; a derived class whose handlers must run
    // then destroys it in its own destructor.
    ~CWnd() override;

    // Makes the toolkit window and attaches it; WM_CREATE and WM_SIZE arrive before this returns.
    // rect: in the parent's client coordinates for a child, else on the screen. False when the
    // toolkit refuses or WM_CREATE answers -1; PostNcDestroy has run then, so a view is deleted.
    virtual bool Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);
    bool Create(DWORD style, const RECT& rect, HWND parent, UINT id);
    bool Create(DWORD style, const RECT& rect, std::nullptr_t, UINT id) {
        return CreateEx(0, {}, style, rect, nullptr, id);
    }
    bool CreateEx(DWORD exStyle, const CString& text, DWORD style, const RECT& rect, HWND parent,
                  UINT id);
    // WM_DESTROY to this window and its children, then the toolkit windows go and PostNcDestroy
    // runs (which may delete the object). False without a window.
    virtual bool DestroyWindow();

    // The object that the handle belongs to, else a wrapper that lives until the
    // next idle moment or as long as the foreign window. Null for null or a window that is gone.
    static CWnd* FromHandle(HWND window);
    static CWnd* FromHandlePermanent(HWND window);
    HWND GetSafeHwnd() const { return m_hWnd; }
    bool IsWindow() const { return m_hWnd != nullptr; }

    // Takes the control of that id over from the object that holds it now, so that messages come
    // here. False when there is none or it was not made here.
    bool SubclassDlgItem(UINT id, CWnd* parent);

    CWnd* GetParent() const;
    CWnd* GetOwner() const;  // the owner that was set, else the parent
    void SetOwner(CWnd* owner) { owner_ = owner; }
    CWnd* GetTopLevelParent() const;
    bool IsChild(const CWnd* window) const;
    CWnd* GetDlgItem(UINT id) const;  // direct child
    UINT GetDlgCtrlID() const;
    void SetDlgItemText(UINT id, const CString& text);
    CString GetDlgItemText(UINT id) const;
    // Menu bar of the window as it is now, or null; belongs to the window.
    CMenu* GetMenu();

    void SetWindowText(const CString& text);
    CString GetWindowText() const;
    void SetFont(CFont* font, bool redraw = true);
    // Null: the default font.
    CFont* GetFont() const;

    DWORD GetStyle() const;
    DWORD GetExStyle() const;
    // Takes effect at once. True when something changed.
    bool ModifyStyle(DWORD remove, DWORD add);
    bool ModifyStyleEx(DWORD remove, DWORD add);

    bool ShowWindow(int command);
    bool IsWindowVisible() const;  // with all its parents
    // A disabled window gets no mouse and no keys. Answers whether it was disabled before.
    bool EnableWindow(bool enable = true);
    // False also while a modal dialog blocks the window.
    bool IsWindowEnabled() const;
    CWnd* SetFocus();
    static CWnd* GetFocus();
    CWnd* SetCapture();
    static CWnd* GetCapture();
    bool SetForegroundWindow();

    void MoveWindow(int x, int y, int width, int height, bool repaint = true);
    void MoveWindow(const RECT& rect, bool repaint = true);
    void SetWindowPos(const CWnd* after, int x, int y, int width, int height, UINT flags);
    void GetClientRect(RECT* rect) const;
    CRect GetClientRect() const;
    void GetWindowRect(RECT* rect) const;  // screen
    CRect GetWindowRect() const;
    void ClientToScreen(POINT* point) const;
    void ClientToScreen(RECT* rect) const;
    void ScreenToClient(POINT* point) const;
    void ScreenToClient(RECT* rect) const;

    void Invalidate(bool erase = true);
    void InvalidateRect(const RECT* rect, bool erase = true);
    void ValidateRect(const RECT* rect);
    // Paints what is invalid, at once.
    void UpdateWindow();
    void RedrawWindow(const RECT* rect = nullptr,
                      UINT flags = RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);

    void SetScrollInfo(int bar, const SCROLLINFO& info, bool redraw = true);
    void GetScrollInfo(int bar, SCROLLINFO* info) const;
    int SetScrollPos(int bar, int position, bool redraw = true);  // answers the previous one
    int GetScrollPos(int bar) const;
    void SetScrollRange(int bar, int minimum, int maximum, bool redraw = true);
    void GetScrollRange(int bar, int* minimum, int* maximum) const;
    void ShowScrollBar(int bar, bool show = true);
    void EnableScrollBar(int bar, UINT arrows = ESB_ENABLE_BOTH);

    void DragAcceptFiles(bool accept = true);

    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    bool PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    // id: of a control that is this window's child.
    LRESULT SendDlgItemMessage(UINT id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    int MessageBox(const CString& text, const CString& caption = {}, UINT type = 0);

    // Runs the command's handler; false when nobody has one.
    bool OnCommand(UINT id) { return OnCmdMsg(id, 0, nullptr); }
    // Fills the state; false when nobody handles the command (ui is then disabled).
    bool OnUpdateCommand(UINT id, CCmdUI& ui);
    // The way of a command or notification: ui null runs the handler, else the update handler. A
    // command with a handler but no update handler is enabled. Overrides route on to others.
    virtual bool OnCmdMsg(UINT id, UINT code, CCmdUI* ui);

    // Before a key or mouse button of the user reaches a window: asked of that window, then of
    // those around it up to the one on the desktop. True: it is dealt with, and goes no further;
    // nor does the character of that key.
    virtual bool PreTranslateMessage(UINT, WPARAM, LPARAM) { return false; }

    HWND m_hWnd = nullptr;

  protected:
    virtual const MessageMap& GetMessageMap() const;
    virtual void PreCreateWindow(CREATESTRUCT&) {}
    // Last words of a window; views delete themselves here.
    virtual void PostNcDestroy() {}
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    // What the platform does with a message that nobody handles.
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    // Default processing of the message being handled.
    LRESULT Default();
    // System colour that WM_ERASEBKGND fills with; -1: no erasing.
    virtual int BackgroundColour() const { return -1; }
    virtual kvx::WindowKind Kind(DWORD style) const;
    // Whether the mouse over the window is the window's; else it is the parent's.
    virtual bool TakesMouse(DWORD) const { return true; }

    // Default processing under the names of the handlers, for derived classes to call.
    int OnCreate(const CREATESTRUCT*) { return static_cast<int>(Default()); }
    void OnDestroy() { Default(); }
    void OnSize(UINT, int, int) { Default(); }
    bool OnEraseBkgnd(CDC*) { return Default() != 0; }
    void OnHScroll(UINT, int) { Default(); }
    void OnVScroll(UINT, int) { Default(); }
    void OnKeyDown(UINT, UINT, UINT) { Default(); }
    void OnChar(UINT, UINT, UINT) { Default(); }
    void OnMouseMove(UINT, CPoint) { Default(); }
    void OnLButtonDown(UINT, CPoint) { Default(); }
    void OnLButtonUp(UINT, CPoint) { Default(); }
    void OnLButtonDblClk(UINT, CPoint) { Default(); }
    bool OnMouseWheel(UINT, short, CPoint) { return Default() != 0; }
    bool OnSetCursor(CWnd*, UINT, UINT) { return Default() != 0; }
    UINT OnGetDlgCode() { return static_cast<UINT>(Default()); }
    void OnCancelMode() { Default(); }

  private:
    friend class kvx::WindowState;
    bool FinishCreate(const CREATESTRUCT& create);

    std::unique_ptr<kvx::WindowState> state_;  // while a window made here is attached
    CWnd* owner_ = nullptr;
};

// Gives the mouse free again; the window that had it gets WM_CAPTURECHANGED.
void ReleaseCapture();
bool IsWindow(HWND window);
LRESULT SendMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
bool PostMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
