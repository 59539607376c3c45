// Uses what the component and its platform library export: a view of its own, a layout with a bar
// that is dragged, both dialogs of long work, a profile. Says what does not hold and ends with 1.
//
// usage: consumer RESOURCE_LIBRARY PROFILE

#include <cstdio>

#include "framework/CoreView.h"
#include "framework/SizerBar.h"
#include "framework/WinMgr.h"
#include "platform/Backend.h"
#include "platform/base/Module.h"
#include "platform/base/Resources.h"
#include "trace/dialogs/StopDlg.h"
#include "utils/Path.h"
#include "utils/Profile.h"

namespace {

int g_faults = 0;

void Expect(bool holds, const char* what) {
    if (holds) return;
    std::printf("does not hold: %s\n", what);
    ++g_faults;
}

constexpr UINT kView = 10;
constexpr UINT kBar = 11;
constexpr UINT kRest = 12;
constexpr UINT kEnd = 0xFFFFFFFFu;

class PlainView : public CCoreView {
  public:
    int pressed = 0;
    bool IsDispContextMenu(CPoint) override { return false; }

  protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageMapEntry kEntries[] = {
            ON_WM_LBUTTONDOWN<&PlainView::OnPress>(),
        };
        static const MessageMap kMap{&CCoreView::GetMessageMap(), kEntries};
        return kMap;
    }

  private:
    void OnPress(UINT flags, CPoint point) {
        ++pressed;
        CCoreView::OnLButtonDown(flags, point);
    }
};

class Window : public CWnd {
  public:
    Window()
        : table_{{RCROWGROUP | RCREST, 0, 0}, {RCPERCENT, kView, 30}, {RCFIXED, kBar, 6},
                 {RCREST, kRest, 0},          {RCENDGROUP, kEnd, 0},  {0, kEnd, 0}},
          manager_(table_) {}

    bool Show() {
        if (!Create(WS_OVERLAPPED | WS_VISIBLE, {0, 0, 200, 300}, nullptr, 0)) return false;
        view = new PlainView;  // a view deletes itself with its window
        if (!view->Create(WS_CHILD | WS_VISIBLE, RECT{}, this, kView)) return false;
        rest_.Create(WS_CHILD | WS_VISIBLE, RECT{}, this, kRest);
        bar.Create(WS_CHILD | WS_VISIBLE, this, manager_, kBar, RECT{});
        manager_.CalcLayout(this);
        manager_.SetWindowPositions(this);
        return true;
    }
    PlainView* view = nullptr;
    CSizerBar bar;

  protected:
    const MessageMap& GetMessageMap() const override {
        static constexpr MessageMapEntry kEntries[] = {
            ON_MESSAGE<kWinMgrMessage, &Window::OnWinMgr>(),
        };
        static const MessageMap kMap{&CWnd::GetMessageMap(), kEntries};
        return kMap;
    }

  private:
    LRESULT OnWinMgr(WPARAM id, LPARAM address) {
        const auto* const notify = reinterpret_cast<const WINMGRNOTIFY*>(address);
        if (notify->code != kWinMgrSizeBarMoved) return 0;
        manager_.MoveRect(static_cast<UINT>(id), notify->moved, this);
        manager_.SetWindowPositions(this);
        return 1;
    }
    WINRECT table_[6];
    CWinMgr manager_;
    CWnd rest_;
};

void DragTheBar(Window& window) {
    const int before = window.view->GetWindowRect().Height();
    window.bar.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MakePointParam(3, 2));
    window.bar.SendMessage(WM_MOUSEMOVE, MK_LBUTTON, MakePointParam(3, 17));
    window.bar.SendMessage(WM_LBUTTONUP, 0, MakePointParam(3, 17));
    Expect(window.view->GetWindowRect().Height() == before + 15, "the border followed its bar");
}

void RunTheStopDialogs(Window& window) {
    CStopDlgCore progress(&window, "Working");
    progress.SetProgress(100, 40);
    Expect(progress.Create() != 0, "the dialog with a bar opens");
    Expect(progress.GetWindowText() == "Working", "its caption");
    progress.UpdateProgress();
    Expect(progress.Check_QXTraceStop() == 0, "nobody pressed STOP");
    progress.DestroyWindow();

    CStopOnlyDlgCore stop(&window, "");
    Expect(stop.Create() != 0, "the dialog with STOP alone opens");
    stop.SendMessage(WM_COMMAND, IDCANCEL);
    Expect(stop.Check_QXTraceStop() == 1, "STOP was pressed");
    stop.DestroyWindow();
    Expect(window.IsWindowEnabled(), "the parent has its mouse and keys back");
}

void UseAProfile(const CString& file) {
    Expect(AfxWriteProfileInt(file, "Window", "width", 640), "a number is written");
    Expect(AfxGetProfileInt(file, "window", "WIDTH", 0) == 640, "and read back");
    Expect(AfxGetProfileString(file, "Window", "height", "none") == "none", "what is not there");
    Expect(AfxIsFileExist(file), "the file is there");
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 3) return std::fputs("usage: consumer RESOURCE_LIBRARY PROFILE\n", stderr), 2;
    if (!kvx::InstallBackend()) return std::fputs("no window can be shown\n", stderr), 1;
    CString error;
    const HMODULE resources = LoadLibrary(arguments[1], &error);
    if (!resources) return std::fprintf(stderr, "%s\n", error.c_str()), 1;
    AfxSetResourceHandle(resources);
    {
        Window window;
        Expect(window.Show(), "the window with its view and its bar is made");
        window.view->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MakePointParam(1, 1));
        Expect(window.view->pressed == 1, "the view has its message");
        DragTheBar(window);
        RunTheStopDialogs(window);
        window.DestroyWindow();
    }
    UseAProfile(arguments[2]);
    AfxSetResourceHandle(nullptr);
    FreeLibrary(resources);
    kvx::RemoveBackend();
    return g_faults == 0 ? 0 : 1;
}
