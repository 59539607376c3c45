#include "traceview/TraceWindow.h"

#include "platform/controls/Button.h"

namespace kvx::test {
namespace {

// Presses the button as a click that waits in the queue.
void PressStop(HWND window) {
    IWindows& windows = Backend().Windows();
    for (const HWND child : windows.Children(window)) {
        PressStop(child);
        const auto* const button = dynamic_cast<const CButton*>(CWnd::FromHandle(child));
        if (button && button->IsWindowVisible() && button->GetWindowText() == "STOP")
            ::PostMessage(window, WM_COMMAND, MakeCommand(button->GetDlgCtrlID()),
                          reinterpret_cast<LPARAM>(child));
    }
}

}  // namespace

void TraceWindow::StopAfter(int blocks) {
    service.onCall = [this, blocks, seen = 0](const std::string& operation) mutable {
        if (operation.rfind("Analyze", 0) != 0 || ++seen != blocks) return;
        PressStop(Main().GetSafeHwnd());
    };
}

}  // namespace kvx::test
