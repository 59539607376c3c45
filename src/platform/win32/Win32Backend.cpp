// The back-end on the system's own windows.

#include <memory>

#include "platform/win32/CancelMode.h"
#include "platform/win32/Controls.h"
#include "platform/win32/Desktop.h"
#include "platform/win32/Dialogs.h"
#include "platform/win32/PlainWindow.h"
#include "platform/win32/TextEngine.h"
#include "platform/win32/Windows.h"

namespace kvx {

namespace {

// The constant's own definition names types of the system's header.
const auto kPerMonitor = reinterpret_cast<win::DPI_AWARENESS_CONTEXT>(std::intptr_t{-4});

// What windows need of the system beside the windows themselves: drags, classes, and every
// monitor's own pixels, unless the program has chosen already.
class Session {
  public:
    Session() {
        win::SetProcessDpiAwarenessContext(kPerMonitor);
        win::OleInitialize(nullptr);
        const win::INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_PROGRESS_CLASS};
        win::InitCommonControlsEx(&classes);
        win32::PlainWindow::RegisterWindowClass();
    }
    ~Session() {
        win32::PlainWindow::UnregisterWindowClass();
        win::OleUninitialize();
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

  private:
    win32::CancelMode cancelMode_;
};

class Win32Backend final : public IBackend {
  public:
    explicit Win32Backend(Screen screen) : desktop_(screen) {
        if (screen == Screen::Session) session_.emplace();
    }
    IWindows& Windows() override { return windows_; }
    IControls& Controls() override { return controls_; }
    ITextEngine& Text() override { return text_; }
    IDialogs& Dialogs() override { return dialogs_; }
    IDesktop& Desktop() override { return desktop_; }

  private:
    std::optional<Session> session_;
    win32::Win32Windows windows_;
    win32::Win32Controls controls_;
    win32::Win32TextEngine text_;
    win32::Win32Dialogs dialogs_;
    win32::Desktop desktop_;
};

std::unique_ptr<Win32Backend> g_backend;
int g_users = 0;

}  // namespace

bool InstallBackend(Screen screen) {
    if (g_users == 0) {
        g_backend = std::make_unique<Win32Backend>(screen);
        SetBackend(g_backend.get());
    }
    ++g_users;
    return true;
}

const char* WhatWindowsNeed() {
    return "a desktop";
}

void RemoveBackend() {
    if (g_users == 0 || --g_users > 0) return;
    ForgetWrappers();
    SetBackend(nullptr);
    g_backend.reset();
}

}  // namespace kvx
