// The back-end on Qt 6 Widgets.

#include <QApplication>
#include <cstdlib>
#include <memory>
#include <utility>

#include "platform/Backend.h"
#include "platform/qt/CancelMode.h"
#include "platform/qt/Controls.h"
#include "platform/qt/Desktop.h"
#include "platform/qt/Dialogs.h"
#include "platform/qt/MessageEvent.h"
#include "platform/qt/TextEngine.h"
#include "platform/qt/Windows.h"
#include "platform/windows/WindowMap.h"

namespace kvx {

namespace {

class QtBackend final : public IBackend {
  public:
    IWindows& Windows() override { return windows_; }
    IControls& Controls() override { return controls_; }
    ITextEngine& Text() override { return text_; }
    IDialogs& Dialogs() override { return dialogs_; }
    IDesktop& Desktop() override { return desktop_; }

  private:
    qt::QtWindows windows_;
    qt::QtControls controls_;
    qt::QtTextEngine text_;
    qt::QtDialogs dialogs_;
    qt::Desktop desktop_;
    qt::CancelMode cancelMode_;
};

std::unique_ptr<QtBackend> g_backend;
QApplication* g_application = nullptr;  // when it was made here
int g_users = 0;

bool HasDisplay() {
    return std::getenv("DISPLAY") || std::getenv("WAYLAND_DISPLAY");
}

void MakeApplication() {
    if (!std::getenv("QT_QPA_PLATFORM") && !HasDisplay()) qputenv("QT_QPA_PLATFORM", "offscreen");
    static int count = 1;
    static char name[] = "kvxostrace";
    static char* arguments[] = {name, nullptr};
    g_application = new QApplication(count, arguments);
}

// For the application that is made next.
void LeaveScreen() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_ENABLE_HIGHDPI_SCALING", "0");
    for (const char* name : {"QT_FONT_DPI", "QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS"})
        qunsetenv(name);
}

}  // namespace

bool InstallBackend(Screen screen) {
    if (g_users > 0) {
        ++g_users;
        return true;
    }
    if (screen == Screen::None) LeaveScreen();
    if (!QCoreApplication::instance()) MakeApplication();
    if (!qobject_cast<QApplication*>(QCoreApplication::instance())) return false;
    g_backend = std::make_unique<QtBackend>();
    SetBackend(g_backend.get());
    g_users = 1;
    return true;
}

const char* WhatWindowsNeed() {
    return "a QApplication";
}

void RemoveBackend() {
    if (g_users == 0 || --g_users > 0) return;
    // Messages on their way are objects of this library, which may be unloaded next.
    QCoreApplication::sendPostedEvents(nullptr, qt::MessageEvent::kType);
    ForgetWrappers();
    SetBackend(nullptr);
    g_backend.reset();
    delete std::exchange(g_application, nullptr);
}

}  // namespace kvx
