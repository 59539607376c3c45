#pragma once
// The seam to the toolkit. The front (this folder) decides; a back-end forwards: it makes windows,
// turns the toolkit's events into messages, shows surfaces, and runs the standard dialogs. One
// back-end is installed in a process at run time; program and modules share it and its windows.
//
// Coordinates are logical pixels; only surfaces and text masks have device pixels.
// Handles may be windows of the toolkit that were not made here unless said otherwise. All on the
// user-interface thread.

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/base/Messages.h"
#include "platform/dialogs/DialogRequests.h"
#include "platform/drawing/Font.h"
#include "platform/drawing/Surface.h"
#include "platform/windows/Cursor.h"
#include "platform/windows/DropTarget.h"

class CMenu;

namespace kvx {

// What the toolkit makes for a window: plain windows paint themselves, the others are its controls.
enum class WindowKind {
    Plain,
    Backdrop,  // plain too, below its siblings from the start
    PushButton,
    CheckBox,
    RadioButton,
    Edit,
    TextEdit,  // several lines
    ComboBox,
    ListBox,
    ProgressBar,
};

// Edges around the client area, outermost first; each takes its width on all four sides.
struct WindowFrame {
    int raised = 0;  // raised edge, 0 or 2 pixels
    int border = 0;  // line in the window-frame colour, 0 or 1
    int sunken = 0;  // sunken edge, 0 or 2
    int Width() const { return raised + border + sunken; }
};

struct WindowRequest {
    WindowKind kind = WindowKind::Plain;
    DWORD style = 0;
    DWORD exStyle = 0;
    WindowFrame frame;
    CString text;
    RECT rect;  // in the parent's client coordinates; on the screen for a window of its own
    HWND parent = nullptr;
    UINT id = 0;
    bool takesMouse = true;  // else the mouse belongs to the parent
    bool light = false;      // stays light where the desktop is dark, with all that lies in it
};

// What a window does with its events. The front gives one with every window it has made.
class IWindowSink {
  public:
    // Never throws. May destroy the window.
    virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;
    // Brings the picture of a plain window up to date, for showing at the client area's top left
    // corner. May destroy the window.
    virtual std::shared_ptr<const Surface> Picture() = 0;
    // A drag over a plain window; the effect, or none to let the window's parent have it.
    virtual DROPEFFECT OnDrag(const COleDataObject& data, DWORD keyState, POINT client,
                              bool entered) = 0;
    virtual void OnDragLeave() = 0;
    virtual DROPEFFECT OnDrop(const COleDataObject& data, DROPEFFECT effect, POINT client) = 0;
    // The toolkit window is going; the sink is not called again.
    virtual void OnWindowGone() = 0;

  protected:
    ~IWindowSink() = default;
};

// One scroll bar as it is to be shown.
struct ScrollBarLook {
    bool visible = false;
    bool enabled = true;
    int minimum = 0;
    int maximum = 0;  // last position
    int page = 0;
    int position = 0;
};

class IWindows {
  public:
    virtual ~IWindows() = default;

    // Hidden; sends nothing. Null when the toolkit refuses.
    virtual HWND Create(const WindowRequest& request, IWindowSink* sink) = 0;
    // Made here: the sink hears OnWindowGone, and so do those of the children. Safe inside any of
    // the window's own messages.
    virtual void Destroy(HWND window) = 0;
    virtual bool Exists(HWND window) const = 0;

    // Hands a message to a window that was not made here; 0 when that does not know the message.
    virtual LRESULT Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) = 0;
    // Any window: the message arrives from the message loop.
    virtual void Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam) = 0;

    virtual HWND Parent(HWND window) const = 0;  // null for none
    virtual std::vector<HWND> Children(HWND window) const = 0;
    virtual HWND Child(HWND window, UINT id) const = 0;  // direct; null for none
    virtual UINT Id(HWND window) const = 0;
    virtual HWND TopLevel(HWND window) const = 0;  // window, or the nearest parent on the desktop

    virtual void SetText(HWND window, const CString& text) = 0;
    virtual CString Text(HWND window) const = 0;
    virtual void SetFont(HWND window, const LOGFONT& font) = 0;
    virtual void SetFrame(HWND window, const WindowFrame& frame) = 0;  // plain, made here

    virtual void Show(HWND window, bool show, bool activate) = 0;
    virtual bool IsVisible(HWND window) const = 0;  // with all its parents
    virtual bool IsShown(HWND window) const = 0;    // by itself
    virtual void Enable(HWND window, bool enable) = 0;
    virtual bool IsEnabled(HWND window) const = 0;  // and not blocked by a modal window
    virtual void SetFocus(HWND window) = 0;         // null: takes it away
    virtual HWND Focus() const = 0;
    virtual void SetCapture(HWND window) = 0;
    virtual void ReleaseCapture() = 0;
    virtual HWND Capture() const = 0;
    virtual void Raise(HWND window) = 0;

    // WM_SIZE arrives before this returns when the client size changes.
    virtual void Move(HWND window, const RECT& rect) = 0;
    virtual RECT Bounds(HWND window) const = 0;  // as rect of Create
    virtual RECT ScreenBounds(HWND window) const = 0;
    virtual SIZE ClientSize(HWND window) const = 0;
    virtual POINT ClientOrigin(HWND window) const = 0;  // on the screen
    // Of the client area of a window made here. It changes with the screen that shows the
    // window, and with the window's place in its parents.
    virtual PixelGrid Grid(HWND window) const = 0;

    // The toolkit asks for the picture when it next paints, or at once.
    virtual void Present(HWND window, const RECT& client, bool atOnce) = 0;
    // bar: SB_HORZ or SB_VERT. Plain, made here.
    virtual void SetScrollBar(HWND window, int bar, const ScrollBarLook& look) = 0;
    virtual int ScrollTrackPosition(HWND window, int bar) const = 0;
    virtual void AcceptDrops(HWND window, bool accept) = 0;

    // Dispatches what waits for the window and its children, without waiting; null: everything.
    virtual void DispatchWaiting(HWND window) = 0;
    virtual int Run() = 0;
    virtual void Quit() = 0;  // Run returns

    virtual HWND MainWindow() const = 0;
    virtual void SetMainWindow(HWND window) = 0;
};

// Controls made here.
class IControls {
  public:
    virtual ~IControls() = default;
    virtual void SetCheck(HWND button, bool checked) = 0;
    virtual bool Check(HWND button) const = 0;
    virtual void SetDefault(HWND button, bool isDefault) = 0;
    virtual void Click(HWND button) = 0;

    virtual void SetTextLimit(HWND edit, int characters) = 0;  // 0: none
    virtual void SetSelection(HWND edit, int start, int end) = 0;
    virtual void Selection(HWND edit, int& start, int& end) const = 0;
    virtual void SetReadOnly(HWND edit, bool readOnly) = 0;

    // Items of list and combo boxes.
    virtual int AddItem(HWND list, const CString& text) = 0;
    virtual void RemoveItem(HWND list, int index) = 0;
    virtual void ClearItems(HWND list) = 0;
    virtual int ItemCount(HWND list) const = 0;
    virtual CString ItemText(HWND list, int index) const = 0;
    virtual int CurrentItem(HWND list) const = 0;
    virtual void SetCurrentItem(HWND list, int index) = 0;
    virtual bool ItemSelected(HWND list, int index) const = 0;
    virtual void SelectItem(HWND list, int index, bool selected) = 0;
    virtual bool ItemChecked(HWND list, int index) const = 0;
    virtual void CheckItem(HWND list, int index, bool checked) = 0;

    virtual void SetProgress(HWND bar, int lower, int upper, int position) = 0;
};

// One run of text as a mask of coverage, 0 to 255 a device pixel, row by row.
struct TextMask {
    POINT offset;  // of the mask from the top left corner of the text's cell, in device pixels
    SIZE size;     // device pixels
    SIZE extent;   // of the text's cell, in logical pixels: the same at every ratio
    std::vector<std::uint8_t> coverage;
};

class ITextEngine {
  public:
    virtual ~ITextEngine() = default;
    virtual TEXTMETRIC Metrics(const LOGFONT& font) = 0;  // logical pixels
    // ratio: device pixels a logical pixel. The glyphs keep to the text's cell as they do at 1.
    virtual TextMask Render(const LOGFONT& font, std::string_view utf8, double ratio) = 0;
};

// What the user has to answer before anything goes on: dialogs of the desktop, and our own.
class IDialogs {
  public:
    virtual ~IDialogs() = default;
    virtual int MessageBox(const MessageBoxRequest& request) = 0;
    virtual CString File(const FileDialogRequest& request) = 0;  // empty: cancelled
    virtual std::optional<COLORREF> Colour(COLORREF initial, HWND owner) = 0;
    virtual UINT PopupMenu(const CMenu& menu, POINT screen) = 0;  // 0: nothing chosen
    // Fills the menu with the window's menu bar; false when it has none.
    virtual bool ReadMenuBar(HWND window, CMenu& menu) = 0;
    // A window made here: shows it, blocks every other window and dispatches until EndModal.
    virtual void RunModal(HWND window) = 0;
    virtual void EndModal(HWND window) = 0;
};

class IDesktop {
  public:
    virtual ~IDesktop() = default;
    virtual std::optional<COLORREF> SysColor(int index) const = 0;  // COLOR_
    virtual SIZE ScreenSize() const = 0;
    virtual RECT WorkArea(POINT screen) const = 0;
    virtual POINT CursorPosition() const = 0;
    virtual void ShowCursor(HCURSOR cursor) = 0;
    virtual bool IsKeyDown(UINT key) const = 0;
    virtual void Beep(UINT kind) = 0;
};

class IBackend {
  public:
    virtual ~IBackend() = default;
    virtual IWindows& Windows() = 0;
    virtual IControls& Controls() = 0;
    virtual ITextEngine& Text() = 0;
    virtual IDialogs& Dialogs() = 0;
    virtual IDesktop& Desktop() = 0;
};

// Installs the back-end that the library was built with, and the toolkit's application object when
// the process has none yet. False when the toolkit can show no windows here; nothing is installed
// then. Every success is counted and needs one RemoveBackend.
// The screen that windows are shown on, or none: fonts and colours only, a pixel a logical pixel.
enum class Screen { Session, None };
bool InstallBackend(Screen screen = Screen::Session);
// The last removal forgets everything that is kept in the toolkit; the windows must be gone. The
// application object goes too when InstallBackend made it.
void RemoveBackend();

// What a process lacks where InstallBackend answers false, for messages: "a QApplication".
const char* WhatWindowsNeed();

// Borrows a back-end in place of the installed one; null takes it away.
void SetBackend(IBackend* backend);
// Null while none is installed.
IBackend* InstalledBackend();
// The installed one; without one the program ends with a message, since only windows ask.
IBackend& Backend();

}  // namespace kvx
