#pragma once
// What every window made here adds to the system's: the sink of its messages, the messages posted
// to it, its place in logical pixels, and an entry in the list of these windows.

#include <deque>
#include <memory>
#include <vector>

#include "platform/win32/System.h"
#include "platform/win32/TextEngine.h"

namespace kvx::win32 {

class OwnWindow {
  public:
    OwnWindow(const WindowRequest& request, IWindowSink* sink);
    virtual ~OwnWindow() = default;
    OwnWindow(const OwnWindow&) = delete;
    OwnWindow& operator=(const OwnWindow&) = delete;

    // Null when the window was not made here. Who calls into handlers keeps the pointer: a handler
    // may destroy the window.
    static std::shared_ptr<OwnWindow> Of(win::HWND window);
    static std::vector<std::shared_ptr<OwnWindow>> All();
    // Every message of the window comes here, from its first to its last.
    static win::LRESULT CALLBACK Procedure(win::HWND window, UINT message, win::WPARAM wParam,
                                           win::LPARAM lParam);
    // Belongs to the system's window from now on.
    void Attach(win::HWND window, std::shared_ptr<OwnWindow> self);

    win::HWND Handle() const { return handle_; }
    IWindowSink* Sink() const { return sink_; }
    // Tells the sink that the window goes, once.
    virtual void Detach();
    // 0 without a sink.
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    // The message arrives from the message loop. Numbers and parameters are ours, which the
    // system's queue would not carry.
    void Post(UINT message, WPARAM wParam, LPARAM lParam);

    WindowKind Kind() const { return kind_; }
    UINT Id() const { return id_; }
    bool IsChild() const { return isChild_; }
    HWND Owner() const { return owner_; }  // parent of a window of its own
    bool TakesMouse() const { return takesMouse_; }
    const WindowFrame& Frame() const { return frame_; }
    void SetFont(const LOGFONT& font);

    // Of a child, in the parent's client coordinates.
    const RECT& Place() const { return place_; }
    // Moves the system's window there, and what lies in it to its pixels.
    void SetPlace(const RECT& place);

  protected:
    virtual win::LRESULT OnSystemMessage(UINT message, win::WPARAM wParam, win::LPARAM lParam) = 0;
    // The system moved the window, or somebody else did.
    void NotePlace();
    void SetFrame(const WindowFrame& frame) { frame_ = frame; }

  private:
    struct Posted {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
    };
    void TakePosted();

    win::HWND handle_ = nullptr;
    IWindowSink* sink_;
    WindowKind kind_;
    UINT id_;
    bool isChild_;
    bool takesMouse_;
    HWND owner_;
    WindowFrame frame_;
    RECT place_;
    std::deque<Posted> posted_;
    FontHandle font_{nullptr, win::DeleteObject};
};

// Parts of windows made here that are no windows to the layer above: their scroll bars.
void SetInternal(win::HWND window);
bool IsInternal(win::HWND window);

}  // namespace kvx::win32
