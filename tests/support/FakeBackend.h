#pragma once
// A back-end without a toolkit: windows are records in memory, nothing is shown, and the test plays
// the toolkit (Paint, Post loop, modal loop). It stands beside the real one to keep the seam
// honest.

#include <algorithm>
#include <deque>
#include <functional>
#include <map>

#include "platform/Backend.h"
#include "platform/base/Rects.h"

namespace kvx::test {

class FakeWindows final : public IWindows {
  public:
    struct Window {
        IWindowSink* sink = nullptr;
        WindowRequest request;
        RECT rect;
        CString text;
        bool shown = false;
        bool enabled = true;
        RECT presented;  // union of what was to be shown since the last Paint
        ScrollBarLook bars[2];
        std::vector<HWND> children;
    };
    struct Posted {
        HWND window;
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
    };

    Window& At(HWND window) { return windows_.at(window); }
    const Window& At(HWND window) const { return windows_.at(window); }
    // What the toolkit does when it paints; the picture of the window.
    std::shared_ptr<const Surface> Paint(HWND window) {
        At(window).presented = {};
        return At(window).sink->Picture();
    }
    // Delivers what was posted before the call.
    void RunPosted() {
        std::deque<Posted> now;
        now.swap(posted_);
        for (const Posted& p : now)
            if (Exists(p.window)) At(p.window).sink->OnMessage(p.message, p.wParam, p.lParam);
    }
    double ratio = 1;  // of the one screen

    HWND Create(const WindowRequest& request, IWindowSink* sink) override {
        if ((request.style & 0x40000000u) && !request.parent) return nullptr;
        const HWND handle = reinterpret_cast<HWND>(++last_ * 16);
        Window& window = windows_[handle];
        window.sink = sink;
        window.request = request;
        window.rect = request.rect;
        window.text = request.text;
        if (request.parent) At(request.parent).children.push_back(handle);
        return handle;
    }
    void Destroy(HWND window) override {
        const std::vector<HWND> children = At(window).children;
        At(window).sink->OnWindowGone();
        for (const HWND child : children)
            if (Exists(child)) Destroy(child);
        if (const HWND parent = At(window).request.parent; Exists(parent))
            std::erase(At(parent).children, window);
        windows_.erase(window);
    }
    bool Exists(HWND window) const override { return windows_.contains(window); }
    LRESULT Send(HWND, UINT, WPARAM, LPARAM) override { return 0; }
    void Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override {
        posted_.push_back({window, message, wParam, lParam});
    }

    HWND Parent(HWND window) const override { return At(window).request.parent; }
    std::vector<HWND> Children(HWND window) const override { return At(window).children; }
    HWND Child(HWND window, UINT id) const override {
        for (const HWND child : At(window).children)
            if (At(child).request.id == id) return child;
        return nullptr;
    }
    UINT Id(HWND window) const override { return At(window).request.id; }
    HWND TopLevel(HWND window) const override {
        return Parent(window) ? TopLevel(Parent(window)) : window;
    }
    void SetText(HWND window, const CString& text) override { At(window).text = text; }
    CString Text(HWND window) const override { return At(window).text; }
    void SetFont(HWND, const LOGFONT&) override {}
    void SetFrame(HWND window, const WindowFrame& frame) override {
        At(window).request.frame = frame;
        TellSize(window);
    }

    void Show(HWND window, bool show, bool) override { At(window).shown = show; }
    bool IsVisible(HWND window) const override {
        return At(window).shown && (!Parent(window) || IsVisible(Parent(window)));
    }
    bool IsShown(HWND window) const override { return At(window).shown; }
    void Enable(HWND window, bool enable) override { At(window).enabled = enable; }
    bool IsEnabled(HWND window) const override { return At(window).enabled; }
    void SetFocus(HWND window) override { focus_ = window; }
    HWND Focus() const override { return focus_; }
    void SetCapture(HWND window) override { capture_ = window; }
    void ReleaseCapture() override { capture_ = nullptr; }
    HWND Capture() const override { return capture_; }
    void Raise(HWND) override {}

    void Move(HWND window, const RECT& rect) override {
        const SIZE before = ClientSize(window);
        At(window).rect = rect;
        if (ClientSize(window) != before) TellSize(window);
    }
    RECT Bounds(HWND window) const override { return At(window).rect; }
    RECT ScreenBounds(HWND window) const override {
        const HWND parent = Parent(window);
        return parent ? Moved(At(window).rect, ClientOrigin(parent)) : At(window).rect;
    }
    SIZE ClientSize(HWND window) const override {
        const Window& w = At(window);
        const int edges = 2 * w.request.frame.Width();
        return {std::max(w.rect.Width() - edges - (w.bars[1].visible ? kBar : 0), 0),
                std::max(w.rect.Height() - edges - (w.bars[0].visible ? kBar : 0), 0)};
    }
    POINT ClientOrigin(HWND window) const override {
        const int edge = At(window).request.frame.Width();
        return ScreenBounds(window).TopLeft() + POINT{edge, edge};
    }
    PixelGrid Grid(HWND window) const override {
        const HWND top = TopLevel(window);
        return {ratio, ClientOrigin(window) - At(top).rect.TopLeft()};
    }
    void Present(HWND window, const RECT& client, bool) override {
        At(window).presented = Union(At(window).presented, client);
    }
    void SetScrollBar(HWND window, int bar, const ScrollBarLook& look) override {
        const SIZE before = ClientSize(window);
        At(window).bars[bar] = look;
        if (ClientSize(window) != before) TellSize(window);
    }
    int ScrollTrackPosition(HWND window, int bar) const override {
        return At(window).bars[bar].position;
    }
    void AcceptDrops(HWND, bool) override {}
    void DispatchWaiting(HWND) override { RunPosted(); }
    int Run() override { return 0; }
    void Quit() override {}
    HWND MainWindow() const override { return nullptr; }
    void SetMainWindow(HWND) override {}

    static constexpr int kBar = 16;

  private:
    void TellSize(HWND window) {
        const SIZE size = ClientSize(window);
        At(window).sink->OnMessage(WM_SIZE, 0, MakePointParam(size.cx, size.cy));
    }
    std::map<HWND, Window> windows_;
    std::deque<Posted> posted_;
    std::uintptr_t last_ = 0;
    HWND focus_ = nullptr;
    HWND capture_ = nullptr;
};

// Controls do nothing but remember their checks; lists stay empty.
class FakeControls final : public IControls {
  public:
    std::map<HWND, bool> checks;
    void SetCheck(HWND button, bool checked) override { checks[button] = checked; }
    bool Check(HWND button) const override { return checks.contains(button) && checks.at(button); }
    void SetDefault(HWND, bool) override {}
    void Click(HWND) override {}
    void SetTextLimit(HWND, int) override {}
    void SetSelection(HWND, int, int) override {}
    void Selection(HWND, int&, int&) const override {}
    void SetReadOnly(HWND, bool) override {}
    int AddItem(HWND, const CString&) override { return -1; }
    void RemoveItem(HWND, int) override {}
    void ClearItems(HWND) override {}
    int ItemCount(HWND) const override { return 0; }
    CString ItemText(HWND, int) const override { return {}; }
    int CurrentItem(HWND) const override { return -1; }
    void SetCurrentItem(HWND, int) override {}
    bool ItemSelected(HWND, int) const override { return false; }
    void SelectItem(HWND, int, bool) override {}
    bool ItemChecked(HWND, int) const override { return false; }
    void CheckItem(HWND, int, bool) override {}
    void SetProgress(HWND, int, int, int) override {}
};

// Every character is a full cell of 8 x 16 pixels.
class FakeText final : public ITextEngine {
  public:
    TEXTMETRIC Metrics(const LOGFONT&) override {
        TEXTMETRIC metrics;
        metrics.tmHeight = 16;
        metrics.tmAscent = 12;
        metrics.tmDescent = 4;
        metrics.tmAveCharWidth = metrics.tmMaxCharWidth = 8;
        return metrics;
    }
    TextMask Render(const LOGFONT&, std::string_view utf8, double ratio) override {
        TextMask mask;
        mask.extent = {static_cast<int>(utf8.size()) * 8, 16};
        mask.size = {static_cast<int>(mask.extent.cx * ratio),
                     static_cast<int>(mask.extent.cy * ratio)};
        mask.coverage.assign(static_cast<std::size_t>(mask.size.cx * mask.size.cy), 255);
        return mask;
    }
};

class FakeDesktop final : public IDesktop {
  public:
    std::optional<COLORREF> SysColor(int) const override { return {}; }
    SIZE ScreenSize() const override { return {1024, 768}; }
    RECT WorkArea(POINT) const override { return {0, 0, 1024, 740}; }
    POINT CursorPosition() const override { return {}; }
    void ShowCursor(HCURSOR) override {}
    bool IsKeyDown(UINT) const override { return false; }
    void Beep(UINT) override {}
};

class FakeDialogs final : public IDialogs {
  public:
    int MessageBox(const MessageBoxRequest&) override { return 0; }
    CString File(const FileDialogRequest&) override { return {}; }
    std::optional<COLORREF> Colour(COLORREF, HWND) override { return {}; }
    UINT PopupMenu(const CMenu&, POINT) override { return 0; }
    bool ReadMenuBar(HWND, CMenu&) override { return false; }
    void RunModal(HWND window) override {
        if (onModal) onModal(window);
    }
    void EndModal(HWND) override { ++modalsEnded; }

    int modalsEnded = 0;
    // Runs while a modal window is open.
    std::function<void(HWND)> onModal;
};

// Installed for its life.
class FakeBackend final : public IBackend {
  public:
    FakeBackend() { SetBackend(this); }
    ~FakeBackend() override { SetBackend(nullptr); }
    FakeWindows& Windows() override { return windows; }
    IControls& Controls() override { return controls; }
    ITextEngine& Text() override { return text; }
    FakeDialogs& Dialogs() override { return dialogs; }
    IDesktop& Desktop() override { return desktop; }

    FakeWindows windows;
    FakeControls controls;
    FakeText text;
    FakeDialogs dialogs;
    FakeDesktop desktop;
};

}  // namespace kvx::test
