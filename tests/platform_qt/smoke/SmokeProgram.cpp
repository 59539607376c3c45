// Says on standard output what it gets on a real display. Keys: d opens a modal dialog, s starts
// long work with a STOP dialog, q ends.

#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QTimer>
#include <QWindow>
#include <cstdio>
#include <functional>
#include <optional>

#include "platform/Backend.h"
#include "platform/base/SystemInfo.h"
#include "platform/base/WinApp.h"
#include "platform/controls/ProgressCtrl.h"
#include "platform/dialogs/Dialog.h"
#include "platform/windows/View.h"
#include "platform_qt/SampleDialogs.h"

namespace {

template <class... Args>
void Say(const char* format, Args... args) {
    std::printf(format, args...);
    std::printf("\n");
    std::fflush(stdout);
}

// Where the middle of a control stands on the screen.
POINT MiddleOf(const CWnd* control) {
    const RECT r = control->GetWindowRect();
    return {(r.left + r.right) / 2, (r.top + r.bottom) / 2};
}

COLORREF ScreenPixel(POINT at) {
    const QColor colour = QGuiApplication::primaryScreen()
                              ->grabWindow(0, at.x, at.y, 1, 1)
                              .toImage()
                              .pixelColor(0, 0);
    return RGB(static_cast<unsigned>(colour.red()), static_cast<unsigned>(colour.green()),
               static_cast<unsigned>(colour.blue()));
}

// Asks again and again, for a busy machine is slow; the user's patience ends it.
void OnceTrue(std::function<bool()> condition, std::function<void()> action) {
    QTimer::singleShot(50, qApp, [condition, action] {
        if (condition()) return action();
        OnceTrue(condition, action);
    });
}

class ValueDialog : public CDialog {
  public:
    using CDialog::CDialog;
    bool OnInitDialog() override {
        CDialog::OnInitDialog();
        OnceTrue([] { return QGuiApplication::modalWindow()->isExposed(); },
                 [this] {
                     const POINT ok = MiddleOf(GetDlgItem(IDOK));
                     Say("dialog at %d %d", ok.x, ok.y);
                 });
        return true;
    }
};

class StopDialog : public CDialog {
  public:
    CProgressCtrl progress;
    bool cancelled = false;

  protected:
    void DoDataExchange(CDataExchange* exchange) override { DDX_Control(exchange, 9008, progress); }
    void OnCancel() override {
        cancelled = true;
        CDialog::OnCancel();
    }
};

class SmokeView : public CView {
  public:
    int draws = 0;
    void OnDraw(CDC* dc) override {
        ++draws;
        dc->FillSolidRect(20, 20, 40, 40, RGB(255, 0, 0));
    }

  protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageMapEntry kEntries[] = {
            ON_WM_LBUTTONDOWN<&SmokeView::OnDown>(), ON_WM_LBUTTONUP<&SmokeView::OnUp>(),
            ON_WM_MOUSEMOVE<&SmokeView::OnMove>(),   ON_WM_LBUTTONDBLCLK<&SmokeView::OnTwice>(),
            ON_WM_MOUSEWHEEL<&SmokeView::OnWheel>(), ON_WM_KEYDOWN<&SmokeView::OnKey>(),
            ON_WM_CHAR<&SmokeView::OnCharacter>(),   ON_WM_VSCROLL<&SmokeView::OnScroll>(),
        };
        static const MessageMap kMap{&CView::GetMessageMap(), kEntries};
        return kMap;
    }
    void OnDown(UINT, CPoint at) {
        SetFocus();
        SetCapture();
        Say("down %d %d", at.x, at.y);
    }
    void OnUp(UINT, CPoint at) {
        ReleaseCapture();
        Say("up %d %d", at.x, at.y);
    }
    void OnMove(UINT flags, CPoint at) {
        if (flags & MK_LBUTTON) Say("drag %d %d", at.x, at.y);
    }
    void OnTwice(UINT, CPoint) { Say("twice"); }
    bool OnWheel(UINT, short delta, CPoint) {
        Say("wheel %d", delta);
        return true;
    }
    void OnKey(UINT key, UINT, UINT) { Say("key %u", key); }
    void OnScroll(UINT code, int) {
        if (code != SB_ENDSCROLL) Say("scroll %u", code);
    }
    void OnCharacter(UINT character, UINT, UINT) {
        if (character == 'd') Say("dialog %d", ValueDialog(9005, this).DoModal());
        if (character == 's') Work();
        if (character == 'q') qApp->quit();
    }

  private:
    // Work that looks up from time to time, and says what it sees of itself on the screen.
    void Work() {
        EnableWindow(false);
        StopDialog stop;
        stop.Create(9014, this);
        stop.progress.SetRange(0, 100);
        Invalidate();
        const int drawsBefore = draws;
        const DWORD start = GetTickCount();
        std::optional<COLORREF> seen;
        while (!stop.cancelled && GetTickCount() - start < 60000) {
            const DWORD until = GetTickCount() + 20;
            while (GetTickCount() < until) continue;
            stop.progress.SetPos(100);
            DispatchWaitingMessages(stop.m_hWnd);
            const COLORREF bar = ScreenPixel(MiddleOf(&stop.progress));
            if (bar == seen) continue;
            seen = bar;
            const POINT button = MiddleOf(stop.GetDlgItem(IDCANCEL));
            Say("bar %06X stop at %d %d", bar, button.x, button.y);
        }
        const bool drawn = draws != drawsBefore;
        stop.DestroyWindow();
        EnableWindow(true);
        Say("work %s, view %s", stop.cancelled ? "stopped" : "done", drawn ? "drawn" : "waited");
    }
};

}  // namespace

int main() {
    kvx::InstallBackend();
    SetResourceTable(&kvx::test::SampleTable());
    CWnd top;
    top.Create(WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU, {100, 100, 500, 400}, nullptr, 0);
    auto* const view = new SmokeView;
    view->Create(WS_CHILD | WS_VISIBLE, {0, 0, 400, 300}, &top, 1);
    view->SetScrollRange(SB_VERT, 0, 100);
    top.ShowWindow(SW_SHOW);
    view->SetFocus();
    POINT origin{0, 0};
    OnceTrue(
        [&] {
            view->ClientToScreen(&(origin = POINT{0, 0}));
            return ScreenPixel(origin + POINT{30, 30}) == RGB(255, 0, 0);
        },
        [&] { Say("ready at %d %d width %d", origin.x, origin.y, view->GetClientRect().right); });
    CWinApp app;
    app.Run();
    top.DestroyWindow();
    Say("ended");
    return 0;
}
